#pragma once

// The machine description that stands in for the DirectX diagnostics provider on
// Linux. It is gathered from the kernel's files once and held as a tree of the
// provider's shape, so the same walker dumps it and the same summary reads it:
//
//   DxDiag_SystemInfo       processor, memory, operating system, machine name, ...
//   DxDiag_DisplayDevices   one child per display, named "0", "1", ...
//
// Property names are the provider's where it has one for the fact, so that the
// summary picks them up (szProcessorEnglish, szPhysicalMemoryEnglish,
// szOSExLongEnglish, szDeviceName, szDescription, ...). Plain C++17 without Qt.

#include "sysinfo/dxdiagcontainer.h"

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

// Where the facts are read from. The defaults are the real machine; the tests
// point the folders at a made-up tree.
struct LinuxMachinePaths
{
    std::string proc = "/proc";
    std::string sys = "/sys";
    std::string etc = "/etc";
    std::string usrLib = "/usr/lib"; // fallback home of os-release
    std::string dev = "/dev";
    // The PCI name list: Debian's pci.ids package, then hwdata's copy.
    std::vector<std::string> pciIds = {"/usr/share/misc/pci.ids", "/usr/share/hwdata/pci.ids"};

    // Taken from uname() unless given here.
    bool fixedUname = false;
    std::string nodeName;
    std::string release;
    std::string machine;
};

// Null when the process files (proc/meminfo) cannot be read.
std::unique_ptr<MemoryContainer> makeLinuxMachineRoot(const LinuxMachinePaths &paths = LinuxMachinePaths());

// Helpers with their own tests.
namespace linuxmachine {

// The monitor's name from an EDID block: its name descriptor, otherwise the
// maker's PnP id and the product code ("DEL A0B3"); empty for a broken block.
std::string monitorNameFromEdid(const std::string &edid);
// The preferred resolution from the first detailed timing, as "1920,1080".
std::string maxResolutionFromEdid(const std::string &edid);
// "Vendor Device" from a pci.ids text; empty when the vendor is not listed.
std::string pciDescription(std::istream &pciIds, unsigned vendor, unsigned device, std::string *vendorName);

} // namespace linuxmachine
