// The diagnostics reader where there is no DirectX: the machine description that
// linuxmachine.cpp gathers, walked like the provider's tree.

#include "sysinfo/dxdiagreader.h"

#include "sysinfo/linuxmachine.h"

DxDiagReader::DxDiagReader()
    : DxDiagReader(LinuxMachinePaths())
{
}

DxDiagReader::DxDiagReader(const LinuxMachinePaths &paths)
    : root(makeLinuxMachineRoot(paths))
{
    // Without the kernel's process files there is nothing to describe.
    if (!root)
        writeDxDiagError("Unable to read the machine description");
}

DxDiagReader::~DxDiagReader() = default;

void DxDiagReader::dumpSection(const char *name, std::FILE *file)
{
    if (root)
        ::dumpSection(*root, name, file);
}
