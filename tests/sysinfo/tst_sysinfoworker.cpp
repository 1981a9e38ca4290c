// The worker on its thread, wired as the window wires it: the order of its signals,
// the objects deleting themselves, the wait at exit, and the tool tip's filter and
// texts. What the window's own worker does is checked with the window, in
// sysinfo/window_summary.

#include "sysinfo/gathersysinfo.h"
#include "sysinfo/sysinfotooltip.h"

#include "summarychecks.h"
#include "support/testenv.h"

#include <QApplication>
#include <QCheckBox>
#include <QPointer>
#include <QThread>
#include <QToolTip>
#include <QtTest>

#include <atomic>

namespace {

// Receives the worker's signals on the GUI thread, as MainWindow does.
class Receiver : public QObject
{
    Q_OBJECT

public:
    QStringList events;
    QString info;
    bool onGuiThread = true;

public slots:
    void slot_sysinfo(const QString &text)
    {
        info = text;
        events << "results";
        onGuiThread = onGuiThread && QThread::currentThread() == qApp->thread();
    }
    void slot_finished()
    {
        events << "finished";
        onGuiThread = onGuiThread && QThread::currentThread() == qApp->thread();
    }
};

} // namespace

class TestSysInfoWorker : public QObject
{
    Q_OBJECT

private slots:
    void init() { QFile::remove(dumpFile()); }

    void ownThreadDeliversOnceAndCleansUp()
    {
        Receiver receiver;
        auto *worker = new GatherSysInfo;
        connect(worker, &GatherSysInfo::results, &receiver, &Receiver::slot_sysinfo);
        // Watches the order in which the two signals reach the GUI thread.
        connect(worker, &GatherSysInfo::finished, &receiver, &Receiver::slot_finished);
        std::atomic<bool> workerDestroyed{false};
        connect(
            worker, &QObject::destroyed, worker, [&workerDestroyed] { workerDestroyed = true; }, Qt::DirectConnection);

        QPointer<QThread> threadAlive = GatherSysInfo::startOnOwnThread(worker);
        // The signals and the thread's deletion reach this thread as separate events, in
        // any order.
        QTRY_VERIFY_WITH_TIMEOUT(threadAlive.isNull() && receiver.events.size() >= 2, kEventWaitMs);
        QVERIFY(workerDestroyed);
        QCOMPARE(receiver.events, QStringList({"results", "finished"}));
        QVERIFY(receiver.onGuiThread);
        QCOMPARE(receiver.info, machineSummary());
        QVERIFY(!QFileInfo::exists(dumpFile()));
    }

    // The wait at exit counts a job from its creation to its summary, and one that is
    // deleted without ever running.
    void exitWaitCountsAJobFromItsCreation()
    {
        QVERIFY(GatherSysInfo::waitForRunningJobs(kEventWaitMs)); // earlier tests' jobs
        auto *unstarted = new GatherSysInfo;
        QCOMPARE(GatherSysInfo::waitForRunningJobs(0), false);
        delete unstarted;
        QCOMPARE(GatherSysInfo::waitForRunningJobs(0), true);

        GatherSysInfo job;
        QCOMPARE(GatherSysInfo::waitForRunningJobs(0), false);
        job.process(); // here, on this thread: done when it returns
        QCOMPARE(GatherSysInfo::waitForRunningJobs(0), true);
    }

    void toolTipFilterOnAnyWidget()
    {
        QCheckBox box("Include");
        QString current;
        installSysInfoToolTip(&box, [&current] { return current; });
        box.show();
        QVERIFY(QTest::qWaitForWindowExposed(&box, kEventWaitMs));
        QCOMPARE(toolTipOf(&box), tip("System information is being gathered."));
        current = "{ \"Display\" : \"%3Cb%3Ebold%3C%2Fb%3E; a%3B%20b\" }";
        QCOMPARE(toolTipOf(&box), tip("Display: <b>bold</b>; a; b"));
        QVERIFY(QToolTip::text().contains("&lt;b&gt;")); // shown as text, not as markup
        // Other events still reach the box.
        QVERIFY(!box.isChecked());
        QTest::mouseClick(&box, Qt::LeftButton);
        QVERIFY(box.isChecked());
        QToolTip::hideText();
    }

    void toolTipTexts()
    {
        QCOMPARE(sysInfoToolTipText(QString()), QString("System information is being gathered."));
        QCOMPARE(sysInfoToolTipText("{  }"), QString("No system information is available."));
        QCOMPARE(sysInfoToolTipText("{ \"DirectXVersion\" : \"DirectX%2012\", \"PhysicalMemory\" : \"8192MB%20RAM\", "
                                    "\"Processor\" : \"CPU%20%284%20CPUs%29\", \"OS\" : \"Win%2010\", "
                                    "\"Display\" : \"%5C%5C.%5CDISPLAY1; GPU; 1920%20x%201080\"\"Display\" : \"X\" }"),
                 QString("DirectX version: DirectX 12\n"
                         "Physical memory: 8192MB RAM\n"
                         "Processor: CPU (4 CPUs)\n"
                         "Operating system: Win 10\n"
                         "Display: \\\\.\\DISPLAY1; GPU; 1920 x 1080\n"
                         "Display: X"));
        QCOMPARE(sysInfoToolTipText("{ \"Other\" : \"%C3%A9\" }"), QString::fromUtf8("Other: \xC3\xA9"));
    }
};

FB_TEST_MAIN(TestSysInfoWorker)
#include "tst_sysinfoworker.moc"
