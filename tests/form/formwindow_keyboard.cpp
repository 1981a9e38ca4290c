// A whole bug report made with the keyboard alone, on a real X server: every key goes
// to the widget that has the focus, as a person's keyboard would send it. After each
// step the test checks where the focus is, so it also pins the order in which Tab,
// Ctrl+Tab and the tab changes walk the form: Tab stays within the current page and the
// buttons below it, Ctrl+Tab or the tab bar's arrow keys change the page. The report goes to the loopback
// receiver, and the body that arrives is checked byte for byte.
#include "formwindowx11tests.h"

#include "submit/expectedtexts.h"
#include "submit/multipartrecord.h"
#include "submit/submitfixture.h"

#include "form/mainwindow.h"
#include "support/mainwindowprobe.h"
#include "support/modalanswerer.h"
#include "support/privateresolver.h"
#include "support/testenv.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeWidget>
#include <QtTest>

#include <initializer_list>

namespace {

// The address's domain is answered from the test's own hosts file, so the look-up that
// typing starts ends the same way on every machine.
const QByteArray kHosts = "127.0.0.1 localhost\n"
                          "10.20.30.40 example.test\n";

QString focusName()
{
    const QWidget *focus = QApplication::focusWidget();
    return focus ? focus->objectName() : QStringLiteral("(none)");
}

// Where the window system delivers a key: an open popup (a completer's list) first,
// then the focus widget, and the active window when nothing in it has the focus.
QWidget *keyTarget()
{
    if (QWidget *popup = QApplication::activePopupWidget())
        return popup;
    if (QWidget *focus = QApplication::focusWidget())
        return focus;
    return QApplication::activeWindow();
}

void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::keyClick(keyTarget(), key, modifiers);
}

void type(const QString &text)
{
    QTest::keyClicks(keyTarget(), text);
}

// Waits until a modal box is the active window and a widget in it has the focus, as a
// person waits for a dialog to open before typing, and names that widget (with its
// class and text when it is a button).
QString keyboardReady(QWidget *modal)
{
    if (!QTest::qWaitForWindowActive(modal, kEventWaitMs)
        || !QTest::qWaitFor([&] { return modal->isAncestorOf(QApplication::focusWidget()); }, kEventWaitMs))
        return QStringLiteral("(the box never took the focus)");
    const QAbstractButton *button = qobject_cast<const QAbstractButton *>(QApplication::focusWidget());
    return button ? QStringLiteral("%1 \"%2\"").arg(button->metaObject()->className(), button->text()) : focusName();
}

// The proxy variables that clearProxyEnvironment() clears, put back when the report
// has gone; the application proxy goes back to none with endTest().
class ProxyVariablesCleared
{
public:
    ProxyVariablesCleared()
    {
        for (const char *name : {"http_proxy", "HTTP_PROXY", "https_proxy", "HTTPS_PROXY", "all_proxy", "ALL_PROXY",
                                 "no_proxy", "NO_PROXY"}) {
            if (qEnvironmentVariableIsSet(name))
                m_saved.insert(name, qgetenv(name));
        }
        clearProxyEnvironment();
    }
    ~ProxyVariablesCleared()
    {
        for (auto it = m_saved.cbegin(); it != m_saved.cend(); ++it)
            qputenv(it.key().constData(), it.value());
    }

private:
    QMap<QByteArray, QByteArray> m_saved;
};

} // namespace

QTabWidget *FormWindowX11Tests::tabs() const
{
    return child<QTabWidget>(*window, "tabWidget");
}

void FormWindowX11Tests::focusIs(const char *objectName) const
{
    QTRY_COMPARE_WITH_TIMEOUT(focusName(), QString::fromLatin1(objectName), kEventWaitMs);
}

void FormWindowX11Tests::onTab(int index, const char *focusObjectName) const
{
    QCOMPARE(tabs()->currentIndex(), index);
    focusIs(focusObjectName);
}

// Presses Tab once for each name: the focus reaches them in this order, and the page
// stays the same.
void FormWindowX11Tests::tabThrough(int index, std::initializer_list<const char *> focusObjectNames) const
{
    for (const char *name : focusObjectNames) {
        press(Qt::Key_Tab);
        onTab(index, name);
        if (QTest::currentTestFailed())
            return;
    }
}

// The intro screen has the focus on the first big button; Space presses it.
void FormWindowX11Tests::chooseBugReport()
{
    focusIs("button_Bug_Report");
    press(Qt::Key_Space);
    QCOMPARE(MainWindowProbe::formState(*window), qint32(FormState::Composing));
    QCOMPARE(MainWindowProbe::reportKind(*window), qint32(ReportKind::BugReport));
    // The pressed button is hidden with the intro screen; the focus moves on to the
    // next control that is still shown.
    onTab(0, "button_Cancel");
}

// From Cancel, Tab leads through Start Over to the tab bar, where Right opens the
// next page and the page puts the focus into its first field.
void FormWindowX11Tests::fillIdentity()
{
    tabThrough(0, {"button_Start_Over", "qt_tabwidget_tabbar"});
    press(Qt::Key_Right);
    onTab(1, "line_Name");
    type(QStringLiteral("Ann Lee"));
    tabThrough(1, {"line_Email"});
    type(QStringLiteral("ann@example.test"));
    QCOMPARE(child<QLineEdit>(*window, "line_Name")->text(), QString("Ann Lee"));
    QCOMPARE(child<QLineEdit>(*window, "line_Email")->text(), QString("ann@example.test"));
}

// The list takes its current row when it gets the focus; each Down selects the next
// row. Tab into the build field selects its text, so typing replaces it. Space
// clears the system-information box, which leaves the summary out of the body.
void FormWindowX11Tests::fillDetails()
{
    press(Qt::Key_Tab, Qt::ControlModifier);
    onTab(2, "list_Area");
    QListWidget *areas = child<QListWidget>(*window, "list_Area");
    QCOMPARE(areas->selectedItems().size(), 0);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    QCOMPARE(areas->selectedItems().size(), 1);
    QCOMPARE(areas->selectedItems().first()->text(), QString("Cameras"));
    tabThrough(2, {"line_Build"});
    type(QStringLiteral("3130"));
    QCOMPARE(child<QLineEdit>(*window, "line_Build")->text(), QString("3130"));
    tabThrough(2, {"check_Include_System_Info"});
    press(Qt::Key_Space);
    QVERIFY(!child<QCheckBox>(*window, "check_Include_System_Info")->isChecked());
}

// Tab leaves the description instead of typing a tab character: it goes on to the
// buttons below the pages and round to the tab bar, where Right opens the next page.
void FormWindowX11Tests::fillDescription()
{
    press(Qt::Key_Tab, Qt::ControlModifier);
    onTab(3, "combo_Title");
    type(QStringLiteral("Crash on save"));
    tabThrough(3, {"edit_Description"});
    type(QStringLiteral("Open a scene."));
    press(Qt::Key_Return);
    type(QStringLiteral("Save it twice."));
    tabThrough(3, {"button_Cancel"});
    QCOMPARE(child<QComboBox>(*window, "combo_Title")->currentText(), QString("Crash on save"));
    QCOMPARE(child<QPlainTextEdit>(*window, "edit_Description")->toPlainText(),
             QString("Open a scene.\nSave it twice."));
    tabThrough(3, {"button_Start_Over", "qt_tabwidget_tabbar"});
}

// Space on "Attach File(s)..." opens Qt's own file dialog; its file-name field has
// the focus, takes the typed path, and Return accepts it.
void FormWindowX11Tests::attachFile()
{
    press(Qt::Key_Right);
    onTab(4, "button_Attach_File");
    QString dialogFocus;
    ModalAnswerer answerer;
    answerer.then([&](QWidget *dialog) {
        dialogFocus = keyboardReady(dialog);
        type(attachmentPath);
        press(Qt::Key_Return);
    });
    press(Qt::Key_Space); // returns when the dialog has closed
    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(answerer.seen().first().className, QString("QFileDialog"));
    QCOMPARE(answerer.seen().first().windowTitle, QString("Select File..."));
    QCOMPARE(dialogFocus, QString("fileNameEdit"));
    onTab(4, "button_Attach_File");

    const QTreeWidget *tree = child<QTreeWidget>(*window, "tree_Attachments");
    QCOMPARE(tree->topLevelItemCount(), 1);
    QCOMPARE(tree->topLevelItem(0)->text(1), attachmentPath);
}

// The settings page gives the focus to the proxy group, which sits in the locked
// frame and is not shown; Shift+Tab reaches the unlock box before it. Space ticks
// it and the frame opens.
void FormWindowX11Tests::pointAtTheReceiver()
{
    press(Qt::Key_Tab, Qt::ControlModifier);
    onTab(5, "group_Proxy_Settings");
    QVERIFY(!child<QWidget>(*window, "frame_Settings")->isVisible());
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    onTab(5, "check_Settings");
    press(Qt::Key_Space);
    QTRY_VERIFY_WITH_TIMEOUT(!child<QCheckBox>(*window, "check_Settings"), kEventWaitMs); // deleted later
    QVERIFY(child<QWidget>(*window, "frame_Settings")->isVisible());
    // The ticked box went with the lock; the focus moved on to the first field shown.
    QCOMPARE(focusName(), QString("line_HTTP_Destination"));
    type(receiver->url().toString());
    QCOMPARE(child<QLineEdit>(*window, "line_HTTP_Destination")->text(), receiver->url().toString());
}

// Tab walks on to Send, enabled now that every page is complete.
void FormWindowX11Tests::reachSend()
{
    tabThrough(5, {"group_Proxy_Settings", "button_Cancel", "button_Start_Over", "button_Send"});
    QCOMPARE(child<QPushButton>(*window, "button_Send")->text(), QString("Send..."));
}

// Space sends; the outcome box opens with the focus on its OK button, and Return
// closes it. The program then quits, which ends the application's loop with 0.
void FormWindowX11Tests::sendAndCloseTheBox()
{
    QString boxFocus;
    ModalAnswerer answerer;
    answerer.then([&](QWidget *box) {
        boxFocus = keyboardReady(box);
        press(Qt::Key_Return);
    });
    const int loopResult = runApplicationLoop([] { press(Qt::Key_Space); }, [] { return false; });
    QCOMPARE(loopResult, 0);
    SendRun run;
    run.boxes = answerer.seen();
    verifySuccessBox(run);
    QCOMPARE(boxFocus, QString("QPushButton \"OK\""));
}

void FormWindowX11Tests::bugReportByKeyboardAlone()
{
    // The address's domain answered from the hosts file, and a direct connection: for
    // the report alone, not for the focus checks of the same program.
    QVERIFY2(PrivateResolver::active(), qPrintable(PrivateResolver::failure()));
    QVERIFY(PrivateResolver::writeHosts(kHosts));
    const ProxyVariablesCleared proxyVariablesCleared;
    QVERIFY(startReceiver());
    attachmentPath = writeTestFile(path("files/steps.txt"), "1. open\r\n2. save\n");
    QVERIFY(!attachmentPath.isEmpty());

    window.reset(new MainWindow);
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window.get(), kEventWaitMs));

    for (auto step :
         {&FormWindowX11Tests::chooseBugReport, &FormWindowX11Tests::fillIdentity, &FormWindowX11Tests::fillDetails,
          &FormWindowX11Tests::fillDescription, &FormWindowX11Tests::attachFile,
          &FormWindowX11Tests::pointAtTheReceiver, &FormWindowX11Tests::reachSend}) {
        (this->*step)();
        if (QTest::currentTestFailed())
            return;
    }

    // The address was checked while the other pages were filled; the report says so.
    QTRY_VERIFY_WITH_TIMEOUT(MainWindowProbe::emailValid(*window), kEventWaitMs);
    QCOMPARE(child<QLabel>(*window, "label_Invalid_Email")->text(), QString());

    sendAndCloseTheBox();
    if (QTest::currentTestFailed())
        return;
    QVERIFY(receiver->waitForEvent("request 1 answered 200"));
    verifyReportRequest(receiver->request(1), receiver->port(), path("request.bin"),
                        {fieldPart("identity", "{ \"product\" : \"Korvane3D\", \"name\" : \"Ann%20Lee\", \"email\" : "
                                               "\"ann%40example.test\", \"validated\" : \"true\" }"),
                         fieldPart("details", expectedDetails("bug", "3130", "Cameras", "false")),
                         fieldPart("title", "Crash on save"),
                         fieldPart("description", "Open a scene.\r\nSave it twice."),
                         filePart("steps.txt", "1. open\r\n2. save\n"), fieldPart("attachments", "[ \"steps.txt\" ]")});
}
