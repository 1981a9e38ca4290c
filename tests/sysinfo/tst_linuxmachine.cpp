// The Linux machine description: over a made-up /proc, /sys and /etc with two
// graphics cards, and over this machine.

#include "sysinfo/linuxmachine.h"
#include "sysinfo/linuxmachine_p.h"
#include "sysinfo/systemsummary.h"

#include "containersession.h"
#include "fakedxdiag.h"
#include "support/testenv.h"

#include <QDir>
#include <QtTest>

#include <clocale>
#include <cstdio>
#include <fstream>
#include <sstream>

namespace {

void write(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot write %s", qPrintable(path));
    file.write(content);
}

void link(const QString &target, const QString &path)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    if (!QFile::link(target, path))
        qFatal("cannot link %s", qPrintable(path));
}

std::string bytes(const QByteArray &data)
{
    return std::string(data.constData(), std::size_t(data.size()));
}

// An EDID base block: maker "DEL", product 0xA0B3, preferred timing 2560x1440,
// and, when given, a monitor name descriptor in the second slot.
QByteArray edid(const QByteArray &name)
{
    QByteArray block(128, '\0');
    const char header[8] = {'\x00', '\xFF', '\xFF', '\xFF', '\xFF', '\xFF', '\xFF', '\x00'};
    block.replace(0, 8, QByteArray(header, 8));
    block[8] = '\x10'; // D E L, five bits each
    block[9] = '\xAC';
    block[10] = '\xB3';
    block[11] = '\xA0';
    block[54] = '\x56'; // pixel clock, non-zero: a detailed timing
    block[55] = '\x5E';
    block[56] = '\x00'; // 2560 = 0xA00
    block[58] = '\xA0';
    block[59] = '\xA0'; // 1440 = 0x5A0
    block[61] = '\x50';
    if (!name.isEmpty()) {
        QByteArray text = name.left(13);
        if (text.size() < 13)
            text += '\n';
        text = text.leftJustified(13, ' ');
        block.replace(72, 5, QByteArray("\x00\x00\x00\xFC\x00", 5));
        block.replace(77, 13, text);
    }
    return block;
}

const char kPciIds[] = "# made-up excerpt of pci.ids\n"
                       "1002  Advanced Micro Devices, Inc. [AMD/ATI]\n"
                       "\t67df  Ellesmere [Radeon RX 470/480/570/570X/580/580X/590]\n"
                       "\t\t1002 0b31  Radeon RX 580\n"
                       "1014  IBM\n"
                       "10de  NVIDIA Corporation\n"
                       "\t1c82  GP107 [GeForce GTX 1050 Ti]\n"
                       "\t1cb1  GP107GL [Quadro P1000]\n"
                       "C 03  Display controller\n"
                       "\t00  VGA compatible controller\n";

} // namespace

class TestLinuxMachine : public QObject
{
    Q_OBJECT

private:
    QString m_root;
    LinuxMachinePaths m_paths;

    QString dumpOf(const char *section)
    {
        std::unique_ptr<MemoryContainer> root = makeLinuxMachineRoot(m_paths);
        if (!root)
            return QStringLiteral("<no root>");
        MemoryContainer *child = root->findChild(section);
        return child ? QString::fromUtf8(dumpToBytes(*child)) : QStringLiteral("<no section>");
    }

private slots:
    void initTestCase()
    {
        m_root = TestEnvironment::instance().root() + "/machine";
        const QString sys = m_root + "/sys";
        write(m_root + "/proc/cpuinfo",
              "processor\t: 0\nvendor_id\t: GenuineIntel\nmodel name\t: Intel(R) Core(TM) i7-7700 CPU @ 3.60GHz\n"
              "cpu MHz\t\t: 1200.000\nflags\t\t: fpu vme de pse hypervisor lahf_lm\n\n"
              "processor\t: 1\nmodel name\t: Intel(R) Core(TM) i7-7700 CPU @ 3.60GHz\ncpu MHz\t\t: 800.000\n\n"
              "processor\t: 2\nmodel name\t: Intel(R) Core(TM) i7-7700 CPU @ 3.60GHz\n\n"
              "processor\t: 3\nmodel name\t: Intel(R) Core(TM) i7-7700 CPU @ 3.60GHz\n\n");
        write(m_root + "/proc/meminfo",
              "MemTotal:       16318464 kB\nMemFree:         1000000 kB\nSwapTotal:       2097148 kB\n"
              "SwapFree:        1048576 kB\n");
        write(sys + "/devices/system/cpu/cpu0/cpufreq/cpuinfo_max_freq", "3600000\n");
        write(m_root + "/etc/os-release", "NAME=\"Test OS\"\nPRETTY_NAME=\"Test OS 12 (tin)\"\nID=test\n");
        write(sys + "/class/dmi/id/sys_vendor", "Dell Inc.\n");
        write(sys + "/class/dmi/id/product_name", "OptiPlex 7050\n");
        write(sys + "/class/dmi/id/bios_vendor", "Dell Inc.\n");
        write(sys + "/class/dmi/id/bios_version", "1.11.0\n");
        write(sys + "/class/drm/version", "drm 1.1.0 20060810\n");

        // card0: an AMD card on PCI with two monitors, one output unplugged.
        const QString amd = sys + "/devices/pci0000:00/0000:01:00.0";
        write(amd + "/vendor", "0x1002\n");
        write(amd + "/device", "0x67df\n");
        write(amd + "/mem_info_vram_total", "8589934592\n");
        QDir().mkpath(sys + "/bus/pci/drivers/amdgpu");
        link(sys + "/bus/pci/drivers/amdgpu", amd + "/driver");
        link(amd, sys + "/class/drm/card0/device");
        write(sys + "/class/drm/card0-HDMI-A-1/status", "connected\n");
        write(sys + "/class/drm/card0-HDMI-A-1/modes", "2560x1440\n1920x1080\n1280x720\n");
        write(sys + "/class/drm/card0-HDMI-A-1/edid", edid("DELL U2719D"));
        write(sys + "/class/drm/card0-DP-1/status", "disconnected\n");
        write(sys + "/class/drm/card0-DP-1/modes", "");
        write(sys + "/class/drm/card0-DP-2/status", "connected\n");
        write(sys + "/class/drm/card0-DP-2/modes", "");
        write(sys + "/class/drm/card0-DP-2/edid", edid(QByteArray()));
        write(sys + "/class/drm/card0-Writeback-1/status", "unknown\n");

        // card10 (after card2 in number order): NVIDIA's own driver, nothing connected.
        const QString nvidia = sys + "/devices/pci0000:00/0000:02:00.0";
        write(nvidia + "/vendor", "0x10de\n");
        write(nvidia + "/device", "0x1cb1\n");
        QDir().mkpath(sys + "/bus/pci/drivers/nvidia");
        link(sys + "/bus/pci/drivers/nvidia", nvidia + "/driver");
        link(nvidia, sys + "/class/drm/card10/device");
        write(sys + "/module/nvidia/version", "550.54.14\n");
        link(sys + "/module/nvidia", sys + "/bus/pci/drivers/nvidia/module");
        // A kernel module without a version of its own.
        QDir().mkpath(sys + "/module/amdgpu");
        link(sys + "/module/amdgpu", sys + "/bus/pci/drivers/amdgpu/module");

        // card2: a display engine on the system bus, as on single-board computers.
        const QString soc = sys + "/devices/platform/gpu";
        QDir().mkpath(sys + "/bus/platform/drivers/vc4-drm");
        link(sys + "/bus/platform/drivers/vc4-drm", soc + "/driver");
        link(soc, sys + "/class/drm/card2/device");
        write(sys + "/class/drm/card2-HDMI-A-2/status", "connected\n");
        write(sys + "/class/drm/card2-HDMI-A-2/modes", "1920x1080\n");

        // Render nodes and the like are not cards.
        QDir().mkpath(sys + "/class/drm/renderD128");

        write(m_root + "/pci.ids", kPciIds);

        m_paths.proc = (m_root + "/proc").toStdString();
        m_paths.sys = sys.toStdString();
        m_paths.etc = (m_root + "/etc").toStdString();
        m_paths.usrLib = (m_root + "/usr/lib").toStdString();
        m_paths.dev = (m_root + "/dev").toStdString();
        m_paths.pciIds = {(m_root + "/missing.ids").toStdString(), (m_root + "/pci.ids").toStdString()};
        m_paths.fixedUname = true;
        m_paths.nodeName = "testbox";
        m_paths.release = "6.1.0-18-amd64";
        m_paths.machine = "x86_64";
    }

    void systemInfo()
    {
        QCOMPARE(dumpOf(kDxDiagSystemInfo),
                 QString("(15 properties)\n"
                         "     0: dwOSMajorVersion: 6\n"
                         "     1: dwOSMinorVersion: 1\n"
                         "     2: dwOSBuildNumber: 0\n"
                         "     3: szDirectXVersionEnglish: Not available\n"
                         "     4: szDirectXVersionLongEnglish: Not available (DRM 1.1.0 20060810)\n"
                         "     5: szPhysicalMemoryEnglish: 15936MB RAM\n"
                         "     6: szPageFileEnglish: 1023MB used, 1024MB available\n"
                         "     7: szMachineNameEnglish: testbox\n"
                         "     8: szSystemManufacturerEnglish: Dell Inc.\n"
                         "     9: szSystemModelEnglish: OptiPlex 7050\n"
                         "    10: szBIOSEnglish: Dell Inc. 1.11.0\n"
                         "    11: szProcessorEnglish: Intel(R) Core(TM) i7-7700 CPU @ 3.60GHz (4 CPUs), ~3.6GHz\n"
                         "    12: bHypervisorPresent: TRUE\n"
                         "    13: szOSEnglish: Test OS 12 (tin)\n"
                         "    14: szOSExLongEnglish: Test OS 12 (tin) (Linux 6.1.0-18-amd64 x86_64)\n"
                         "(0 child container(s))\n\n"));
    }

    void displayDevices()
    {
        QCOMPARE(dumpOf(kDxDiagDisplayDevices),
                 QString("(0 properties)\n"
                         "(4 child container(s))\n\n"
                         "\nContainer 0 '0'\n"
                         "(10 properties)\n"
                         "     0: szDeviceName: card0-DP-2\n"
                         "     1: szDescription: Advanced Micro Devices, Inc. [AMD/ATI] Ellesmere [Radeon RX "
                         "470/480/570/570X/580/580X/590]\n"
                         "     2: szManufacturer: Advanced Micro Devices, Inc. [AMD/ATI]\n"
                         "     3: szVendorId: 0x1002\n"
                         "     4: szDeviceId: 0x67df\n"
                         "     5: szDisplayMemoryEnglish: 8192 MB\n"
                         "     6: szMonitorName: DEL A0B3\n"
                         "     7: szMonitorMaxRes: 2560,1440\n"
                         "     8: szDriverName: amdgpu\n"
                         "     9: szDriverVersion: 6.1.0-18-amd64\n"
                         "(0 child container(s))\n\n"
                         "\nContainer 1 '1'\n"
                         "(13 properties)\n"
                         "     0: szDeviceName: card0-HDMI-A-1\n"
                         "     1: szDescription: Advanced Micro Devices, Inc. [AMD/ATI] Ellesmere [Radeon RX "
                         "470/480/570/570X/580/580X/590]\n"
                         "     2: szManufacturer: Advanced Micro Devices, Inc. [AMD/ATI]\n"
                         "     3: szVendorId: 0x1002\n"
                         "     4: szDeviceId: 0x67df\n"
                         "     5: szDisplayMemoryEnglish: 8192 MB\n"
                         "     6: szDisplayModeEnglish: 2560 x 1440 (preferred)\n"
                         "     7: dwWidth: 2560\n"
                         "     8: dwHeight: 1440\n"
                         "     9: szMonitorName: DELL U2719D\n"
                         "    10: szMonitorMaxRes: 2560,1440\n"
                         "    11: szDriverName: amdgpu\n"
                         "    12: szDriverVersion: 6.1.0-18-amd64\n"
                         "(0 child container(s))\n\n"
                         "\nContainer 2 '2'\n"
                         "(7 properties)\n"
                         "     0: szDeviceName: card2-HDMI-A-2\n"
                         "     1: szDescription: vc4-drm\n"
                         "     2: szDisplayModeEnglish: 1920 x 1080 (preferred)\n"
                         "     3: dwWidth: 1920\n"
                         "     4: dwHeight: 1080\n"
                         "     5: szDriverName: vc4-drm\n"
                         "     6: szDriverVersion: 6.1.0-18-amd64\n"
                         "(0 child container(s))\n\n"
                         "\nContainer 3 '3'\n"
                         "(7 properties)\n"
                         "     0: szDeviceName: card10\n"
                         "     1: szDescription: NVIDIA Corporation GP107GL [Quadro P1000]\n"
                         "     2: szManufacturer: NVIDIA Corporation\n"
                         "     3: szVendorId: 0x10de\n"
                         "     4: szDeviceId: 0x1cb1\n"
                         "     5: szDriverName: nvidia\n"
                         "     6: szDriverVersion: 550.54.14\n"
                         "(0 child container(s))\n\n"));
    }

    void summaryOfTheMadeUpMachine()
    {
        std::unique_ptr<MemoryContainer> root = makeLinuxMachineRoot(m_paths);
        QVERIFY(root);
        ContainerSession session(std::move(root));
        std::FILE *file = std::tmpfile();
        {
            StdoutCapture capture;
            dumpSections(session, file);
        }
        std::rewind(file);
        QByteArray dump;
        char buffer[4096];
        std::size_t n;
        while ((n = std::fread(buffer, 1, sizeof buffer, file)) > 0)
            dump.append(buffer, int(n));
        std::fclose(file);
        QCOMPARE(
            summarizeDump(QString::fromUtf8(dump)),
            QString("{ \"DirectXVersion\" : \"Not%20available%20%28DRM%201.1.0%2020060810%29\", "
                    "\"PhysicalMemory\" : \"15936MB%20RAM\", "
                    "\"Processor\" : \"Intel%28R%29%20Core%28TM%29%20i7-7700%20CPU%20%40%203.60GHz%20%284%20CPUs%29"
                    "%2C%20~3.6GHz\", "
                    "\"OS\" : \"Test%20OS%2012%20%28tin%29%20%28Linux%206.1.0-18-amd64%20x86_64%29\", "
                    "\"Display\" : \"card0-DP-2; Advanced%20Micro%20Devices%2C%20Inc.%20%5BAMD%2FATI%5D%20Ellesmere"
                    "%20%5BRadeon%20RX%20470%2F480%2F570%2F570X%2F580%2F580X%2F590%5D; 8192%20MB; DEL%20A0B3; amdgpu; "
                    "6.1.0-18-amd64\", "
                    "\"Display\" : \"card0-HDMI-A-1; Advanced%20Micro%20Devices%2C%20Inc.%20%5BAMD%2FATI%5D%20"
                    "Ellesmere%20%5BRadeon%20RX%20470%2F480%2F570%2F570X%2F580%2F580X%2F590%5D; 8192%20MB; "
                    "2560%20x%201440%20%28preferred%29; DELL%20U2719D; amdgpu; 6.1.0-18-amd64\", "
                    "\"Display\" : \"card2-HDMI-A-2; vc4-drm; 1920%20x%201080%20%28preferred%29; vc4-drm; "
                    "6.1.0-18-amd64\", "
                    "\"Display\" : \"card10; NVIDIA%20Corporation%20GP107GL%20%5BQuadro%20P1000%5D; nvidia; "
                    "550.54.14\" }"));
    }

    void sparseMachine()
    {
        // No DMI, no DRM, no cpufreq, no model name (as on some ARM boards), no
        // os-release in /etc but one in /usr/lib.
        const QString root = TestEnvironment::instance().root() + "/sparse";
        write(root + "/proc/cpuinfo", "processor\t: 0\nHardware\t: BCM2835\n\nprocessor\t: 1\n");
        write(root + "/proc/meminfo", "MemTotal:        3882400 kB\n");
        write(root + "/usr/lib/os-release", "PRETTY_NAME='Board OS'\n");
        LinuxMachinePaths paths = m_paths;
        paths.proc = (root + "/proc").toStdString();
        paths.sys = (root + "/sys").toStdString();
        paths.etc = (root + "/etc").toStdString();
        paths.usrLib = (root + "/usr/lib").toStdString();
        paths.machine = "aarch64";
        std::unique_ptr<MemoryContainer> machine = makeLinuxMachineRoot(paths);
        QVERIFY(machine);
        QCOMPARE(QString::fromUtf8(dumpToBytes(*machine->findChild(kDxDiagSystemInfo))),
                 QString("(11 properties)\n"
                         "     0: dwOSMajorVersion: 6\n"
                         "     1: dwOSMinorVersion: 1\n"
                         "     2: dwOSBuildNumber: 0\n"
                         "     3: szDirectXVersionEnglish: Not available\n"
                         "     4: szDirectXVersionLongEnglish: Not available\n"
                         "     5: szPhysicalMemoryEnglish: 3791MB RAM\n"
                         "     6: szPageFileEnglish: 0MB used, 0MB available\n"
                         "     7: szMachineNameEnglish: testbox\n"
                         "     8: szProcessorEnglish: BCM2835 (2 CPUs)\n"
                         "     9: szOSEnglish: Board OS\n"
                         "    10: szOSExLongEnglish: Board OS (Linux 6.1.0-18-amd64 aarch64)\n"
                         "(0 child container(s))\n\n"));
        QCOMPARE(QString::fromUtf8(dumpToBytes(*machine->findChild(kDxDiagDisplayDevices))),
                 QString("(0 properties)\n(0 child container(s))\n\n"));
    }

    // The description is sent to a server that reads one format, so the user's
    // language must not change it: a German C library writes "2,4" and reads
    // "2394.457" as 2394. The clock of the moment (no rated clock) and the rated one.
    void sameDescriptionInEveryLanguage()
    {
        const QString root = TestEnvironment::instance().root() + "/clocks";
        write(root + "/proc/cpuinfo", "processor\t: 0\nmodel name\t: Slow\ncpu MHz\t\t: 950.600\n");
        write(root + "/proc/meminfo", "MemTotal:        3882400 kB\n");
        LinuxMachinePaths slow = m_paths;
        slow.proc = (root + "/proc").toStdString();
        slow.sys = (root + "/sys").toStdString();
        write(root + "/fast/proc/cpuinfo", "processor\t: 0\nmodel name\t: Fast\ncpu MHz\t\t: 2394.457\n");
        write(root + "/fast/proc/meminfo", "MemTotal:        3882400 kB\n");
        LinuxMachinePaths fast = slow;
        fast.proc = (root + "/fast/proc").toStdString();

        const auto describe = [](const LinuxMachinePaths &paths) {
            std::unique_ptr<MemoryContainer> machine = makeLinuxMachineRoot(paths);
            return machine ? QString::fromUtf8(dumpToBytes(*machine->findChild(kDxDiagSystemInfo)) + "\n"
                                               + dumpToBytes(*machine->findChild(kDxDiagDisplayDevices)))
                           : QString();
        };
        const auto processor = [](const LinuxMachinePaths &paths) {
            return QString::fromStdString(
                makeLinuxMachineRoot(paths)->findChild(kDxDiagSystemInfo)->find("szProcessorEnglish")->text);
        };

        const QByteArray before = std::setlocale(LC_ALL, nullptr);
        QVERIFY2(std::setlocale(LC_ALL, "C"), "no C locale");
        const QString slowInC = describe(slow);
        const QString fastInC = describe(fast);
        const QString madeUpInC = describe(m_paths);
        QVERIFY2(std::setlocale(LC_ALL, "de_DE.UTF-8"),
                 "the locale de_DE.UTF-8 is missing (tools/install-deps.sh generates it)");
        const QString slowInGerman = describe(slow);
        const QString fastInGerman = describe(fast);
        const QString madeUpInGerman = describe(m_paths);
        const QString slowProcessorInGerman = processor(slow);
        const QString fastProcessorInGerman = processor(fast);
        char decimal[8];
        std::snprintf(decimal, sizeof decimal, "%.1f", 2.5);
        std::setlocale(LC_ALL, before.constData());

        QCOMPARE(QString(decimal), QString("2,5")); // the German locale is in force
        QCOMPARE(slowProcessorInGerman, QString("Slow (1 CPU), ~951MHz"));
        QCOMPARE(fastProcessorInGerman, QString("Fast (1 CPU), ~2.4GHz"));
        QCOMPARE(slowInGerman, slowInC);
        QCOMPARE(fastInGerman, fastInC);
        QCOMPARE(madeUpInGerman, madeUpInC);
        QVERIFY(madeUpInC.contains("szProcessorEnglish: Intel(R) Core(TM) i7-7700 CPU @ 3.60GHz (4 CPUs), ~3.6GHz\n"));
    }

    // The kernel's decimal figures, in thousandths, whatever the locale.
    void thousandths_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<qulonglong>("thousandths");
        QTest::newRow("kernel clock") << "2394.457" << 2394457ULL;
        QTest::newRow("whole") << "800" << 800000ULL;
        QTest::newRow("one decimal") << "950.6" << 950600ULL;
        QTest::newRow("more than three decimals") << "1200.0009" << 1200000ULL;
        QTest::newRow("comma is not a point") << "950,6" << 950000ULL;
        QTest::newRow("empty") << "" << 0ULL;
        QTest::newRow("not a figure") << "fast" << 0ULL;
        QTest::newRow("absurdly long") << "99999999999999999999999" << 0ULL;
    }

    void thousandths()
    {
        QFETCH(QString, text);
        QFETCH(qulonglong, thousandths);
        QCOMPARE(qulonglong(linuxmachine::detail::parseThousandths(text.toStdString())), thousandths);
    }

    void noProcessFilesNoRoot()
    {
        LinuxMachinePaths paths = m_paths;
        paths.proc = (m_root + "/nothing").toStdString();
        QVERIFY(!makeLinuxMachineRoot(paths));
    }

    void monitorNames()
    {
        QCOMPARE(QString::fromStdString(linuxmachine::monitorNameFromEdid(bytes(edid("DELL U2719D")))),
                 QString("DELL U2719D"));
        QCOMPARE(QString::fromStdString(linuxmachine::monitorNameFromEdid(bytes(edid("LG ULTRAFINE 5K")))),
                 QString("LG ULTRAFINE"));
        QCOMPARE(QString::fromStdString(linuxmachine::monitorNameFromEdid(bytes(edid(QByteArray())))),
                 QString("DEL A0B3"));
        QByteArray broken = edid("X");
        broken[1] = '\x00';
        QCOMPARE(QString::fromStdString(linuxmachine::monitorNameFromEdid(bytes(broken))), QString());
        QCOMPARE(QString::fromStdString(linuxmachine::monitorNameFromEdid(bytes(edid("X").left(100)))), QString());
        QCOMPARE(QString::fromStdString(linuxmachine::maxResolutionFromEdid(bytes(edid("X")))), QString("2560,1440"));
    }

    void pciNames()
    {
        std::string vendor;
        std::istringstream ids1(kPciIds);
        QCOMPARE(QString::fromStdString(linuxmachine::pciDescription(ids1, 0x10de, 0x1c82, &vendor)),
                 QString("NVIDIA Corporation GP107 [GeForce GTX 1050 Ti]"));
        QCOMPARE(QString::fromStdString(vendor), QString("NVIDIA Corporation"));
        std::istringstream ids2(kPciIds);
        QCOMPARE(QString::fromStdString(linuxmachine::pciDescription(ids2, 0x10de, 0xbeef, nullptr)),
                 QString("NVIDIA Corporation device beef"));
        std::istringstream ids3(kPciIds);
        QCOMPARE(QString::fromStdString(linuxmachine::pciDescription(ids3, 0x8086, 0x1234, nullptr)), QString());
        std::istringstream ids4(kPciIds); // sub-system lines are not devices
        QCOMPARE(QString::fromStdString(linuxmachine::pciDescription(ids4, 0x1002, 0x0b31, nullptr)),
                 QString("Advanced Micro Devices, Inc. [AMD/ATI] device 0b31"));
    }

    void debiansPciNameList()
    {
        std::ifstream ids("/usr/share/misc/pci.ids");
        if (!ids)
            QSKIP("the pci.ids package is not installed");
        const std::string name = linuxmachine::pciDescription(ids, 0x8086, 0x1237, nullptr);
        QVERIFY2(QString::fromStdString(name).startsWith("Intel Corporation 440FX"), name.c_str());
    }

    void thisMachine()
    {
        std::unique_ptr<MemoryContainer> root = makeLinuxMachineRoot();
        QVERIFY(root);
        MemoryContainer *system = root->findChild(kDxDiagSystemInfo);
        QVERIFY(system);
        for (const char *name : {"szProcessorEnglish", "szPhysicalMemoryEnglish", "szOSExLongEnglish",
                                 "szDirectXVersionLongEnglish", "szMachineNameEnglish"}) {
            const DxDiagValue *value = system->find(name);
            QVERIFY2(value && value->kind == DxDiagValue::Kind::String && !value->text.empty(), name);
        }
        QVERIFY(QString::fromStdString(system->find("szPhysicalMemoryEnglish")->text).endsWith("MB RAM"));
        QCOMPARE(system->find("dwOSMajorVersion")->kind, DxDiagValue::Kind::UInt32);
        MemoryContainer *displays = root->findChild(kDxDiagDisplayDevices);
        QVERIFY(displays);
        // Each display, where there are any, starts with its device name.
        for (std::size_t i = 0; i < displays->children(); ++i) {
            MemoryContainer *display = displays->findChild(std::to_string(i));
            QVERIFY(display);
            std::string first;
            QVERIFY(display->propertyName(0, first));
            QCOMPARE(QString::fromStdString(first), QString("szDeviceName"));
        }
    }
};

FB_TEST_MAIN(TestLinuxMachine)
#include "tst_linuxmachine.moc"
