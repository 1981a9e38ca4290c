#include "sysinfo/gathersysinfo.h"

#include "sysinfo/jobthreads.h"
#include "sysinfo/systemsummary.h"

#include <QAtomicInt>
#include <QDeadlineTimer>
#include <QMutex>
#include <QMutexLocker>
#include <QTextStream>
#include <QWaitCondition>

namespace {

QMutex runningJobsMutex;
QWaitCondition noJobRunning;
int runningJobs = 0;

// Jobs share one dump file, and the diagnostics provider does not survive being
// initialised on two threads at once (Wine's WMI crashes): one dump at a time.
QMutex oneDumpAtATime;
QAtomicInt programEnding;

} // namespace

// A job counts as running from its creation, so that a process ending before the
// thread got to process() still waits for it, until its summary is written.
void GatherSysInfo::countAsRunning(bool running)
{
    QMutexLocker lock(&runningJobsMutex);
    if (running == m_countedAsRunning)
        return;
    m_countedAsRunning = running;
    runningJobs += running ? 1 : -1;
    if (runningJobs == 0)
        noJobRunning.wakeAll();
}

GatherSysInfo::GatherSysInfo(QObject *parent)
    : QObject(parent)
{
    countAsRunning(true);
}

GatherSysInfo::~GatherSysInfo()
{
    countAsRunning(false);
}

bool GatherSysInfo::finishJobsBeforeExit(int timeoutMs)
{
    programEnding.storeRelease(1);
    QDeadlineTimer deadline(timeoutMs);
    const bool jobsDone = waitForRunningJobs(static_cast<int>(deadline.remainingTime()));
    return waitForJobThreadsToEnd(static_cast<int>(deadline.remainingTime())) && jobsDone;
}

bool GatherSysInfo::waitForRunningJobs(int timeoutMs)
{
    QDeadlineTimer deadline(timeoutMs);
    QMutexLocker lock(&runningJobsMutex);
    while (runningJobs > 0) {
        if (!noJobRunning.wait(&runningJobsMutex, deadline))
            return false;
    }
    return true;
}

void GatherSysInfo::process()
{
    noteJobThread();
    QString summary;
    {
        QMutexLocker dumping(&oneDumpAtATime);
        // Once the process is ending, nobody is left to read a summary.
        if (!programEnding.loadAcquire()) {
            QTextStream stream(&summary, QIODevice::ReadWrite);
            writeSystemSummary(stream);
            stream.flush();
        }
    }
    countAsRunning(false);

    // Exactly once, also when the summary is empty; then the thread may end.
    emit results(summary);
    emit finished();
}
