#pragma once

// The one-line system summary that the report carries, condensed from the
// diagnostics dump:
//   { "DirectXVersion" : "…", "PhysicalMemory" : "…", "Processor" : "…", "OS" : "…", "Display" : "…; …" }
// Values are percent-encoded; fields follow the dump's order.

#include "sysinfo/dxdiagdump.h"

#include <QString>

#include <functional>
#include <memory>

class QTextStream;

// Reads dump lines from `dump` until its end and writes "{ ", the fields and " }"
// to `out`.
void writeSummaryFields(QTextStream &dump, QTextStream &out);

// The same over a dump held in memory.
QString summarizeDump(const QString &dumpText);

// The dump file: SuitePath(2) followed by "/kvfba_dxdiag.txt", as UTF-8 bytes.
QByteArray sysInfoDumpPath();

using DxDiagSessionFactory = std::function<std::unique_ptr<DxDiagSession>()>;

// The machine's own reader (DxDiagReader).
std::unique_ptr<DxDiagSession> makeDxDiagReader();

// How long a job waits for another process's job to be done with the dump file: more
// than a program that is ending waits for its own job (application.cpp).
constexpr int kDumpFileLockWaitMs = 20000;

// The worker's whole job: writes the dump file with the reader that `makeReader`
// creates, reads it back into `out` and removes it. Writes nothing when the file
// cannot be created, when the dump ends in an exception (the file then stays) or
// when the file cannot be read back (it is removed). The dump file is the same for
// every process of the user, and a program that has closed its window may still be
// finishing its job: a lock file beside the dump keeps a second program's job off it
// until the first is done (or lockWaitMs have passed: then it writes nothing).
void writeSystemSummary(QTextStream &out, const DxDiagSessionFactory &makeReader = makeDxDiagReader,
                        int lockWaitMs = kDumpFileLockWaitMs);
