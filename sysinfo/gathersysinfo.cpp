#include "sysinfo/gathersysinfo.h"

#include "sysinfo/jobthreads.h"
#include "sysinfo/systemsummary.h"

#include <QAtomicInt>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QMutex>
#include <QMutexLocker>
#include <QTextStream>
#include <QThread>
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

QThread *GatherSysInfo::startOnOwnThread(GatherSysInfo *job)
{
    auto *thread = new QThread;
    job->moveToThread(thread);
    connect(thread, &QThread::started, job, &GatherSysInfo::process);
    // quit() is called on the job's thread itself: the thread then ends without the
    // application's event loop, which no longer runs while the process ends.
    connect(job, &GatherSysInfo::finished, thread, &QThread::quit, Qt::DirectConnection);
    connect(job, &GatherSysInfo::finished, job, &QObject::deleteLater);
    // deleteLater() is called on the ending thread too, so that the deletion is
    // posted at once and not only after a queued call that no event loop may run.
    connect(thread, &QThread::finished, thread, &QObject::deleteLater, Qt::DirectConnection);
    thread->start();
    return thread;
}

bool GatherSysInfo::finishJobsBeforeExit(int timeoutMs)
{
    programEnding.storeRelease(1);
    QDeadlineTimer deadline(timeoutMs);
    const bool jobsDone = waitForRunningJobs(static_cast<int>(deadline.remainingTime()));
    const bool threadsEnded = waitForJobThreadsToEnd(static_cast<int>(deadline.remainingTime()));
    const QCoreApplication *application = QCoreApplication::instance();
    if (application && application->thread() == QThread::currentThread())
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return threadsEnded && jobsDone;
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
