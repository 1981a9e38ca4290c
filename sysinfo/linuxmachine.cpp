#include "sysinfo/linuxmachine.h"
#include "sysinfo/linuxmachine_p.h"

#include "sysinfo/dxdiagdump.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>

#include <sys/utsname.h>

namespace linuxmachine::detail {

bool readFile(const std::string &path, std::string &content)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return false;
    std::ostringstream buffer;
    buffer << in.rdbuf();
    content = buffer.str();
    return true;
}

namespace {
// ASCII white space only: std::isspace follows the user's locale, and in a single-byte
// one it takes a byte of a UTF-8 letter (the 0xA0 that ends an a with grave accent) for a blank.
bool isAsciiSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}
} // namespace

std::string trimmed(const std::string &text)
{
    std::size_t begin = 0;
    std::size_t end = text.size();
    while (begin < end && isAsciiSpace(text[begin]))
        ++begin;
    while (end > begin && isAsciiSpace(text[end - 1]))
        --end;
    return text.substr(begin, end - begin);
}

std::string readLine(const std::string &path)
{
    std::string content;
    if (!readFile(path, content))
        return std::string();
    return trimmed(content.substr(0, content.find('\n')));
}

bool splitKeyValue(const std::string &line, std::string &key, std::string &value)
{
    const std::size_t colon = line.find(':');
    if (colon == std::string::npos)
        return false;
    key = trimmed(line.substr(0, colon));
    value = trimmed(line.substr(colon + 1));
    return true;
}

unsigned long long parseUnsigned(const std::string &text, int base)
{
    return std::strtoull(text.c_str(), nullptr, base);
}

unsigned long long parseThousandths(const std::string &text)
{
    std::size_t at = 0;
    unsigned long long whole = 0;
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
        if (whole > 1'000'000'000'000ULL)
            return 0; // not a figure any machine has
        whole = whole * 10 + static_cast<unsigned>(text[at] - '0');
    }
    unsigned long long fraction = 0;
    unsigned long long scale = 1000;
    if (at < text.size() && text[at] == '.') {
        for (++at; at < text.size() && text[at] >= '0' && text[at] <= '9' && scale > 1; ++at) {
            scale /= 10;
            fraction += static_cast<unsigned>(text[at] - '0') * scale;
        }
    }
    return whole * 1000 + fraction;
}

std::string printf1(const char *format, unsigned long long value)
{
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, format, value);
    return buffer;
}

Uname unameOf(const LinuxMachinePaths &paths)
{
    if (paths.fixedUname)
        return {paths.nodeName, paths.release, paths.machine};
    struct utsname names;
    if (uname(&names) != 0)
        return {};
    return {names.nodename, names.release, names.machine};
}

} // namespace linuxmachine::detail

using namespace linuxmachine::detail;

namespace {

struct Processor
{
    std::string model;
    unsigned count = 0;
    unsigned long long khz = 0;
    bool x86 = false;
    bool hypervisor = false;
};

Processor readProcessor(const LinuxMachinePaths &paths, const Uname &names)
{
    Processor cpu;
    std::string content;
    readFile(paths.proc + "/cpuinfo", content);
    std::istringstream lines(content);
    std::string line;
    std::string hardware;
    while (std::getline(lines, line)) {
        std::string key;
        std::string value;
        if (!splitKeyValue(line, key, value))
            continue;
        if (key == "processor")
            ++cpu.count;
        else if (key == "model name" && cpu.model.empty())
            cpu.model = value;
        else if (key == "cpu MHz" && cpu.khz == 0)
            cpu.khz = parseThousandths(value); // the clock right now
        else if (key == "flags" && !cpu.x86) {
            // Only x86 lists "flags"; its "hypervisor" flag marks a guest.
            cpu.x86 = true;
            cpu.hypervisor = (" " + value + " ").find(" hypervisor ") != std::string::npos;
        } else if ((key == "Hardware" || key == "cpu model" || key == "uarch") && hardware.empty())
            hardware = value;
    }
    if (cpu.model.empty())
        cpu.model = !hardware.empty() ? hardware : (names.machine.empty() ? std::string("Unknown") : names.machine);
    if (cpu.count == 0)
        cpu.count = std::max(1u, std::thread::hardware_concurrency());
    // The rated clock, where the frequency driver tells it (in kHz), is steadier
    // than the clock of the moment, which power management moves up and down.
    const unsigned long long ratedKhz =
        parseUnsigned(readLine(paths.sys + "/devices/system/cpu/cpu0/cpufreq/cpuinfo_max_freq"));
    if (ratedKhz > 0)
        cpu.khz = ratedKhz;
    return cpu;
}

// The way the Windows provider writes it: "Model (8 CPUs), ~3.6GHz", with a point
// whatever the user's language, as the provider's English fields always have. Whole
// numbers only, so the C library's locale never decides the decimal sign.
std::string processorText(const Processor &cpu)
{
    std::string text = cpu.model + " (" + std::to_string(cpu.count) + (cpu.count == 1 ? " CPU)" : " CPUs)");
    if (cpu.khz >= 1'000'000) {
        const unsigned long long tenthsOfGhz = (cpu.khz + 50'000) / 100'000;
        text += ", ~" + std::to_string(tenthsOfGhz / 10) + "." + std::to_string(tenthsOfGhz % 10) + "GHz";
    } else if (cpu.khz > 0) {
        text += ", ~" + std::to_string((cpu.khz + 500) / 1000) + "MHz";
    }
    return text;
}

struct Memory
{
    unsigned long long totalKb = 0;
    unsigned long long swapTotalKb = 0;
    unsigned long long swapFreeKb = 0;
    bool known = false;
};

Memory readMemory(const LinuxMachinePaths &paths)
{
    Memory memory;
    std::string content;
    readFile(paths.proc + "/meminfo", content);
    std::istringstream lines(content);
    std::string line;
    while (std::getline(lines, line)) {
        std::string key;
        std::string value;
        if (!splitKeyValue(line, key, value))
            continue;
        if (key == "MemTotal") {
            memory.totalKb = parseUnsigned(value);
            memory.known = true;
        } else if (key == "SwapTotal")
            memory.swapTotalKb = parseUnsigned(value);
        else if (key == "SwapFree")
            memory.swapFreeKb = parseUnsigned(value);
    }
    return memory;
}

// PRETTY_NAME of os-release, unquoted; /etc first, then /usr/lib as the file's
// own rules say.
std::string readOsName(const LinuxMachinePaths &paths)
{
    for (const std::string &path : {paths.etc + "/os-release", paths.usrLib + "/os-release"}) {
        std::string content;
        if (!readFile(path, content))
            continue;
        std::istringstream lines(content);
        std::string line;
        while (std::getline(lines, line)) {
            constexpr std::string_view key = "PRETTY_NAME=";
            if (!hasPrefix(line, key))
                continue;
            std::string value = trimmed(line.substr(key.size()));
            if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front())
                value = value.substr(1, value.size() - 2);
            if (!value.empty())
                return value;
        }
    }
    return "Linux";
}

// The kernel's version numbers as the provider's OS version fields; "6.1.0-18-amd64"
// gives 6, 1 and 0.
void kernelVersion(const std::string &release, std::uint32_t &major, std::uint32_t &minor, std::uint32_t &patch)
{
    major = minor = patch = 0;
    std::sscanf(release.c_str(), "%" SCNu32 ".%" SCNu32 ".%" SCNu32, &major, &minor, &patch);
}

// The OS version numbers, then the DirectX fields.
void addVersions(MemoryContainer &system, const LinuxMachinePaths &paths, const Uname &names)
{
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
    std::uint32_t patch = 0;
    kernelVersion(names.release, major, minor, patch);
    system.addUInt32("dwOSMajorVersion", major);
    system.addUInt32("dwOSMinorVersion", minor);
    system.addUInt32("dwOSBuildNumber", patch);

    // There is no DirectX on Linux, and the report says so rather than leave the
    // field out. Where the kernel has its display layer (DRM), its core version is
    // added, which tells the reader that a graphics stack is there at all.
    const std::string drm = readLine(paths.sys + "/class/drm/version"); // "drm 1.1.0 20060810"
    std::string directX = "Not available";
    system.addString("szDirectXVersionEnglish", directX);
    constexpr std::string_view drmPrefix = "drm ";
    if (hasPrefix(drm, drmPrefix))
        directX += " (DRM " + drm.substr(drmPrefix.size()) + ")";
    system.addString("szDirectXVersionLongEnglish", directX);
}

// Memory and swap, the machine's name, then what the firmware says about the board.
void addMachine(MemoryContainer &system, const LinuxMachinePaths &paths, const Uname &names)
{
    const Memory memory = readMemory(paths);
    if (memory.known) {
        system.addString("szPhysicalMemoryEnglish", printf1("%lluMB RAM", memory.totalKb / 1024));
        const unsigned long long usedKb =
            memory.swapTotalKb > memory.swapFreeKb ? memory.swapTotalKb - memory.swapFreeKb : 0;
        system.addString("szPageFileEnglish", printf1("%lluMB used, ", usedKb / 1024)
                                                  + printf1("%lluMB available", memory.swapFreeKb / 1024));
    }

    system.addString("szMachineNameEnglish", names.nodeName);

    // DMI is there on PCs and most virtual machines; other boards have none.
    const std::string dmi = paths.sys + "/class/dmi/id/";
    const std::string vendor = readLine(dmi + "sys_vendor");
    const std::string product = readLine(dmi + "product_name");
    const std::string bios = trimmed(readLine(dmi + "bios_vendor") + " " + readLine(dmi + "bios_version"));
    if (!vendor.empty())
        system.addString("szSystemManufacturerEnglish", vendor);
    if (!product.empty())
        system.addString("szSystemModelEnglish", product);
    if (!bios.empty())
        system.addString("szBIOSEnglish", bios);
}

// The fields in the order a Windows dump lists them.
void fillSystemInfo(MemoryContainer &system, const LinuxMachinePaths &paths, const Uname &names)
{
    addVersions(system, paths, names);
    addMachine(system, paths, names);

    const Processor cpu = readProcessor(paths, names);
    system.addString("szProcessorEnglish", processorText(cpu));
    if (cpu.x86)
        system.addBool("bHypervisorPresent", cpu.hypervisor);

    const std::string os = readOsName(paths);
    system.addString("szOSEnglish", os);
    std::string kernel = "Linux";
    if (!names.release.empty())
        kernel += " " + names.release;
    if (!names.machine.empty())
        kernel += " " + names.machine;
    system.addString("szOSExLongEnglish", os + " (" + kernel + ")");
}

} // namespace

std::unique_ptr<MemoryContainer> makeLinuxMachineRoot(const LinuxMachinePaths &paths)
{
    std::string probe;
    if (!readFile(paths.proc + "/meminfo", probe))
        return nullptr;
    auto root = std::make_unique<MemoryContainer>();
    const Uname names = unameOf(paths);
    fillSystemInfo(root->addChild(kDxDiagSystemInfo), paths, names);
    fillDisplayDevices(root->addChild(kDxDiagDisplayDevices), paths, names);
    return root;
}
