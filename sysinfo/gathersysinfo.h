#pragma once

#include <QObject>
#include <QString>

class QThread;

// Runs once on its own thread: writes the diagnostics dump, reads it back and
// condenses it into the one-line system summary that the report carries.
class GatherSysInfo : public QObject
{
    Q_OBJECT

public:
    explicit GatherSysInfo(QObject *parent = nullptr);
    ~GatherSysInfo() override;

    // Waits up to timeoutMs until every job made so far has written its summary or
    // was deleted unstarted; false on timeout. A process that ends while a job runs
    // cuts the diagnostics provider off in the middle of its COM calls, which can
    // hang or crash the exit.
    static bool waitForRunningJobs(int timeoutMs);

    // Moves job to a new thread and starts it there. The job and the thread delete
    // themselves once the job is done; connect to the job's signals before. The thread
    // returned stays valid until the caller's thread next handles its events.
    static QThread *startOnOwnThread(GatherSysInfo *job);

    // For the end of the process: a job that has not begun its dump by now writes an
    // empty summary at once; waits for the others and then for every job's thread to
    // have ended, all within timeoutMs. Called on the application's thread, it then
    // deletes the threads that ended meanwhile: no event loop runs there any more to
    // do it.
    static bool finishJobsBeforeExit(int timeoutMs);

signals:
    void finished();
    void results(const QString &info);
    void error(const QString &err); // part of the interface; nothing emits it

public slots:
    void process();

private:
    void countAsRunning(bool running);

    bool m_countedAsRunning = false;
};
