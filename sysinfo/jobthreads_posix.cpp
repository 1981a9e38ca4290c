#include "sysinfo/jobthreads.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

// Qt's threads are detached here, so none can be joined. A thread-local guard tells
// instead when a noted thread is through with Qt: C++ thread-local objects are
// destroyed after the thread's start routine returned, and QThread's own clean-up
// (its finished() signal, the deferred deletes) runs inside that routine. Without the
// wait, exit() would run the global destructors of Qt and of this program while such
// a thread is still inside them.

namespace {

std::mutex threadsMutex;
std::condition_variable threadEnded;
int runningThreads = 0;

struct ThreadEndGuard
{
    bool noted = false;

    ~ThreadEndGuard()
    {
        if (!noted)
            return;
        std::lock_guard<std::mutex> lock(threadsMutex);
        --runningThreads;
        threadEnded.notify_all();
    }
};

thread_local ThreadEndGuard thisThread;

} // namespace

void noteJobThread()
{
    if (thisThread.noted)
        return;
    std::lock_guard<std::mutex> lock(threadsMutex);
    thisThread.noted = true;
    ++runningThreads;
}

bool waitForJobThreadsToEnd(int timeoutMs)
{
    std::unique_lock<std::mutex> lock(threadsMutex);
    // A job run directly on the waiting thread cannot wait for itself.
    const int own = thisThread.noted ? 1 : 0;
    return threadEnded.wait_for(lock, std::chrono::milliseconds(timeoutMs), [own] { return runningThreads <= own; });
}
