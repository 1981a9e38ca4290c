// Ctrl+V on the Attachments tab with another program owning the clipboard (xclip on a
// real X server; on Windows a CF_DIB put there through the Win32 calls): the "Name
// Image" question, the saved PNG and its row, and every way nothing happens.
//
// On Windows the bitmap takes a detour through a temporary .bmp in the thumbnail
// folder, which is removed again; elsewhere the picture comes from QClipboard. Either
// way no file but the named PNG is left, which the tests check by listing the folder
// exactly.
#include "attachmentcheck.h"
#include "attachmentswindowx11tests.h"
#include "form/mainwindow.h"
#include "support/mainwindowprobe.h"
#include "support/modalanswerer.h"
#include "support/testenv.h"
#ifdef Q_OS_WIN
#include "winclipboard.h"
#endif

#include <QApplication>
#include <QClipboard>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTabWidget>
#include <QtTest>

using namespace attachmentcheck;

namespace {

const int kAttachmentsTab = 4;

// What the name question showed before it was answered.
struct NameQuestion
{
    bool seen = false;
    QLineEdit::EchoMode echo = QLineEdit::Password;
    QString prefilled = QStringLiteral("unset");
    QWidget *parent = nullptr;
};

// Records the key presses that reach the object it filters.
class KeySpy : public QObject
{
public:
    QList<int> presses;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress)
            presses << static_cast<QKeyEvent *>(event)->key();
        return QObject::eventFilter(watched, event);
    }
};

// Answers the name question with the given text after noting what it showed.
ModalAnswerer::Answer answerName(const QString &name, NameQuestion *question)
{
    return [name, question](QWidget *modal) {
        QInputDialog *dialog = qobject_cast<QInputDialog *>(modal);
        if (!dialog) {
            modal->close();
            return;
        }
        question->seen = true;
        question->echo = dialog->textEchoMode();
        question->prefilled = dialog->textValue();
        question->parent = dialog->parentWidget();
        dialog->setTextValue(name);
        dialog->accept();
    };
}

void pressPaste(QWidget *target, Qt::KeyboardModifiers modifiers = Qt::ControlModifier)
{
    QTest::keyClick(target, Qt::Key_V, modifiers);
}

} // namespace

// What init() does for this section's functions.
void AttachmentsWindowX11Tests::openPasteWindow()
{
    window.reset(new MainWindow);
    MainWindowProbe::widget<QPushButton>(*window, "button_Bug_Report")->click();
    tabs()->setCurrentIndex(kAttachmentsTab);
    QCOMPARE(sendButton()->text(), QString("Completed 1/7"));
    // A caption that only slot_set_control_states would replace.
    sendButton()->setText("untouched");
}

QTabWidget *AttachmentsWindowX11Tests::tabs() const
{
    return MainWindowProbe::widget<QTabWidget>(*window, "tabWidget");
}

QPushButton *AttachmentsWindowX11Tests::sendButton() const
{
    return MainWindowProbe::widget<QPushButton>(*window, "button_Send");
}

QString AttachmentsWindowX11Tests::inFolder(const QString &name) const
{
    return QDir::toNativeSeparators(thumbnailFolder(*window) + "/" + name);
}

void AttachmentsWindowX11Tests::expectNothingAdded(const ModalAnswerer &answerer)
{
    QCOMPARE(answerer.seen().size(), 0);
    QCOMPARE(tree(*window)->topLevelItemCount(), 0);
    QCOMPARE(thumbnailFiles(*window), QStringList());
    QCOMPARE(sendButton()->text(), QString("untouched"));
}

void AttachmentsWindowX11Tests::ctrlVAsksForANameAndAddsTheImage()
{
    QVERIFY(xclip.serve(pngOf(picture), "image/png"));
    NameQuestion question;
    ModalAnswerer answerer;
    answerer.then(answerName("shot", &question));
    pressPaste(tree(*window));

    QCOMPARE(answerer.seen().size(), 1);
    const ModalSnapshot shown = answerer.seen().first();
    QCOMPARE(shown.className, QString("QInputDialog"));
    QCOMPARE(shown.windowTitle, QString("Name Image"));
    QCOMPARE(shown.text, QString("Name:"));
    QVERIFY(question.seen);
    QCOMPARE(question.echo, QLineEdit::Normal);
    QCOMPARE(question.prefilled, QString());
    QCOMPARE(question.parent, window.get());

    QTreeWidget *list = tree(*window);
    QCOMPARE(list->topLevelItemCount(), 1);
    QTreeWidgetItem *item = list->topLevelItem(0);
    QCOMPARE(item->data(1, Qt::UserRole), QVariant(inFolder("shot.png")));
    QCOMPARE(item->toolTip(1), toolTipFor(inFolder("shot.png")));
    QCOMPARE(item->text(1), QString());
    QVERIFY(isResourceIcon(item->icon(0), ":/images/Image.png"));
    QCOMPARE(iconImage(item->icon(1), picture.size()), argb(picture));
    QCOMPARE(argb(QImage(inFolder("shot.png"))), argb(picture));
    QCOMPARE(thumbnailFiles(*window), QStringList{"shot.png"}); // nothing else was written
    QCOMPARE(tabs()->currentIndex(), kAttachmentsTab);
    QCOMPARE(sendButton()->text(), QString("Completed 2/7"));
    QCOMPARE(list->styleSheet(), QString());
}

void AttachmentsWindowX11Tests::pastingTheSameNameCountsUp()
{
    QVERIFY(xclip.serve(pngOf(picture), "image/png"));
    NameQuestion question;
    ModalAnswerer answerer;
    answerer.then(answerName("Bug & crash?", &question))
        .then(answerName("Bug & crash?", &question))
        .then(answerName("Bug & crash?", &question));
    for (int i = 0; i < 3; ++i)
        pressPaste(tree(*window));
    QCOMPARE(answerer.seen().size(), 3);
    QCOMPARE(thumbnailFiles(*window),
             (QStringList{"Bug_and_crash_.png", "Bug_and_crash__1.png", "Bug_and_crash__2.png"}));
    QCOMPARE(tree(*window)->topLevelItem(2)->data(1, Qt::UserRole), QVariant(inFolder("Bug_and_crash__2.png")));
}

void AttachmentsWindowX11Tests::ctrlVOnAnotherTabDoesNothing_data()
{
    QTest::addColumn<int>("tab");
    for (int tab : {0, 1, 2, 3, 5})
        QTest::addRow("tab %d", tab) << tab;
}

void AttachmentsWindowX11Tests::ctrlVOnAnotherTabDoesNothing()
{
    QFETCH(int, tab);
    QVERIFY(xclip.serve(pngOf(picture), "image/png"));
    tabs()->setCurrentIndex(tab);
    ModalAnswerer answerer;
    pressPaste(tree(*window));
    pressPaste(sendButton());
    QCOMPARE(tabs()->currentIndex(), tab);
    expectNothingAdded(answerer);
}

void AttachmentsWindowX11Tests::otherModifiersStillPaste_data()
{
    QTest::addColumn<int>("modifiers");
    QTest::newRow("Ctrl+Shift+V") << int(Qt::ControlModifier | Qt::ShiftModifier);
    QTest::newRow("Ctrl+Alt+V") << int(Qt::ControlModifier | Qt::AltModifier);
}

void AttachmentsWindowX11Tests::otherModifiersStillPaste()
{
    QFETCH(int, modifiers);
    QVERIFY(xclip.serve(pngOf(picture), "image/png"));
    NameQuestion question;
    ModalAnswerer answerer;
    answerer.then(answerName("shifted", &question));
    pressPaste(tree(*window), Qt::KeyboardModifiers(modifiers));
    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(thumbnailFiles(*window), QStringList{"shifted.png"});
}

void AttachmentsWindowX11Tests::keyOnTheSendButtonPastesToo()
{
    // Both watched widgets lead to the paste; which one got the key is not asked.
    QVERIFY(xclip.serve(pngOf(picture), "image/png"));
    NameQuestion question;
    ModalAnswerer answerer;
    answerer.then(answerName("from send", &question));
    pressPaste(sendButton());
    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(thumbnailFiles(*window), QStringList{"from_send.png"});
}

void AttachmentsWindowX11Tests::otherKeysDoNothing()
{
    QVERIFY(xclip.serve(pngOf(picture), "image/png"));
    ModalAnswerer answerer;
    QTest::keyClick(tree(*window), Qt::Key_V);
    QTest::keyClick(tree(*window), Qt::Key_V, Qt::ShiftModifier);
    QTest::keyClick(tree(*window), Qt::Key_C, Qt::ControlModifier);
    expectNothingAdded(answerer);
}

void AttachmentsWindowX11Tests::textOnTheClipboardGivesNoDialog()
{
    QVERIFY(xclip.serve("a line of text", "UTF8_STRING", "text/plain"));
    ModalAnswerer answerer;
    pressPaste(tree(*window));
    expectNothingAdded(answerer);
}

void AttachmentsWindowX11Tests::emptyClipboardGivesNoDialog()
{
    QGuiApplication::clipboard()->clear();
    ModalAnswerer answerer;
    pressPaste(tree(*window));
    expectNothingAdded(answerer);
}

void AttachmentsWindowX11Tests::cancelledNameAddsNothing()
{
    QVERIFY(xclip.serve(pngOf(picture), "image/png"));
    ModalAnswerer answerer;
    answerer.reject();
    pressPaste(tree(*window));
    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(answerer.seen().first().windowTitle, QString("Name Image"));
    QCOMPARE(tree(*window)->topLevelItemCount(), 0);
    QCOMPARE(thumbnailFiles(*window), QStringList());
    QCOMPARE(sendButton()->text(), QString("untouched")); // states not derived again
}

void AttachmentsWindowX11Tests::emptyNameAddsNothing()
{
    QVERIFY(xclip.serve(pngOf(picture), "image/png"));
    NameQuestion question;
    ModalAnswerer answerer;
    answerer.then(answerName(QString(), &question));
    pressPaste(tree(*window));
    QVERIFY(question.seen);
    QCOMPARE(tree(*window)->topLevelItemCount(), 0);
    QCOMPARE(thumbnailFiles(*window), QStringList());
    QCOMPARE(sendButton()->text(), QString("untouched"));
}

void AttachmentsWindowX11Tests::thePressIsNotConsumed()
{
    // The tree does nothing with Ctrl+V and passes it on to its parent; the parent
    // sees it only if the filter let the tree have it.
    QVERIFY(xclip.serve(pngOf(picture), "image/png"));
    KeySpy spy;
    tree(*window)->parentWidget()->installEventFilter(&spy);
    NameQuestion question;
    ModalAnswerer answerer;
    answerer.then(answerName("passed on", &question));
    pressPaste(tree(*window));
    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(spy.presses, (QList<int>{Qt::Key_Control, Qt::Key_V})); // the Control key comes first
}

void AttachmentsWindowX11Tests::realKeyPressThroughTheWindowSystem()
{
    // The keys go through the window system to the focused tree, as a user types them.
    QVERIFY(xclip.serve(pngOf(picture), "image/png"));
    window->show();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window.get(), kEventWaitMs));
    tree(*window)->setFocus();
    QVERIFY(QTest::qWaitFor([&] { return tree(*window)->hasFocus(); }, kEventWaitMs));
    NameQuestion question;
    ModalAnswerer answerer;
    answerer.then(answerName("typed", &question));
#ifdef Q_OS_WIN
    QVERIFY(WinClipboard::typeCtrlV());
    QVERIFY(answerer.waitForSeen(1, kEventWaitMs));
#else
    QProcess xdotool;
    xdotool.start("xdotool", {"key", "--clearmodifiers", "ctrl+v"});
    QVERIFY(answerer.waitForSeen(1, kEventWaitMs));
    QVERIFY(QTest::qWaitFor([&] { return xdotool.state() == QProcess::NotRunning; }, kEventWaitMs));
    QCOMPARE(xdotool.exitCode(), 0);
#endif
    QVERIFY(QTest::qWaitFor([&] { return tree(*window)->topLevelItemCount() == 1; }, kEventWaitMs));
    QCOMPARE(thumbnailFiles(*window), QStringList{"typed.png"});
    QCOMPARE(argb(QImage(inFolder("typed.png"))), argb(picture));
}
