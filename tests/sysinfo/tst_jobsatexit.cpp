// The end of the process: once it has begun, a job that has not started its dump
// writes an empty summary at once, touches no dump file, and still reports once.

#include "sysinfo/gathersysinfo.h"

#include "support/testenv.h"

#include <QFile>
#include <QPointer>
#include <QSignalSpy>
#include <QThread>
#include <QtTest>

#include <atomic>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

class TestJobsAtExit : public QObject
{
    Q_OBJECT

private slots:
    void jobBeforeTheEndWritesTheSummary()
    {
        GatherSysInfo job;
        QSignalSpy results(&job, &GatherSysInfo::results);
        job.process();
        QCOMPARE(results.count(), 1);
        const QString summary = results.at(0).at(0).toString();
        QVERIFY2(summary.startsWith("{ ") && summary.endsWith(" }"), qPrintable(summary));
    }

    // The job's thread has ended for the system, not only for its job: on Windows a
    // thread that has left its run() still runs the libraries' clean-up, and
    // everywhere QThread's own clean-up follows the job. The job and its thread,
    // started as the window starts them, delete themselves, and once the wait is
    // over both are gone, though no event loop ran meanwhile.
    void jobThreadHasEndedAfterTheWait()
    {
        QPointer<GatherSysInfo> job = new GatherSysInfo;
        std::atomic<quintptr> jobThreadId{0};
        connect(
            job, &GatherSysInfo::results, job,
            [&jobThreadId] { jobThreadId = reinterpret_cast<quintptr>(QThread::currentThreadId()); },
            Qt::DirectConnection);
        QPointer<QThread> thread = GatherSysInfo::startOnOwnThread(job);

        QVERIFY(GatherSysInfo::finishJobsBeforeExit(kEventWaitMs));
        // Ended, so it has reported, on its own thread.
        QVERIFY(jobThreadId != 0);
        QVERIFY(jobThreadId != reinterpret_cast<quintptr>(QThread::currentThreadId()));
        // Deleted, which Qt allows only once QThread is through with it.
        QVERIFY(job.isNull());
        QVERIFY(thread.isNull());
#ifdef Q_OS_WIN
        HANDLE handle = OpenThread(SYNCHRONIZE, FALSE, static_cast<DWORD>(jobThreadId.load()));
        QVERIFY(handle == nullptr || WaitForSingleObject(handle, 0) == WAIT_OBJECT_0);
        if (handle)
            CloseHandle(handle);
#endif
    }

    void jobAfterTheEndBeganWritesNothing()
    {
        QVERIFY(GatherSysInfo::finishJobsBeforeExit(kEventWaitMs));
        const QString dumpFile = TestEnvironment::instance().temp() + "/kvfba_dxdiag.txt";
        QVERIFY(!writeTestFile(dumpFile, "left by an earlier run").isEmpty());

        GatherSysInfo job;
        QSignalSpy results(&job, &GatherSysInfo::results);
        QSignalSpy finished(&job, &GatherSysInfo::finished);
        QCOMPARE(GatherSysInfo::waitForRunningJobs(0), false);
        job.process();
        QCOMPARE(results.count(), 1);
        QCOMPARE(results.at(0).at(0).toString(), QString());
        QCOMPARE(finished.count(), 1);
        QCOMPARE(GatherSysInfo::waitForRunningJobs(0), true);
        // Untouched: a dump would have truncated and then removed it.
        QFile file(dumpFile);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("left by an earlier run"));
    }
};

FB_TEST_MAIN(TestJobsAtExit)
#include "tst_jobsatexit.moc"
