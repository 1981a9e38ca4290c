#include "sysinfo/linuxmachine.h"
#include "sysinfo/linuxmachine_p.h"

#include "sysinfo/dxdiagdump.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/utsname.h>
#include <unistd.h>

// The kernel's mode-setting interface, as libdrm's development files ship it.
// Without them the current mode is not asked for and the preferred one is reported.
#if __has_include(<libdrm/drm_mode.h>)
#include <libdrm/drm.h>
#include <libdrm/drm_mode.h>
#define FB_HAVE_DRM_UAPI 1
#endif

namespace fs = std::filesystem;

using namespace linuxmachine::detail;

namespace {

// ---------------------------------------------------------------------------
// Display devices

struct Card
{
    unsigned number = 0;
    std::string name; // "card0"
    std::vector<std::string> connectors; // "card0-HDMI-A-1", connected ones only
};

constexpr std::string_view kCardPrefix = "card";

bool isCardName(const std::string &name, unsigned &number)
{
    if (name.size() <= kCardPrefix.size() || !hasPrefix(name, kCardPrefix))
        return false;
    for (std::size_t i = kCardPrefix.size(); i < name.size(); ++i) {
        if (!std::isdigit(static_cast<unsigned char>(name[i])))
            return false;
    }
    number = static_cast<unsigned>(parseUnsigned(name.substr(kCardPrefix.size())));
    return true;
}

std::vector<Card> listCards(const std::string &drmClass)
{
    std::vector<Card> cards;
    std::vector<std::string> connectors;
    std::error_code error;
    for (fs::directory_iterator it(drmClass, error), end; !error && it != end; it.increment(error)) {
        const std::string name = it->path().filename().string();
        unsigned number = 0;
        if (isCardName(name, number))
            cards.push_back({number, name, {}});
        else if (hasPrefix(name, kCardPrefix) && name.find('-') != std::string::npos)
            connectors.push_back(name);
    }
    std::sort(cards.begin(), cards.end(), [](const Card &a, const Card &b) { return a.number < b.number; });
    std::sort(connectors.begin(), connectors.end());
    for (const std::string &connector : connectors) {
        if (readLine(drmClass + "/" + connector + "/status") != "connected")
            continue;
        const std::string cardName = connector.substr(0, connector.find('-'));
        for (Card &card : cards) {
            if (card.name == cardName)
                card.connectors.push_back(connector);
        }
    }
    return cards;
}

std::string hex4(unsigned value)
{
    return printf1("0x%04llx", value);
}

struct Gpu
{
    std::string description;
    std::string manufacturer;
    std::string vendorId;
    std::string deviceId;
    std::string driver;
    std::string driverVersion;
    std::string memory;
};

std::string lookUpPci(const LinuxMachinePaths &paths, unsigned vendor, unsigned device, std::string &vendorName)
{
    for (const std::string &path : paths.pciIds) {
        std::ifstream ids(path);
        if (!ids)
            continue;
        return linuxmachine::pciDescription(ids, vendor, device, &vendorName);
    }
    return std::string();
}

Gpu readGpu(const LinuxMachinePaths &paths, const std::string &cardDir, const std::string &kernelRelease)
{
    Gpu gpu;
    const std::string device = cardDir + "/device";
    std::error_code error;
    const fs::path driverLink = fs::read_symlink(device + "/driver", error);
    if (!error)
        gpu.driver = driverLink.filename().string();

    const std::string vendorText = readLine(device + "/vendor");
    const std::string deviceText = readLine(device + "/device");
    if (!vendorText.empty() && !deviceText.empty()) {
        // A PCI device: its ids, and their names where the PCI name list has them.
        const unsigned vendorId = static_cast<unsigned>(parseUnsigned(vendorText, 16));
        const unsigned deviceId = static_cast<unsigned>(parseUnsigned(deviceText, 16));
        gpu.vendorId = hex4(vendorId);
        gpu.deviceId = hex4(deviceId);
        gpu.description = lookUpPci(paths, vendorId, deviceId, gpu.manufacturer);
        if (gpu.description.empty())
            gpu.description = "PCI device " + printf1("%04llx", vendorId) + ":" + printf1("%04llx", deviceId);
    } else {
        // A device on a system bus (phones, single-board computers): the driver
        // is the best description the kernel offers.
        gpu.description = gpu.driver.empty() ? std::string("Unknown display adapter") : gpu.driver;
    }

    // Drivers built outside the kernel (such as NVIDIA's) carry their own version
    // in their module; the kernel's drivers are versioned with the kernel itself.
    if (!gpu.driver.empty()) {
        gpu.driverVersion = readLine(device + "/driver/module/version");
        if (gpu.driverVersion.empty())
            gpu.driverVersion = kernelRelease;
    }

    // Only some drivers report the video memory; amdgpu does, in bytes.
    const std::string vram = readLine(device + "/mem_info_vram_total");
    if (!vram.empty())
        gpu.memory = printf1("%llu MB", parseUnsigned(vram) / (1024 * 1024));
    return gpu;
}

struct Mode
{
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t refresh = 0;
    std::uint32_t bpp = 0;
    bool current = false; // false: the monitor's preferred mode, not known to be in use
};

#ifdef FB_HAVE_DRM_UAPI

// Connector type names as the kernel uses them in the sysfs names, by type number.
const char *const kConnectorTypes[] = {"Unknown", "VGA",       "DVI-I", "DVI-D", "DVI-A",     "Composite", "SVIDEO",
                                       "LVDS",    "Component", "DIN",   "DP",    "HDMI-A",    "HDMI-B",    "TV",
                                       "eDP",     "Virtual",   "DSI",   "DPI",   "Writeback", "SPI",       "USB"};

bool drmIoctl(int fd, unsigned long request, void *argument)
{
    int result;
    do {
        result = ioctl(fd, request, argument);
    } while (result == -1 && errno == EINTR);
    return result == 0;
}

// The connector's id: newer kernels publish it; otherwise it is found by type and
// index among the card's connectors.
std::uint32_t connectorId(int fd, const std::string &drmClass, const std::string &connector)
{
    const std::string published = readLine(drmClass + "/" + connector + "/connector_id");
    if (!published.empty())
        return static_cast<std::uint32_t>(parseUnsigned(published));

    const std::string name = connector.substr(connector.find('-') + 1); // "HDMI-A-1"
    const std::size_t dash = name.rfind('-');
    if (dash == std::string::npos)
        return 0;
    const std::string typeName = name.substr(0, dash);
    const std::uint32_t typeIndex = static_cast<std::uint32_t>(parseUnsigned(name.substr(dash + 1)));

    drm_mode_card_res resources = {};
    if (!drmIoctl(fd, DRM_IOCTL_MODE_GETRESOURCES, &resources) || resources.count_connectors == 0)
        return 0;
    std::vector<std::uint32_t> ids(resources.count_connectors);
    drm_mode_card_res listing = {};
    listing.count_connectors = resources.count_connectors;
    listing.connector_id_ptr = reinterpret_cast<std::uintptr_t>(ids.data());
    if (!drmIoctl(fd, DRM_IOCTL_MODE_GETRESOURCES, &listing))
        return 0;
    ids.resize(std::min<std::size_t>(ids.size(), listing.count_connectors));
    for (std::uint32_t id : ids) {
        drm_mode_modeinfo mode = {};
        drm_mode_get_connector info = {};
        info.connector_id = id;
        // One mode slot keeps the kernel from probing the outputs again.
        info.count_modes = 1;
        info.modes_ptr = reinterpret_cast<std::uintptr_t>(&mode);
        if (!drmIoctl(fd, DRM_IOCTL_MODE_GETCONNECTOR, &info))
            continue;
        const std::size_t types = sizeof kConnectorTypes / sizeof kConnectorTypes[0];
        if (info.connector_type < types && typeName == kConnectorTypes[info.connector_type]
            && info.connector_type_id == typeIndex)
            return id;
    }
    return 0;
}

// The mode the output is driven with now, asked of the kernel's mode setting. This
// needs read access to the card's device node, which desktop sessions grant.
bool currentMode(const LinuxMachinePaths &paths, const std::string &drmClass, const std::string &card,
                 const std::string &connector, Mode &result)
{
    const int fd = open((paths.dev + "/dri/" + card).c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    bool found = false;
    const std::uint32_t id = connectorId(fd, drmClass, connector);
    drm_mode_modeinfo slot = {};
    drm_mode_get_connector info = {};
    info.connector_id = id;
    info.count_modes = 1;
    info.modes_ptr = reinterpret_cast<std::uintptr_t>(&slot);
    if (id != 0 && drmIoctl(fd, DRM_IOCTL_MODE_GETCONNECTOR, &info) && info.encoder_id != 0) {
        drm_mode_get_encoder encoder = {};
        encoder.encoder_id = info.encoder_id;
        if (drmIoctl(fd, DRM_IOCTL_MODE_GETENCODER, &encoder) && encoder.crtc_id != 0) {
            drm_mode_crtc crtc = {};
            crtc.crtc_id = encoder.crtc_id;
            if (drmIoctl(fd, DRM_IOCTL_MODE_GETCRTC, &crtc) && crtc.mode_valid) {
                result.width = crtc.mode.hdisplay;
                result.height = crtc.mode.vdisplay;
                result.refresh = crtc.mode.vrefresh;
                result.current = true;
                found = true;
                drm_mode_fb_cmd framebuffer = {};
                framebuffer.fb_id = crtc.fb_id;
                if (crtc.fb_id != 0 && drmIoctl(fd, DRM_IOCTL_MODE_GETFB, &framebuffer))
                    result.bpp = framebuffer.bpp;
            }
        }
    }
    close(fd);
    return found;
}

#else

bool currentMode(const LinuxMachinePaths &, const std::string &, const std::string &, const std::string &, Mode &)
{
    return false;
}

#endif

// The connector's first listed mode is the monitor's preferred one ("1920x1080").
bool preferredMode(const std::string &connectorDir, Mode &result)
{
    const std::string first = readLine(connectorDir + "/modes");
    unsigned width = 0;
    unsigned height = 0;
    if (std::sscanf(first.c_str(), "%ux%u", &width, &height) != 2)
        return false;
    result.width = width;
    result.height = height;
    result.current = false;
    return true;
}

// As the Windows provider writes it: "1920 x 1080 (32 bit) (60Hz)".
std::string modeText(const Mode &mode)
{
    std::string text = std::to_string(mode.width) + " x " + std::to_string(mode.height);
    if (mode.bpp)
        text += " (" + std::to_string(mode.bpp) + " bit)";
    if (mode.refresh)
        text += " (" + std::to_string(mode.refresh) + "Hz)";
    if (!mode.current)
        text += " (preferred)";
    return text;
}

void fillDisplay(MemoryContainer &display, const std::string &deviceName, const Gpu &gpu)
{
    display.addString("szDeviceName", deviceName);
    display.addString("szDescription", gpu.description);
    if (!gpu.manufacturer.empty())
        display.addString("szManufacturer", gpu.manufacturer);
    if (!gpu.vendorId.empty()) {
        display.addString("szVendorId", gpu.vendorId);
        display.addString("szDeviceId", gpu.deviceId);
    }
    if (!gpu.memory.empty())
        display.addString("szDisplayMemoryEnglish", gpu.memory);
}

void fillDriver(MemoryContainer &display, const Gpu &gpu)
{
    if (gpu.driver.empty())
        return;
    display.addString("szDriverName", gpu.driver);
    display.addString("szDriverVersion", gpu.driverVersion);
}

bool validEdid(const std::string &edid)
{
    static const unsigned char header[8] = {0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00};
    return edid.size() >= 128 && std::equal(header, header + 8, edid.begin(), [](unsigned char a, char b) {
               return a == static_cast<unsigned char>(b);
           });
}

} // namespace

namespace linuxmachine::detail {

void fillDisplayDevices(MemoryContainer &devices, const LinuxMachinePaths &paths, const Uname &names)
{
    const std::string drmClass = paths.sys + "/class/drm";
    unsigned index = 0;
    for (const Card &card : listCards(drmClass)) {
        const Gpu gpu = readGpu(paths, drmClass + "/" + card.name, names.release);
        if (card.connectors.empty()) {
            // A card with nothing connected (a second GPU, a server) is still worth naming.
            MemoryContainer &display = devices.addChild(std::to_string(index++));
            fillDisplay(display, card.name, gpu);
            fillDriver(display, gpu);
            continue;
        }
        for (const std::string &connector : card.connectors) {
            const std::string connectorDir = drmClass + "/" + connector;
            MemoryContainer &display = devices.addChild(std::to_string(index++));
            fillDisplay(display, connector, gpu);

            Mode mode;
            if (currentMode(paths, drmClass, card.name, connector, mode) || preferredMode(connectorDir, mode)) {
                display.addString("szDisplayModeEnglish", modeText(mode));
                display.addUInt32("dwWidth", mode.width);
                display.addUInt32("dwHeight", mode.height);
                if (mode.refresh)
                    display.addUInt32("dwRefreshRate", mode.refresh);
            }

            std::string edid;
            if (readFile(connectorDir + "/edid", edid) && !edid.empty()) {
                const std::string monitor = linuxmachine::monitorNameFromEdid(edid);
                if (!monitor.empty())
                    display.addString("szMonitorName", monitor);
                const std::string maxRes = linuxmachine::maxResolutionFromEdid(edid);
                if (!maxRes.empty())
                    display.addString("szMonitorMaxRes", maxRes);
            }
            fillDriver(display, gpu);
        }
    }
}

} // namespace linuxmachine::detail

namespace linuxmachine {

std::string monitorNameFromEdid(const std::string &edid)
{
    if (!validEdid(edid))
        return std::string();
    const auto byte = [&edid](std::size_t i) { return static_cast<unsigned char>(edid[i]); };
    // Four 18-byte descriptors; a display descriptor with tag 0xFC holds the name,
    // ended by a line feed and padded with spaces.
    for (std::size_t offset = 54; offset + 18 <= 126; offset += 18) {
        if (byte(offset) != 0 || byte(offset + 1) != 0 || byte(offset + 3) != 0xFC)
            continue;
        std::string name;
        for (std::size_t i = offset + 5; i < offset + 18 && byte(i) != 0x0A; ++i)
            name += static_cast<char>(byte(i) >= 0x20 && byte(i) < 0x7F ? byte(i) : '?');
        name = trimmed(name);
        if (!name.empty())
            return name;
    }
    // The maker's three-letter PnP id, five bits a letter, and the product code.
    const unsigned maker = (byte(8) << 8) | byte(9);
    std::string id;
    for (int shift = 10; shift >= 0; shift -= 5) {
        const unsigned letter = (maker >> shift) & 0x1F;
        if (letter < 1 || letter > 26)
            return std::string();
        id += static_cast<char>('A' + letter - 1);
    }
    char product[8];
    std::snprintf(product, sizeof product, "%04X", byte(10) | (byte(11) << 8));
    return id + " " + product;
}

std::string maxResolutionFromEdid(const std::string &edid)
{
    if (!validEdid(edid))
        return std::string();
    const auto byte = [&edid](std::size_t i) { return static_cast<unsigned char>(edid[i]); };
    // The first detailed timing is the preferred mode; a zero pixel clock means
    // the slot holds a descriptor instead.
    if (byte(54) == 0 && byte(55) == 0)
        return std::string();
    const unsigned width = byte(56) | ((byte(58) & 0xF0) << 4);
    const unsigned height = byte(59) | ((byte(61) & 0xF0) << 4);
    return std::to_string(width) + "," + std::to_string(height);
}

std::string pciDescription(std::istream &pciIds, unsigned vendor, unsigned device, std::string *vendorName)
{
    // Vendors start in the first column, their devices after one tab; sub-systems
    // (two tabs) and the class list at the end ("C ...") are skipped.
    char vendorKey[8];
    char deviceKey[8];
    std::snprintf(vendorKey, sizeof vendorKey, "%04x", vendor);
    std::snprintf(deviceKey, sizeof deviceKey, "%04x", device);
    std::string line;
    std::string vendorText;
    bool inVendor = false;
    while (std::getline(pciIds, line)) {
        if (line.empty() || line[0] == '#')
            continue;
        if (line[0] != '\t') {
            if (inVendor)
                break;
            if (line.compare(0, 4, vendorKey) == 0 && line.size() > 4 && line[4] == ' ') {
                inVendor = true;
                vendorText = trimmed(line.substr(4));
            }
            continue;
        }
        if (inVendor && line.size() > 5 && line[1] != '\t' && line.compare(1, 4, deviceKey) == 0 && line[5] == ' ') {
            if (vendorName)
                *vendorName = vendorText;
            return vendorText + " " + trimmed(line.substr(5));
        }
    }
    if (!inVendor)
        return std::string();
    if (vendorName)
        *vendorName = vendorText;
    return vendorText + " device " + deviceKey;
}

} // namespace linuxmachine
