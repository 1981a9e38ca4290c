#pragma once

// Pieces shared by the two halves of the Linux machine description: the system
// facts (linuxmachine.cpp) and the display devices (linuxdisplays.cpp).

#include "sysinfo/linuxmachine.h"

#include <string>
#include <string_view>

namespace linuxmachine::detail {

// Small file helpers. Missing or unreadable files give empty results.
bool readFile(const std::string &path, std::string &content);
std::string trimmed(const std::string &text);
std::string readLine(const std::string &path);
// "key<sep>value" lines, as in /proc/cpuinfo ("model name\t: ...") and
// /proc/meminfo ("MemTotal:  123 kB").
bool splitKeyValue(const std::string &line, std::string &key, std::string &value);
unsigned long long parseUnsigned(const std::string &text, int base = 10);
// A decimal figure with a point, as the kernel writes it ("2394.457"), in thousandths
// (2394457); read by hand, as strtod would take the user's decimal comma.
unsigned long long parseThousandths(const std::string &text);
// Whether text begins with prefix; the length is the literal's own.
inline bool hasPrefix(const std::string &text, std::string_view prefix)
{
    return std::string_view(text).substr(0, prefix.size()) == prefix;
}
std::string printf1(const char *format, unsigned long long value);

struct Uname
{
    std::string nodeName;
    std::string release;
    std::string machine;
};

Uname unameOf(const LinuxMachinePaths &paths);

void fillDisplayDevices(MemoryContainer &devices, const LinuxMachinePaths &paths, const Uname &names);

} // namespace linuxmachine::detail
