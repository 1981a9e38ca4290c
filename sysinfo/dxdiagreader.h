#pragma once

// The machine's diagnostics reader. On Windows it asks the DirectX diagnostics
// provider through COM; elsewhere it walks a description of the machine that
// linuxmachine.h gathers. Either way the walker of dxdiagdump.h writes the dump.
//
// Create it, dump the sections while hasRoot() holds, destroy it; all on one thread.
// The constructor never throws for a provider failure: it writes the error line to
// standard output and leaves the root absent.
//
// Plain C++17 without Qt.

#include "sysinfo/dxdiagdump.h"

#ifdef _WIN32
struct IDxDiagProvider;
struct IDxDiagContainer;
#else
struct LinuxMachinePaths;
#endif

class DxDiagReader final : public DxDiagSession
{
public:
    DxDiagReader();
#ifndef _WIN32
    // Reads the machine's facts from other folders than the real ones.
    explicit DxDiagReader(const LinuxMachinePaths &paths);
#endif
    ~DxDiagReader() override;

    DxDiagReader(const DxDiagReader &) = delete;
    DxDiagReader &operator=(const DxDiagReader &) = delete;

    bool hasRoot() const override
    {
        return root != nullptr;
    }
    void dumpSection(const char *name, std::FILE *file) override;

private:
#ifdef _WIN32
    IDxDiagProvider *provider = nullptr;
    IDxDiagContainer *root = nullptr;
    bool comInitialized = false;
#else
    std::unique_ptr<DxDiagContainer> root;
#endif
};
