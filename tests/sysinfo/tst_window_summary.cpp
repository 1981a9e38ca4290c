// The window's own system-information worker: the summary it stores, the worker and
// its thread deleting themselves, a window closed while the worker still runs, and the
// check box's tool tip. The worker checks that need no window are sysinfo/sysinfoworker.

#include "windowsummarytests.h"

#include "form/mainwindow.h"
#include "sysinfo/gathersysinfo.h"
#include "sysinfo/sysinfotooltip.h"

#include "summarychecks.h"
#include "support/mainwindowprobe.h"
#include "app/settingsfiles.h"
#include "support/testenv.h"
#include "workerprobe.h"

#include <QByteArray>
#include <QCheckBox>
#include <QFile>
#include <QPointer>
#include <QThread>
#include <QToolTip>
#include <QtTest>

#include <algorithm>

// Out of line: ObjectTracker is only declared in the header.
WindowSummaryTests::WindowSummaryTests() = default;
WindowSummaryTests::~WindowSummaryTests() = default;

// Qt's object hooks are taken when a check first needs them, and given back with the
// test object.
ObjectTracker &WindowSummaryTests::summaryTracker()
{
    if (!m_tracker)
        m_tracker = std::make_unique<ObjectTracker>();
    return *m_tracker;
}

// The windows of the checks before leave summary jobs behind, and such a job would
// take the dump file (or the FIFO a check puts there) for its own.
void WindowSummaryTests::init()
{
    settingsfiles::removeAll();
    GatherSysInfo::waitForRunningJobs(kEventWaitMs);
    QFile::remove(dumpFile());
}

#ifndef Q_OS_WIN
// Builds the window while the tracker records, and finds its worker and thread.
// Only with the worker held at its file (DumpGate): a free one may already be gone.
void WindowSummaryTests::makeWindow(HeldWindow &made)
{
    auto &[window, worker, thread] = made;
    ObjectTracker &tracker = summaryTracker();
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
#endif

void WindowSummaryTests::windowStoresTheSummaryAndItsWorkerGoesAway()
{
    ObjectTracker &tracker = summaryTracker();
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
        return std::count_if(threads.cbegin(), threads.cend(), [](const QPointer<QThread> &t) { return t.isNull(); });
    };
    // Nothing arrives before the GUI thread runs its event loop again.
    QVERIFY(MainWindowProbe::sysInfo(*window).isEmpty());
    QCOMPARE(threadsGone(), 0);
    // The worker's thread is the one that goes.
    QTRY_VERIFY_WITH_TIMEOUT(!MainWindowProbe::sysInfo(*window).isEmpty() && tracker.alive<GatherSysInfo>().isEmpty()
                                 && threadsGone() == 1,
                             kEventWaitMs);
    QCOMPARE(MainWindowProbe::sysInfo(*window), machineSummary());
    QVERIFY(MainWindowProbe::sysInfo(*window).startsWith("{ \"DirectXVersion\" : "));
}

#ifndef Q_OS_WIN
void WindowSummaryTests::workerHeldAtItsFileThenLetGo()
{
    DumpGate gate(dumpFile());
    QVERIFY(gate.ok());
    HeldWindow made;
    makeWindow(made);
    QVERIFY(!QTest::currentTestFailed());
    auto &[window, worker, thread] = made;
    QCheckBox *box = MainWindowProbe::widget<QCheckBox>(*window, "check_Include_System_Info");
    QVERIFY(box);

    // Held in fopen: nothing has arrived, the tip says so.
    QTest::qWait(50);
    QVERIFY(MainWindowProbe::sysInfo(*window).isEmpty());
    QVERIFY(!worker.isNull());
    QCOMPARE(toolTipOf(box), tip("System information is being gathered."));

    QVERIFY(gate.letWriterIn());
    QVERIFY(gate.letReaderIn());
    // The summary and the thread's deletion reach this thread as separate events, in
    // either order.
    QTRY_VERIFY_WITH_TIMEOUT(worker.isNull() && thread.isNull() && !MainWindowProbe::sysInfo(*window).isEmpty(),
                             kEventWaitMs);
    // The dump went through the FIFO; read back from one, it is empty.
    QVERIFY(gate.dump().startsWith("("));
    QVERIFY(gate.dump().contains(": szProcessorEnglish: "));
    QCOMPARE(MainWindowProbe::sysInfo(*window), QString("{  }"));
    QCOMPARE(toolTipOf(box), tip("No system information is available."));
    QVERIFY(!QFileInfo::exists(dumpFile()));
    QToolTip::hideText();
}

void WindowSummaryTests::windowClosedWhileTheWorkerRuns()
{
    DumpGate gate(dumpFile());
    QVERIFY(gate.ok());
    HeldWindow made;
    makeWindow(made);
    QVERIFY(!QTest::currentTestFailed());
    auto &[window, worker, thread] = made;
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

void WindowSummaryTests::toolTipShowsTheSummaryDecoded()
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

void WindowSummaryTests::slotOnlyStores()
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

FB_TEST_MAIN(WindowSummaryTests)
