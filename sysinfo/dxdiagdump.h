#pragma once

// The diagnostics dump: one walker for every platform. It writes a container tree
// as the line-oriented text that the summary writer (systemsummary.h) reads back.
//
// All text is formatted here and written as UTF-8 bytes with fputs, to the dump
// file and to standard output alike. A wide and a narrow printf on one stream
// would not mix on glibc, and the bytes are then the same on every platform; a
// file opened in text mode still gets the platform's line ends.
//
// Plain C++17 without Qt.

#include "sysinfo/dxdiagcontainer.h"

#include <cstdio>
#include <string>

// Names of the two sections the job dumps; each is also its header text.
extern const char kDxDiagSystemInfo[]; // "DxDiag_SystemInfo"
extern const char kDxDiagDisplayDevices[]; // "DxDiag_DisplayDevices"

// What the job needs from a reader: the root (or its absence) and the sections.
// DxDiagReader (dxdiagreader.h) is the machine's reader; tests substitute others.
class DxDiagSession
{
public:
    virtual ~DxDiagSession();
    virtual bool hasRoot() const = 0;
    virtual void dumpSection(const char *name, std::FILE *file) = 0;
};

// Writes the container's properties and then, recursively, its children to file.
void dumpContainer(DxDiagContainer &container, std::FILE *file);

// Writes the three header lines of a section to standard output (never to file),
// then dumps the root's child of that name to file, if the root has it.
void dumpSection(DxDiagContainer &root, const char *name, std::FILE *file);

// Dumps the system section and then the display section, each only while the
// session still has its root.
void dumpSections(DxDiagSession &session, std::FILE *file);

// The error line a reader writes to standard output when it cannot get its root.
void writeDxDiagError(const std::string &message);
