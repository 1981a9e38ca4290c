#pragma once

// The window's own system-information worker (tests/sysinfo/windowsummary.cpp); the
// worker checks that need no window are sysinfo/sysinfoworker.
#include "support/testenv.h"

#include <QObject>
#include <QPointer>

#include <memory>

class GatherSysInfo;
class MainWindow;
class ObjectTracker;
class QThread;

class WindowSummaryTests : public QObject
{
    Q_OBJECT

public:
    WindowSummaryTests();
    ~WindowSummaryTests() override;

private:
    // The recorder of the objects the window creates, made at its first use, and a
    // window built under it with its worker and thread.
    std::unique_ptr<ObjectTracker> m_tracker;
    ObjectTracker &summaryTracker();
#ifndef Q_OS_WIN
    // A window built under the tracker, with its worker held at the dump (DumpGate), and
    // the worker and thread found.
    struct HeldWindow
    {
        std::unique_ptr<MainWindow> window;
        QPointer<GatherSysInfo> worker;
        QPointer<QThread> thread;
    };
    void makeWindow(HeldWindow &made);
#endif

private slots:
    // Every test starts without settings files, without a summary job at work and
    // without a dump.
    void init();

    // windowsummary: the summary the window's own worker delivers, the worker and its
    // thread deleting themselves, a window closed while the worker runs, the check box's
    // tool tip.
    void windowStoresTheSummaryAndItsWorkerGoesAway();
#ifndef Q_OS_WIN
    void workerHeldAtItsFileThenLetGo();
    void windowClosedWhileTheWorkerRuns();
#endif
    void toolTipShowsTheSummaryDecoded();
    void slotOnlyStores();
};
