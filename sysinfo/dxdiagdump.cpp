#include "sysinfo/dxdiagdump.h"

#include <cinttypes>

const char kDxDiagSystemInfo[] = "DxDiag_SystemInfo";
const char kDxDiagDisplayDevices[] = "DxDiag_DisplayDevices";

namespace {

const char kRule[] = "--------------------------------------\n"; // 38 hyphens

// printf into a std::string. Every format here is a number in a short text, so
// the buffer always holds the whole result.
template <typename... Args>
std::string format(const char *fmt, Args... args)
{
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, fmt, args...);
    return buffer;
}

void put(std::FILE *stream, const std::string &text)
{
    std::fputs(text.c_str(), stream);
}

void writeValue(const DxDiagValue &value, std::FILE *file)
{
    switch (value.kind) {
    case DxDiagValue::Kind::UInt32:
        put(file, format("%" PRIu32 "\n", value.u32));
        break;
    case DxDiagValue::Kind::Int32:
        put(file, format("%" PRId32 "\n", value.i32));
        break;
    case DxDiagValue::Kind::Bool:
        put(file, value.boolean ? "TRUE\n" : "FALSE\n");
        break;
    case DxDiagValue::Kind::String:
        put(file, value.text + "\n");
        break;
    case DxDiagValue::Kind::Other:
        put(file, format("UNHANDLED VARIANT TYPE (%i)\n", value.typeNumber));
        break;
    }
}

} // namespace

void dumpContainer(DxDiagContainer &container, std::FILE *file)
{
    std::uint32_t properties = 0;
    if (!container.propertyCount(properties)) {
        // Without the count the children are not visited either.
        put(file, "Couldn't get number of properties\n");
        return;
    }
    put(file, format("(%" PRIu32 " properties)\n", properties));

    for (std::uint32_t i = 0; i < properties; ++i) {
        std::string name;
        if (!container.propertyName(i, name))
            continue;
        put(file, format("%6" PRIu32 ": ", i) + name + ": ");

        DxDiagValue value;
        if (!container.property(name, value)) {
            // No line feed: the next property's text runs on in the same line.
            put(file, format("%6" PRIu32 ": GET FAILED: ", i) + name + ": ");
            continue;
        }
        writeValue(value, file);
    }

    std::uint32_t children = 0;
    if (!container.childCount(children))
        return;
    put(file, format("(%" PRIu32 " child container(s))\n\n", children));

    for (std::uint32_t j = 0; j < children; ++j) {
        std::string name;
        if (!container.childName(j, name))
            continue;
        put(file, format("\nContainer %" PRIu32 " '", j) + name + "'\n");
        if (std::unique_ptr<DxDiagContainer> child = container.child(name))
            dumpContainer(*child, file);
    }
}

void dumpSection(DxDiagContainer &root, const char *name, std::FILE *file)
{
    put(stdout, std::string("\n") + kRule);
    put(stdout, std::string(name) + "\n");
    put(stdout, kRule);

    if (std::unique_ptr<DxDiagContainer> section = root.child(name))
        dumpContainer(*section, file);
}

void dumpSections(DxDiagSession &session, std::FILE *file)
{
    if (session.hasRoot())
        session.dumpSection(kDxDiagSystemInfo, file);
    if (session.hasRoot())
        session.dumpSection(kDxDiagDisplayDevices, file);
}

void writeDxDiagError(const std::string &message)
{
    put(stdout, "\n\nDxDiag Error: " + message);
}

DxDiagSession::~DxDiagSession() = default;
