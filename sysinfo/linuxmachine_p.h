#pragma once

// Pieces shared by the two halves of the Linux machine description: the system
// facts (linuxmachine.cpp) and the display devices (linuxdisplays.cpp).

#include "sysinfo/linuxmachine.h"

#include <string>

namespace linuxmachine::detail {

// Small file helpers. Missing or unreadable files give empty results.
bool readFile(const std::string &path, std::string &content);
std::string trimmed(const std::string &text);
std::string readLine(const std::string &path);
// "key<sep>value" lines, as in /proc/cpuinfo ("model name\t: ...") and
// /proc/meminfo ("MemTotal:  123 kB").
bool splitKeyValue(const std::string &line, std::string &key, std::string &value);
unsigned long long parseUnsigned(const std::string &text, int base = 10);
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
