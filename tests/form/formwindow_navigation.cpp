// Moving between the screens and the small slots around the form: start over, cancel,
// the jump to the missing tab, the screen-shot delay, the title history, the settings
// lock and the tips video.
#include "formwindowtests.h"

#include "form/formwidgets.h"
#include "form/mainwindow.h"
#include "support/mainwindowprobe.h"
#include "support/modalanswerer.h"
#include "support/testenv.h"

#include <QApplication>
#include <QDesktopServices>
#include <QPointer>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QtTest>

namespace {

// Runs the application's event loop the way main() does, with Cancel clicked from inside
// it; returns exec()'s code, or 99 when nothing ended the loop within two seconds.
int execWithCancelClicked(FormWidgets &f)
{
    QTimer::singleShot(0, f.cancel, [&f] { QTest::mouseClick(f.cancel, Qt::LeftButton); });
    QTimer::singleShot(2000, qApp, [] { QCoreApplication::exit(99); });
    return QApplication::exec();
}

// What the delay's editingFinished sees: typed text, then Return.
void typeDelay(FormWidgets &f, const QString &text)
{
    f.delay->clear();
    QTest::keyClicks(f.delay, text);
    QTest::keyClick(f.delay, Qt::Key_Return);
}

void typeTitle(FormWidgets &f, const QString &text)
{
    QLineEdit *edit = f.title->lineEdit();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, text);
    QTest::keyClick(edit, Qt::Key_Return);
}

QStringList titleItems(const FormWidgets &f)
{
    QStringList items;
    for (int i = 0; i < f.title->count(); ++i)
        items << f.title->itemText(i);
    return items;
}

} // namespace

// Receives the links that QDesktopServices would hand to the desktop.
class UrlCatcher : public QObject
{
    Q_OBJECT

public:
    QList<QUrl> urls;

public slots:
    void open(const QUrl &url) { urls << url; }
};

void FormWindowTests::startOver_data()
{
    QTest::addColumn<bool>("remember");
    QTest::newRow("remember my information") << true;
    QTest::newRow("forget my information") << false;
}
void FormWindowTests::startOver()
{
    QFETCH(bool, remember);
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window, kEventWaitMs));
    FormWidgets f(window);
    QCOMPARE(f.remember->isChecked(), true);
    f.remember->setChecked(remember);
    QTest::mouseClick(f.bug, Qt::LeftButton);
    fillReport(f, 0);
    typeTitle(f, QStringLiteral("Older title"));
    typeTitle(f, QStringLiteral("Crash when saving"));
    f.build->setText(QStringLiteral("42"));
    f.find<QCheckBox>("check_NDA")->setChecked(true);
    f.find<QCheckBox>("check_Include_System_Info")->setChecked(false);
    f.delay->setText(QStringLiteral("7"));
    f.email->setStyleSheet(QStringLiteral("background-color: rgb(245, 255, 245);"));
    f.tabs->setCurrentIndex(4);
    QCOMPARE(f.attachments->topLevelItemCount(), 1);

    QTest::mouseClick(f.startOver, Qt::LeftButton);
    QCOMPARE(MainWindowProbe::formState(window), qint32(FormState::Choosing));
    QCOMPARE(MainWindowProbe::reportKind(window), qint32(ReportKind::None));
    QVERIFY(f.bug->isVisible());
    QCOMPARE(f.tabs->currentIndex(), 0);
    QCOMPARE(f.name->text(), remember ? QString("Ann Example") : QString());
    QCOMPARE(f.email->text(), remember ? QString("ann@example.com") : QString());
    QCOMPARE(f.email->styleSheet(), QString());
    QVERIFY(f.area->selectedItems().isEmpty());
    QCOMPARE(f.title->currentText(), QString());
    QCOMPARE(titleItems(f), QStringList({"Crash when saving", "Older title"}));
    QCOMPARE(f.description->toPlainText(), QString());
    QCOMPARE(f.attachments->topLevelItemCount(), 0);
    QCOMPARE(f.build->text(), QString("42"));
    QVERIFY(f.find<QCheckBox>("check_NDA")->isChecked());
    QVERIFY(!f.find<QCheckBox>("check_Include_System_Info")->isChecked());
    QCOMPARE(f.delay->text(), QString("7"));
    QCOMPARE(f.send->toolTip(), QString("Select a feedback type to submit a report"));

    QTest::mouseClick(f.feature, Qt::LeftButton);
    QCOMPARE(f.tabs->currentIndex(), 0);
    QCOMPARE(f.send->text(), QString(remember ? "Completed 3/6" : "Completed 1/6"));
}

void FormWindowTests::cancelEndsTheProgram_data()
{
    QTest::addColumn<bool>("composing");
    QTest::newRow("intro screen") << false;
    QTest::newRow("compose screen") << true;
}
void FormWindowTests::cancelEndsTheProgram()
{
    QFETCH(bool, composing);
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window, kEventWaitMs));
    FormWidgets f(window);
    if (composing) {
        QTest::mouseClick(f.feature, Qt::LeftButton);
        fillReport(f, 0);
    }
    ModalAnswerer answerer;
    QSignalSpy aboutToQuit(qApp, &QCoreApplication::aboutToQuit);
    QCOMPARE(execWithCancelClicked(f), 0);
    QCOMPARE(aboutToQuit.count(), 1);
    QVERIFY(answerer.seen().isEmpty()); // no confirmation
    QCOMPARE(MainWindowProbe::formState(window), qint32(composing ? FormState::Composing : FormState::Choosing));
    QCOMPARE(MainWindowProbe::sendOutcome(window), qint32(SendOutcome::Idle));
}

// Abort while sending: back to the intro screen, the kind and every field kept.
void FormWindowTests::cancelWhileSendingAborts()
{
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window, kEventWaitMs));
    FormWidgets f(window);
    QTest::mouseClick(f.bug, Qt::LeftButton);
    fillReport(f, 0);
    f.tabs->setCurrentIndex(3);
    f.enterScreen(FormState::Sending);
    QCOMPARE(f.cancel->text(), QString("Abort"));

    ModalAnswerer answerer;
    QCOMPARE(execWithCancelClicked(f), 99);
    QVERIFY(answerer.seen().isEmpty());
    QCOMPARE(MainWindowProbe::formState(window), qint32(FormState::Choosing));
    QCOMPARE(MainWindowProbe::reportKind(window), qint32(ReportKind::BugReport));
    QCOMPARE(MainWindowProbe::sendOutcome(window), qint32(SendOutcome::Aborted));
    QCOMPARE(f.cancel->text(), QString("Abort")); // only the compose screen writes "Cancel"
    QVERIFY(f.bug->isVisible());
    QVERIFY(!f.tabs->isVisible());
    QVERIFY(!f.progress->isVisible());
    QCOMPARE(f.send->text(), QString("Send..."));
    QCOMPARE(f.send->toolTip(), QString("Select a feedback type to submit a report"));
    QVERIFY(!f.send->isEnabled());
    QCOMPARE(f.name->text(), QString("Ann Example"));
    QCOMPARE(f.email->text(), QString("ann@example.com"));
    QCOMPARE(f.area->selectedItems().size(), 1);
    QCOMPARE(f.title->currentText(), QString("Crash when saving"));
    QCOMPARE(f.description->toPlainText(), QString("Open a scene, save it twice."));
    QCOMPARE(f.attachments->topLevelItemCount(), 1);
    QCOMPARE(f.tabs->currentIndex(), 3);
}

void FormWindowTests::pressOnDisabledSendJumpsToMissingTab_data()
{
    QTest::addColumn<bool>("bugReport");
    QTest::addColumn<int>("missing");
    QTest::addColumn<int>("tab");
    QTest::newRow("name") << true << int(NameField) << 1;
    QTest::newRow("e-mail") << true << int(EmailField) << 1;
    QTest::newRow("name and area") << true << int(NameField | AreaField) << 1;
    QTest::newRow("area") << true << int(AreaField) << 2;
    QTest::newRow("area and title") << false << int(AreaField | TitleField) << 2;
    QTest::newRow("title") << false << int(TitleField) << 3;
    QTest::newRow("description") << true << int(DescriptionField) << 3;
    QTest::newRow("attachments of a bug report") << true << int(AttachmentsField) << 4;
    QTest::newRow("build only, bug report") << true << int(BuildField) << 5;
    QTest::newRow("build only, feature request") << false << int(BuildField | AttachmentsField) << 5;
    QTest::newRow("build and attachments") << true << int(BuildField | AttachmentsField) << 4;
}
void FormWindowTests::pressOnDisabledSendJumpsToMissingTab()
{
    QFETCH(bool, bugReport);
    QFETCH(int, missing);
    QFETCH(int, tab);
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window, kEventWaitMs));
    FormWidgets f(window);
    QTest::mouseClick(bugReport ? f.bug : f.feature, Qt::LeftButton);
    fillReport(f, missing);
    f.recompute();
    f.tabs->setCurrentIndex(5);
    QVERIFY(!f.send->isEnabled());

    QTest::mousePress(f.send, Qt::LeftButton);
    QCOMPARE(f.tabs->currentIndex(), tab);
    QTest::mouseRelease(f.send, Qt::LeftButton);
}

void FormWindowTests::pressIsNeverConsumed()
{
    MainWindow window;
    FormWidgets f(window);
    QTest::mouseClick(f.bug, Qt::LeftButton);
    f.tabs->setCurrentIndex(5);
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(5, 5), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCOMPARE(static_cast<QObject &>(window).eventFilter(f.send, &press), false);
    QCOMPARE(f.tabs->currentIndex(), 1);

    // An enabled button is left to itself: no jump, and the press goes on to it.
    fillReport(f, 0);
    f.recompute();
    f.tabs->setCurrentIndex(5);
    QVERIFY(f.send->isEnabled());
    QCOMPARE(static_cast<QObject &>(window).eventFilter(f.send, &press), false);
    QCOMPARE(f.tabs->currentIndex(), 5);
}

void FormWindowTests::pressOnTheIntroScreenJumpsNowhere()
{
    MainWindow window;
    FormWidgets f(window);
    f.tabs->setCurrentIndex(5);
    QTest::mouseClick(f.send, Qt::LeftButton);
    QCOMPARE(f.tabs->currentIndex(), 5);
}

void FormWindowTests::delayIsClamped_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("modifiedBefore");
    QTest::addColumn<QString>("kept");
    QTest::addColumn<bool>("modifiedAfter");
    QTest::newRow("1") << "1" << false << "2" << false;
    QTest::newRow("2") << "2" << false << "2" << false;
    QTest::newRow("2, already modified") << "2" << true << "2" << true;
    QTest::newRow("3") << "3" << false << "3" << true;
    QTest::newRow("59") << "59" << false << "59" << true;
    QTest::newRow("60") << "60" << false << "60" << true;
    QTest::newRow("61") << "61" << false << "60" << true;
    QTest::newRow("999") << "999" << false << "60" << true;
}
void FormWindowTests::delayIsClamped()
{
    QFETCH(QString, typed);
    QFETCH(bool, modifiedBefore);
    QFETCH(QString, kept);
    QFETCH(bool, modifiedAfter);
    MainWindow window;
    FormWidgets f(window);
    QTest::mouseClick(f.bug, Qt::LeftButton);
    if (modifiedBefore)
        f.remember->setChecked(false);
    QCOMPARE(MainWindowProbe::settingsModified(window), modifiedBefore);
    typeDelay(f, typed);
    QCOMPARE(f.delay->text(), kept);
    QCOMPARE(MainWindowProbe::settingsModified(window), modifiedAfter);
}

void FormWindowTests::delayThatDoesNotParseReadsAsZero()
{
    MainWindow window;
    FormWidgets f(window);
    f.delay->setText(QString()); // the validator keeps users from leaving it so
    f.call("slot_validate_delay");
    QCOMPARE(f.delay->text(), QString("2"));
    QVERIFY(!MainWindowProbe::settingsModified(window));
}

void FormWindowTests::titleHistory()
{
    MainWindow window;
    FormWidgets f(window);
    QTest::mouseClick(f.feature, Qt::LeftButton);
    QVERIFY(!MainWindowProbe::settingsModified(window));

    typeTitle(f, QStringLiteral("Crash on save"));
    QCOMPARE(titleItems(f), QStringList({"Crash on save"}));
    QCOMPARE(f.title->currentText(), QString("Crash on save"));
    QVERIFY(MainWindowProbe::settingsModified(window));

    typeTitle(f, QStringLiteral("Slow viewport"));
    QCOMPARE(titleItems(f), QStringList({"Slow viewport", "Crash on save"}));
    QCOMPARE(f.title->currentText(), QString("Slow viewport"));

    // Another letter case is another title.
    typeTitle(f, QStringLiteral("crash on save"));
    QCOMPARE(titleItems(f), QStringList({"crash on save", "Slow viewport", "Crash on save"}));
    QCOMPARE(f.title->currentText(), QString("crash on save"));

    typeTitle(f, QStringLiteral("Slow viewport"));
    QCOMPARE(titleItems(f), QStringList({"crash on save", "Slow viewport", "Crash on save"}));
    QCOMPARE(f.title->currentText(), QString("Slow viewport"));

    typeTitle(f, QString());
    QCOMPARE(f.title->count(), 3);
}

void FormWindowTests::titleAlreadyInTheHistoryChangesNothing()
{
    MainWindow window;
    FormWidgets f(window);
    f.title->addItems({QStringLiteral("Slow viewport"), QStringLiteral("Crash on save")});
    QTest::mouseClick(f.feature, Qt::LeftButton);
    typeTitle(f, QStringLiteral("Crash on save"));
    QCOMPARE(titleItems(f), QStringList({"Slow viewport", "Crash on save"}));
    QVERIFY(!MainWindowProbe::settingsModified(window));
}

void FormWindowTests::choosingAHistoryEntryFillsTheTitle()
{
    MainWindow window;
    FormWidgets f(window);
    f.title->addItems({QStringLiteral("Slow viewport"), QStringLiteral("Crash on save")});
    QTest::mouseClick(f.feature, Qt::LeftButton);
    f.title->setCurrentIndex(1);
    QCOMPARE(f.title->lineEdit()->text(), QString("Crash on save"));
    QCOMPARE(f.title->styleSheet(), QString());
}

void FormWindowTests::settingsUnlockIsOneWay()
{
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window, kEventWaitMs));
    FormWidgets f(window);
    QTest::mouseClick(f.bug, Qt::LeftButton);
    f.tabs->setCurrentIndex(5);
    QFrame *frame = f.find<QFrame>("frame_Settings");
    QPointer<QCheckBox> check = f.find<QCheckBox>("check_Settings");
    QPointer<QLabel> note = f.find<QLabel>("label_Settings");
    QPointer<QLabel> pad = f.find<QLabel>("label_SettingsPad");
    QVERIFY(!frame->isVisible());
    QCOMPARE(check->text(), QString("I understand.  Let me modify the settings."));

    QTest::mouseClick(check, Qt::LeftButton);
    QVERIFY(frame->isVisible());
    QTRY_VERIFY(!check && !note && !pad);

    QTest::mouseClick(f.startOver, Qt::LeftButton);
    QTest::mouseClick(f.feature, Qt::LeftButton);
    f.tabs->setCurrentIndex(5);
    QVERIFY(frame->isVisible());
}

void FormWindowTests::eatEnterDoesNothing()
{
    MainWindow window;
    FormWidgets f(window);
    QTest::mouseClick(f.bug, Qt::LeftButton);
    fillReport(f, AttachmentsField);
    f.tabs->setCurrentIndex(2);
    const auto snapshot = [&] {
        return QStringList{QString::number(MainWindowProbe::formState(window)),
                           QString::number(MainWindowProbe::reportKind(window)),
                           QString::number(MainWindowProbe::settingsModified(window)),
                           QString::number(f.tabs->currentIndex()),
                           f.send->text(),
                           f.send->toolTip(),
                           QString::number(f.send->isEnabled()),
                           f.attachments->styleSheet(),
                           f.name->text(),
                           f.title->currentText()};
    };
    const QStringList before = snapshot();
    f.call("slot_eat_enter");
    QCOMPARE(snapshot(), before);
}

void FormWindowTests::tipsVideoOpensTheLink()
{
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window, kEventWaitMs));
    FormWidgets f(window);
    QTest::mouseClick(f.bug, Qt::LeftButton);
    QLabel *video = f.find<QLabel>("label_Video");
    const QRegularExpressionMatch href = QRegularExpression(QStringLiteral("href=\"([^\"]+)\"")).match(video->text());
    QVERIFY2(href.hasMatch(), qPrintable(video->text()));

    UrlCatcher catcher;
    for (const char *scheme : {"http", "https"})
        QDesktopServices::setUrlHandler(QLatin1String(scheme), &catcher, "open");
    QTest::mouseClick(video, Qt::LeftButton, Qt::NoModifier, QPoint(20, video->height() / 2));
    QVERIFY(QMetaObject::invokeMethod(&window, "slot_play_video",
                                      Q_ARG(QString, QStringLiteral("https://videos.example/watch?v=tips and more"))));
    for (const char *scheme : {"http", "https"})
        QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
    QCOMPARE(catcher.urls.size(), 2);
    QCOMPARE(catcher.urls.at(0), QUrl(href.captured(1)));
    QCOMPARE(catcher.urls.at(1).toString(QUrl::FullyEncoded),
             QString("https://videos.example/watch?v=tips%20and%20more"));
}

// UrlCatcher's slot.
#include "formwindow_navigation.moc"
