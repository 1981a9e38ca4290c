// The worker on its thread: the window's own wiring and one made the same way,
// the order of its signals, the objects deleting themselves, a window closed while
// the worker still runs, and the check box's tool tip.

#include "form/mainwindow.h"
#include "sysinfo/gathersysinfo.h"
#include "sysinfo/sysinfotooltip.h"
#include "sysinfo/systemsummary.h"

#include "fakedxdiag.h"
#include "support/mainwindowprobe.h"
#include "support/testenv.h"
#include "workerprobe.h"

#include <QApplication>
#include <QCheckBox>
#include <QHelpEvent>
#include <QPointer>
#include <QTextDocument>
#include <QThread>
#include <QToolTip>
#include <QtTest>

#include <algorithm>

#include <atomic>

namespace {

QString dumpFile()
{
    return TestEnvironment::instance().temp() + "/kvfba_dxdiag.txt";
}

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

QString toolTipOf(QWidget *widget)
{
    QToolTip::hideText();
    QHelpEvent help(QEvent::ToolTip, QPoint(4, 4), widget->mapToGlobal(QPoint(4, 4)));
    QApplication::sendEvent(widget, &help);
    return QToolTip::isVisible() ? QToolTip::text() : QStringLiteral("<no tip>");
}

QString tip(const QString &plain)
{
    return Qt::convertFromPlainText(plain, Qt::WhiteSpaceNormal);
}

// The summary this machine gives, made by the job on this thread.
QString machineSummary()
{
    QString summary;
    QTextStream out(&summary, QIODevice::ReadWrite);
    StdoutCapture capture;
    writeSystemSummary(out);
    out.flush();
    return summary;
}

} // namespace

class TestSysInfoWorker : public QObject
{
    Q_OBJECT

private:
    ObjectTracker tracker;

    // Builds the window while the tracker records, and finds its worker and thread.
#ifndef Q_OS_WIN
    // Only with the worker held at its file (DumpGate): a free one may already be gone.
    void makeWindow(std::unique_ptr<MainWindow> &window, QPointer<GatherSysInfo> &worker, QPointer<QThread> &thread)
    {
        tracker.arm(true);
        window = std::make_unique<MainWindow>();
        tracker.arm(false);
        const QList<GatherSysInfo *> workers = tracker.alive<GatherSysInfo>();
        const QList<QThread *> threads = tracker.alive<QThread>();
        QCOMPARE(workers.size(), 1);
        worker = workers.first();
        // The first window of the process also starts threads inside Qt; the
        // worker's is the one it was moved to, made by the window.
        thread = worker->thread();
        QVERIFY(threads.contains(thread.data()));
        QVERIFY(worker->parent() == nullptr);
        QVERIFY(thread->parent() == nullptr);
        QVERIFY(thread->isRunning());
        QCOMPARE(thread->priority(), QThread::InheritPriority);
    }

private slots:
#endif

    void init()
    {
        QFile::remove(dumpFile());
    }

    void identicalWiringDeliversOnceAndCleansUp()
    {
        Receiver receiver;
        QThread *thread = new QThread;
        GatherSysInfo *worker = new GatherSysInfo;
        worker->moveToThread(thread);
        connect(thread, SIGNAL(started()), worker, SLOT(process()));
        connect(worker, SIGNAL(results(const QString &)), &receiver, SLOT(slot_sysinfo(const QString &)));
        connect(worker, SIGNAL(finished()), thread, SLOT(quit()), Qt::DirectConnection);
        connect(worker, SIGNAL(finished()), worker, SLOT(deleteLater()));
        connect(thread, SIGNAL(finished()), thread, SLOT(deleteLater()));
        // Watches the order in which the two signals reach the GUI thread.
        connect(worker, SIGNAL(finished()), &receiver, SLOT(slot_finished()));

        QPointer<QThread> threadAlive(thread);
        std::atomic<bool> workerDestroyed{false};
        connect(
            worker, &QObject::destroyed, worker, [&workerDestroyed] { workerDestroyed = true; }, Qt::DirectConnection);
        thread->start();
        QTRY_VERIFY_WITH_TIMEOUT(threadAlive.isNull(), kEventWaitMs);
        QVERIFY(workerDestroyed);
        QCOMPARE(receiver.events, QStringList({"results", "finished"}));
        QVERIFY(receiver.onGuiThread);
        QCOMPARE(receiver.info, machineSummary());
        QVERIFY(!QFileInfo::exists(dumpFile()));
    }

    void windowStoresTheSummaryAndItsWorkerGoesAway()
    {
        // Here the worker runs freely and may delete itself on its thread before the
        // constructor has even returned, so it is never held, only counted (the
        // tracker's lock keeps a worker that is being deleted readable meanwhile).
        // Threads are deleted on this thread, so every recorded one is still here.
        tracker.arm(true);
        auto window = std::make_unique<MainWindow>();
        tracker.arm(false);
        QList<QPointer<QThread>> threads;
        for (QThread *thread : tracker.alive<QThread>())
            threads << thread;
        QVERIFY(!threads.isEmpty());
        const auto threadsGone = [&threads] {
            return std::count_if(threads.cbegin(), threads.cend(),
                                 [](const QPointer<QThread> &t) { return t.isNull(); });
        };
        // Nothing arrives before the GUI thread runs its event loop again.
        QVERIFY(MainWindowProbe::sysInfo(*window).isEmpty());
        QCOMPARE(threadsGone(), 0);
        // The worker's thread is the one that goes.
        QTRY_VERIFY_WITH_TIMEOUT(!MainWindowProbe::sysInfo(*window).isEmpty()
                                     && tracker.alive<GatherSysInfo>().isEmpty() && threadsGone() == 1,
                                 kEventWaitMs);
        QCOMPARE(MainWindowProbe::sysInfo(*window), machineSummary());
        QVERIFY(MainWindowProbe::sysInfo(*window).startsWith("{ \"DirectXVersion\" : "));
    }

#ifndef Q_OS_WIN
    void workerHeldAtItsFileThenLetGo()
    {
        DumpGate gate(dumpFile());
        QVERIFY(gate.ok());
        std::unique_ptr<MainWindow> window;
        QPointer<GatherSysInfo> worker;
        QPointer<QThread> thread;
        makeWindow(window, worker, thread);
        QVERIFY(!QTest::currentTestFailed());
        QCheckBox *box = MainWindowProbe::widget<QCheckBox>(*window, "check_Include_System_Info");
        QVERIFY(box);

        // Held in fopen: nothing has arrived, the tip says so.
        QTest::qWait(50);
        QVERIFY(MainWindowProbe::sysInfo(*window).isEmpty());
        QVERIFY(!worker.isNull());
        QCOMPARE(toolTipOf(box), tip("System information is being gathered."));

        QVERIFY(gate.letWriterIn());
        QVERIFY(gate.letReaderIn());
        QTRY_VERIFY_WITH_TIMEOUT(worker.isNull() && thread.isNull(), kEventWaitMs);
        // The dump went through the FIFO; read back from one, it is empty.
        QVERIFY(gate.dump().startsWith("("));
        QVERIFY(gate.dump().contains(": szProcessorEnglish: "));
        QCOMPARE(MainWindowProbe::sysInfo(*window), QString("{  }"));
        QCOMPARE(toolTipOf(box), tip("No system information is available."));
        QVERIFY(!QFileInfo::exists(dumpFile()));
        QToolTip::hideText();
    }

    void windowClosedWhileTheWorkerRuns()
    {
        DumpGate gate(dumpFile());
        QVERIFY(gate.ok());
        std::unique_ptr<MainWindow> window;
        QPointer<GatherSysInfo> worker;
        QPointer<QThread> thread;
        makeWindow(window, worker, thread);
        QVERIFY(!QTest::currentTestFailed());
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get(), kEventWaitMs));
        window->close();
        window.reset();
        QVERIFY(!worker.isNull() && thread->isRunning());
        // The process's exit would wait for it.
        QCOMPARE(GatherSysInfo::waitForRunningJobs(0), false);

        // The results go nowhere; the worker and its thread still delete themselves.
        QVERIFY(gate.letWriterIn());
        QVERIFY(gate.letReaderIn());
        QVERIFY(GatherSysInfo::waitForRunningJobs(kEventWaitMs));
        QTRY_VERIFY_WITH_TIMEOUT(worker.isNull() && thread.isNull(), kEventWaitMs);
        QVERIFY(!QFileInfo::exists(dumpFile()));
    }
#endif

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

    void toolTipShowsTheSummaryDecoded()
    {
        std::unique_ptr<MainWindow> window;
        window = std::make_unique<MainWindow>();
        QTRY_VERIFY_WITH_TIMEOUT(!MainWindowProbe::sysInfo(*window).isEmpty(), kEventWaitMs);
        const QString summary = MainWindowProbe::sysInfo(*window);
        QCheckBox *box = MainWindowProbe::widget<QCheckBox>(*window, "check_Include_System_Info");
        const QString text = toolTipOf(box);
        QCOMPARE(text, tip(sysInfoToolTipText(summary)));
        const QStringList lines = sysInfoToolTipText(summary).split('\n');
        QVERIFY(lines.size() >= 4);
        QVERIFY(lines[0].startsWith("DirectX version: "));
        QVERIFY(lines.filter(QRegularExpression("^Processor: .+")).size() == 1);
        QVERIFY(lines.filter(QRegularExpression("^Physical memory: \\d+MB RAM$")).size() == 1);
        QVERIFY(!text.contains('%'));
        // The tip changed nothing about the box.
        QVERIFY(box->toolTip().isEmpty());
        QVERIFY(box->isChecked());
        QToolTip::hideText();
    }

    void slotOnlyStores()
    {
        std::unique_ptr<MainWindow> window;
        window = std::make_unique<MainWindow>();
        QTRY_VERIFY_WITH_TIMEOUT(!MainWindowProbe::sysInfo(*window).isEmpty(), kEventWaitMs);
        QCheckBox *box = MainWindowProbe::widget<QCheckBox>(*window, "check_Include_System_Info");
        const bool enabled = box->isEnabled();
        const QString style = box->styleSheet();
        window->slot_sysinfo("{ \"OS\" : \"A\" }");
        window->slot_sysinfo("{ \"OS\" : \"B%20C\" }");
        QCOMPARE(MainWindowProbe::sysInfo(*window), QString("{ \"OS\" : \"B%20C\" }"));
        QCOMPARE(box->isEnabled(), enabled);
        QCOMPARE(box->styleSheet(), style);
        QCOMPARE(toolTipOf(box), tip("Operating system: B C"));
        window->slot_sysinfo(QString());
        QCOMPARE(toolTipOf(box), tip("System information is being gathered."));
        QToolTip::hideText();
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
