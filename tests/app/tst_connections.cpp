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

// Every form signal the window listens to, checked two ways: the connection exists
// exactly once (disconnect succeeds once and only once), and where the slot's effect
// can be seen, the effect follows the signal.
class TestConnections : public QObject
{
    Q_OBJECT

private slots:
    void eachConnectionExistsOnce_data()
    {
        QTest::addColumn<QString>("sender");
        QTest::addColumn<QByteArray>("signal");
        QTest::addColumn<QByteArray>("slot");
        const auto row = [](const char *sender, const char *signal, const char *slot) {
            QTest::addRow("%s %s -> %s", sender, signal, slot)
                << QString(sender) << QByteArray(signal) << QByteArray(slot);
        };
        row("button_Cancel", "clicked(bool)", "slot_cancel()");
        row("button_Start_Over", "clicked(bool)", "slot_start_over()");
        row("label_Video", "linkActivated(QString)", "slot_play_video(QString)");
        row("line_Name", "editingFinished()", "slot_set_control_states()");
        row("line_Name", "textEdited(QString)", "slot_set_control_states()");
        row("line_Email", "textEdited(QString)", "slot_email_edited(QString)");
        row("combo_Title.lineEdit", "textChanged(QString)", "slot_set_control_states()");
        row("combo_Title.lineEdit", "editingFinished()", "slot_update_title_list()");
        row("combo_Title", "currentIndexChanged(int)", "slot_set_title_text(int)");
        row("edit_Description", "textChanged()", "slot_set_control_states()");
        row("list_Area", "itemSelectionChanged()", "slot_set_control_states()");
        row("line_Build", "textEdited(QString)", "slot_set_control_states()");
        row("button_Bug_Report", "clicked(bool)", "slot_show_bug_report()");
        row("button_Feature_Request", "clicked(bool)", "slot_show_feature_request()");
        row("button_Attach_File", "clicked(bool)", "slot_add_attachment()");
        row("button_Screen_Shot", "clicked(bool)", "slot_process_screen_shot()");
        row("button_Remove_Entry", "clicked(bool)", "slot_remove_attachment()");
        row("button_Clear_All", "clicked(bool)", "slot_clear_attachments()");
        row("button_Send", "clicked(bool)", "slot_submit()");
        row("tabWidget", "currentChanged(int)", "slot_tab_changed(int)");
        row("line_Snapshot_Delay", "editingFinished()", "slot_validate_delay()");
        row("line_Name", "editingFinished()", "slot_set_modified()");
        row("line_Email", "editingFinished()", "slot_set_modified()");
        row("line_HTTP_Destination", "editingFinished()", "slot_set_modified()");
        row("line_Proxy_Server", "editingFinished()", "slot_set_modified()");
        row("line_Proxy_Port", "editingFinished()", "slot_set_modified()");
        row("line_Proxy_User_Name", "editingFinished()", "slot_set_modified()");
        row("line_Proxy_Password", "editingFinished()", "slot_set_modified()");
        row("check_Remember_My_Info", "stateChanged(int)", "slot_set_modified()");
        row("group_Proxy_Settings", "clicked(bool)", "slot_set_modified()");
        row("check_Settings", "stateChanged(int)", "slot_enable_edit_settings()");
    }
    void eachConnectionExistsOnce()
    {
        QFETCH(QString, sender);
        QFETCH(QByteArray, signal);
        QFETCH(QByteArray, slot);
        MainWindow window;
        QObject *source = nullptr;
        if (sender == "combo_Title.lineEdit")
            source = MainWindowProbe::widget<QComboBox>(window, "combo_Title")->lineEdit();
        else
            source = window.findChild<QObject *>(sender);
        QVERIFY2(source, qPrintable(sender));
        const QByteArray signalText = "2" + signal;
        const QByteArray slotText = "1" + slot;
        QVERIFY(QObject::disconnect(source, signalText.constData(), &window, slotText.constData()));
        QVERIFY(!QObject::disconnect(source, signalText.constData(), &window, slotText.constData()));
    }

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
