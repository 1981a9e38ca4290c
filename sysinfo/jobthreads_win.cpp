#include "sysinfo/jobthreads.h"

#include <windows.h>

#include <chrono>
#include <mutex>
#include <vector>

namespace {

std::mutex threadsMutex;
std::vector<HANDLE> threads;

} // namespace

void noteJobThread()
{
    HANDLE thread = nullptr;
    // GetCurrentThread() is a pseudo handle that means "the caller"; another
    // thread needs a real one, to wait on and to ask for the thread's id.
    const DWORD access = SYNCHRONIZE | THREAD_QUERY_LIMITED_INFORMATION;
    if (!DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &thread, access, FALSE, 0))
        return;
    std::lock_guard<std::mutex> lock(threadsMutex);
    threads.push_back(thread);
}

bool waitForJobThreadsToEnd(int timeoutMs)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    std::lock_guard<std::mutex> lock(threadsMutex);
    bool allEnded = true;
    for (HANDLE thread : threads) {
        using std::chrono::milliseconds;
        const auto left = std::chrono::duration_cast<milliseconds>(deadline - std::chrono::steady_clock::now());
        const DWORD waitMs = left.count() > 0 ? static_cast<DWORD>(left.count()) : 0;
        // A job run directly on the waiting thread cannot wait for itself.
        if (GetThreadId(thread) != GetCurrentThreadId() && WaitForSingleObject(thread, waitMs) != WAIT_OBJECT_0)
            allEnded = false;
        CloseHandle(thread);
    }
    threads.clear();
    return allEnded;
}
