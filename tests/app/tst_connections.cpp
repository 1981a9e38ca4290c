#include "form/mainwindow.h"
#include "support/mainwindowprobe.h"
#include "support/testenv.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEventLoop>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

// Form signals the window listens to, checked by their effect: the signal is emitted
// as a user's action emits it, and what the slot does follows.
class TestConnections : public QObject
{
    Q_OBJECT

private slots:
    void emailTimerDrivesTheDomainCheck()
    {
        MainWindow window;
        const QTimer &timer = MainWindowProbe::emailTimer(window);
        QCOMPARE(timer.interval(), 2000);
        QVERIFY(!timer.isActive());
        QVERIFY(!timer.isSingleShot());
        QVERIFY(QObject::disconnect(&timer, SIGNAL(timeout()), &window, SLOT(slot_validate_email_domain())));
    }

    void nameEditingFinishedRecomputesAndMarksModified()
    {
        // Not shown: the platform's placing of a shown window is a move that marks the
        // settings modified by itself.
        MainWindow window;
        MainWindowProbe::widget<QPushButton>(window, "button_Feature_Request")->click();
        auto *name = MainWindowProbe::widget<QLineEdit>(window, "line_Name");
        QCOMPARE(name->styleSheet(), QString("border: 1px solid rgb(200, 150, 150)"));
        QVERIFY(!MainWindowProbe::settingsModified(window));
        // setText emits no textEdited; only editingFinished reaches the window.
        name->setText("Ann");
        QCOMPARE(name->styleSheet(), QString("border: 1px solid rgb(200, 150, 150)"));
        emit name->editingFinished();
        QCOMPARE(name->styleSheet(), QString());
        QVERIFY(MainWindowProbe::settingsModified(window));
    }

    void nameTextEditedRecomputes()
    {
        MainWindow window;
        MainWindowProbe::widget<QPushButton>(window, "button_Feature_Request")->click();
        auto *name = MainWindowProbe::widget<QLineEdit>(window, "line_Name");
        name->setFocus();
        QTest::keyClicks(name, "A");
        QCOMPARE(name->styleSheet(), QString());
        QVERIFY(!MainWindowProbe::settingsModified(window));
    }

    void areaSelectionRecomputes()
    {
        MainWindow window;
        MainWindowProbe::widget<QPushButton>(window, "button_Feature_Request")->click();
        auto *area = MainWindowProbe::widget<QListWidget>(window, "list_Area");
        QCOMPARE(area->styleSheet(), QString("border: 1px solid rgb(200, 150, 150)"));
        area->setCurrentRow(3);
        QCOMPARE(area->styleSheet(), QString());
    }

    void settingsCheckBoxUnlocksTheFrame()
    {
        MainWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window, kEventWaitMs));
        auto *frame = MainWindowProbe::widget<QWidget>(window, "frame_Settings");
        QVERIFY(frame->isHidden());
        MainWindowProbe::widget<QCheckBox>(window, "check_Settings")->setChecked(true);
        QVERIFY(!frame->isHidden());
    }

    void rememberBoxMarksModified()
    {
        MainWindow window;
        QVERIFY(!MainWindowProbe::settingsModified(window));
        MainWindowProbe::widget<QCheckBox>(window, "check_Remember_My_Info")->setChecked(false);
        QVERIFY(MainWindowProbe::settingsModified(window));
    }

    void bigButtonsChooseTheKind()
    {
        MainWindow window;
        MainWindowProbe::widget<QPushButton>(window, "button_Bug_Report")->click();
        QCOMPARE(MainWindowProbe::reportKind(window), qint32(BugReport));
        QCOMPARE(MainWindowProbe::formState(window), qint32(Composing));
        MainWindowProbe::widget<QPushButton>(window, "button_Start_Over")->click();
        QCOMPARE(MainWindowProbe::reportKind(window), qint32(None));
        QCOMPARE(MainWindowProbe::formState(window), qint32(Choosing));
        MainWindowProbe::widget<QPushButton>(window, "button_Feature_Request")->click();
        QCOMPARE(MainWindowProbe::reportKind(window), qint32(FeatureRequest));
    }

    void cancelOnTheIntroScreenQuits()
    {
        MainWindow window;
        QEventLoop loop;
        QTimer::singleShot(0, &window, [&] { MainWindowProbe::widget<QPushButton>(window, "button_Cancel")->click(); });
        QTimer::singleShot(5000, &loop, [&] { loop.exit(99); });
        QCOMPARE(loop.exec(), 0);
    }

    void tabChangeMovesTheFocus()
    {
        MainWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window, kEventWaitMs));
        window.activateWindow();
        MainWindowProbe::widget<QPushButton>(window, "button_Feature_Request")->click();
        auto *tabs = MainWindowProbe::widget<QTabWidget>(window, "tabWidget");
        tabs->setCurrentIndex(3);
        auto *title = MainWindowProbe::widget<QComboBox>(window, "combo_Title");
        QTRY_VERIFY(QApplication::focusWidget() == title || QApplication::focusWidget() == title->lineEdit());
    }
};

FB_TEST_MAIN(TestConnections)
#include "tst_connections.moc"
