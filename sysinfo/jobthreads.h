#pragma once

// The threads that ran machine-summary jobs, for the end of the process. A thread
// that is done with its job has not ended yet. On Windows it still runs every
// library's thread clean-up: a process that exits meanwhile kills it in there,
// perhaps holding a lock that the exit's own clean-up then waits for, for ever
// (under Wine the process hangs with one thread left). Elsewhere it is still in
// QThread's own clean-up while exit() destroys the globals that uses.

// Called on the job's thread.
void noteJobThread();

// Waits up to timeoutMs until every noted thread has ended; false on timeout.
bool waitForJobThreadsToEnd(int timeoutMs);
