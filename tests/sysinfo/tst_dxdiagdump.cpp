// The dump walker over made-up container trees: the exact text of every line kind,
// the failures of each provider call, the section headers on stdout.

#include "sysinfo/dxdiagdump.h"
#include "sysinfo/dxdiagreader.h"

#include "containersession.h"
#include "fakedxdiag.h"
#include "support/testenv.h"
#ifndef Q_OS_WIN
#include "sysinfo/linuxmachine.h"
#endif

#include <QtTest>

namespace {

const QByteArray kRule = QByteArray(38, '-');

// A container that claims many properties but can name only a few of them.
class SparseContainer : public FakeContainer
{
public:
    std::uint32_t claimed = 0;
    bool propertyCount(std::uint32_t &count) override
    {
        count = claimed;
        return true;
    }
    bool propertyName(std::uint32_t index, std::string &name) override
    {
        if (index != 5 && index != 99999 && index != 123456)
            return false;
        name = "p" + std::to_string(index);
        return true;
    }
    bool property(const std::string &, DxDiagValue &value) override
    {
        value = DxDiagValue::fromString("x");
        return true;
    }
};

} // namespace

class TestDxDiagDump : public QObject
{
    Q_OBJECT

private slots:
    void zeroPropertiesAndTwoChildren()
    {
        FakeContainer root;
        root.fakeChild("0").addString("szDeviceName", "\\\\.\\DISPLAY1");
        root.fakeChild("1").addString("szDeviceName", "\\\\.\\DISPLAY2");
        QCOMPARE(dumpToBytes(root), QByteArray("(0 properties)\n"
                                               "(2 child container(s))\n"
                                               "\n"
                                               "\n"
                                               "Container 0 '0'\n"
                                               "(1 properties)\n"
                                               "     0: szDeviceName: \\\\.\\DISPLAY1\n"
                                               "(0 child container(s))\n"
                                               "\n"
                                               "\n"
                                               "Container 1 '1'\n"
                                               "(1 properties)\n"
                                               "     0: szDeviceName: \\\\.\\DISPLAY2\n"
                                               "(0 child container(s))\n"
                                               "\n"));
    }

    void valuesByType()
    {
        FakeContainer c;
        c.addUInt32("dwMax", 4294967295u);
        c.addUInt32("dwZero", 0);
        c.addInt32("lNegative", -42);
        c.addBool("bOn", true);
        c.addBool("bOff", false);
        c.addString("szText", "Intel(R) Core(TM) i7");
        c.addString("szEmpty", "");
        c.add("fDouble", DxDiagValue::other(VtR8));
        c.add("ullBig", DxDiagValue::other(VtUI8));
        QCOMPARE(dumpToBytes(c), QByteArray("(9 properties)\n"
                                            "     0: dwMax: 4294967295\n"
                                            "     1: dwZero: 0\n"
                                            "     2: lNegative: -42\n"
                                            "     3: bOn: TRUE\n"
                                            "     4: bOff: FALSE\n"
                                            "     5: szText: Intel(R) Core(TM) i7\n"
                                            "     6: szEmpty: \n"
                                            "     7: fDouble: UNHANDLED VARIANT TYPE (5)\n"
                                            "     8: ullBig: UNHANDLED VARIANT TYPE (21)\n"
                                            "(0 child container(s))\n\n"));
    }

    void booleanIsNeverANumber()
    {
        FakeContainer c;
        DxDiagValue odd = DxDiagValue::fromBool(true);
        odd.u32 = 7; // whatever else the value holds, a boolean prints as a word
        odd.i32 = -1;
        c.add("bOdd", odd);
        QVERIFY(dumpToBytes(c).contains("     0: bOdd: TRUE\n"));
    }

    void textIsUtf8()
    {
        FakeContainer c;
        c.addString("szMonitorName", "\xC3\x89"
                                     "cran \xE2\x84\xA2");
        QVERIFY(dumpToBytes(c).contains("     0: szMonitorName: \xC3\x89"
                                        "cran \xE2\x84\xA2\n"));
    }

    void indexIsRightAlignedInSixColumns()
    {
        SparseContainer c;
        c.claimed = 123457;
        const QByteArray dump = dumpToBytes(c);
        QCOMPARE(dump, QByteArray("(123457 properties)\n"
                                  "     5: p5: x\n"
                                  " 99999: p99999: x\n"
                                  "123456: p123456: x\n"
                                  "(0 child container(s))\n\n"));
    }

    void failedGetRunsOnIntoTheNextProperty()
    {
        FakeContainer c;
        c.addString("szMonitorMaxRes", "1920,1080");
        c.addString("szDriverName", "nvd3dum.dll");
        c.addString("szLast", "fails too");
        c.failGet = {"szMonitorMaxRes", "szLast"};
        QCOMPARE(dumpToBytes(c), QByteArray("(3 properties)\n"
                                            "     0: szMonitorMaxRes:      0: GET FAILED: szMonitorMaxRes: "
                                            "     1: szDriverName: nvd3dum.dll\n"
                                            "     2: szLast:      2: GET FAILED: szLast: "
                                            "(0 child container(s))\n\n"));
    }

    void unreadableNamesAreSkipped()
    {
        FakeContainer c;
        c.addString("a", "1");
        c.addString("b", "2");
        c.addString("c", "3");
        c.failPropertyNameAt = {1};
        c.fakeChild("x").addString("in", "x");
        c.fakeChild("y").addString("in", "y");
        c.failChildNameAt = {0};
        QCOMPARE(dumpToBytes(c), QByteArray("(3 properties)\n"
                                            "     0: a: 1\n"
                                            "     2: c: 3\n"
                                            "(2 child container(s))\n\n"
                                            "\nContainer 1 'y'\n"
                                            "(1 properties)\n"
                                            "     0: in: y\n"
                                            "(0 child container(s))\n\n"));
    }

    void propertyCountFailureSkipsTheChildrenToo()
    {
        FakeContainer c;
        c.addString("a", "1");
        c.fakeChild("0").addString("b", "2");
        c.failPropertyCount = true;
        QCOMPARE(dumpToBytes(c), QByteArray("Couldn't get number of properties\n"));
    }

    void childCountFailureEndsAfterTheProperties()
    {
        FakeContainer c;
        c.addString("a", "1");
        c.fakeChild("0").addString("b", "2");
        c.failChildCount = true;
        QCOMPARE(dumpToBytes(c), QByteArray("(1 properties)\n     0: a: 1\n"));
    }

    void childThatCannotBeObtainedKeepsItsContainerLine()
    {
        FakeContainer c;
        c.fakeChild("gone").addString("a", "1");
        c.fakeChild("kept").addString("b", "2");
        c.failChild = {"gone"};
        QCOMPARE(dumpToBytes(c), QByteArray("(0 properties)\n"
                                            "(2 child container(s))\n\n"
                                            "\nContainer 0 'gone'\n"
                                            "\nContainer 1 'kept'\n"
                                            "(1 properties)\n"
                                            "     0: b: 2\n"
                                            "(0 child container(s))\n\n"));
    }

    void childrenAreWalkedAtAnyDepth()
    {
        FakeContainer c;
        FakeContainer *level = &c;
        for (int depth = 0; depth < 40; ++depth)
            level = &level->fakeChild(std::to_string(depth));
        level->addString("szDeep", "bottom");
        const QByteArray dump = dumpToBytes(c);
        QVERIFY(dump.contains("\nContainer 0 '39'\n(1 properties)\n     0: szDeep: bottom\n"));
        QCOMPARE(dump.count("child container(s)"), 41);
    }

    void sectionHeadersGoToStdoutAndNeverToTheFile()
    {
        FakeContainer root;
        root.fakeChild("DxDiag_SystemInfo").addString("szProcessorEnglish", "CPU");
        std::FILE *file = std::tmpfile();
        QByteArray out;
        {
            StdoutCapture capture;
            dumpSection(root, kDxDiagSystemInfo, file);
            dumpSection(root, kDxDiagDisplayDevices, file); // absent: header only
            out = capture.text();
        }
        QCOMPARE(out, "\n" + kRule + "\nDxDiag_SystemInfo\n" + kRule + "\n" + "\n" + kRule + "\nDxDiag_DisplayDevices\n"
                          + kRule + "\n");
        QCOMPARE(kRule.size(), 38);

        std::rewind(file);
        char buffer[256] = {};
        const std::size_t n = std::fread(buffer, 1, sizeof buffer - 1, file);
        std::fclose(file);
        QCOMPARE(QByteArray(buffer, int(n)),
                 QByteArray("(1 properties)\n     0: szProcessorEnglish: CPU\n(0 child container(s))\n\n"));
    }

    void sectionsNeedTheRoot()
    {
        ContainerSession none(nullptr);
        std::FILE *file = std::tmpfile();
        QByteArray out;
        {
            StdoutCapture capture;
            dumpSections(none, file);
            out = capture.text();
        }
        QVERIFY(out.isEmpty());
        QCOMPARE(std::ftell(file), 0L);
        std::fclose(file);
    }

    void sectionsInOrder()
    {
        auto root = std::make_unique<FakeContainer>();
        root->fakeChild(kDxDiagDisplayDevices).fakeChild("0").addString("szDeviceName", "D");
        root->fakeChild(kDxDiagSystemInfo).addString("szOSExLongEnglish", "OS");
        root->fakeChild("DxDiag_DirectSound").addString("szNotDumped", "x");
        ContainerSession session(std::move(root));
        std::FILE *file = std::tmpfile();
        QByteArray out;
        {
            StdoutCapture capture;
            dumpSections(session, file);
            out = capture.text();
        }
        std::rewind(file);
        char buffer[512] = {};
        const std::size_t n = std::fread(buffer, 1, sizeof buffer - 1, file);
        std::fclose(file);
        const QByteArray dump(buffer, int(n));
        QVERIFY(out.indexOf("DxDiag_SystemInfo") < out.indexOf("DxDiag_DisplayDevices"));
        QVERIFY(dump.indexOf("szOSExLongEnglish") < dump.indexOf("szDeviceName"));
        QVERIFY(!dump.contains("szNotDumped"));
    }

    void errorLineHasNoLineFeed()
    {
        QByteArray out;
        {
            StdoutCapture capture;
            writeDxDiagError("Unable to get root container");
            out = capture.text();
        }
        QCOMPARE(out, QByteArray("\n\nDxDiag Error: Unable to get root container"));
    }

#ifndef Q_OS_WIN
    void linuxReaderWithoutProcessFilesWritesTheErrorLine()
    {
        LinuxMachinePaths paths;
        paths.proc = (TestEnvironment::instance().root() + "/no-proc").toStdString();
        QByteArray out;
        bool hasRoot = true;
        {
            StdoutCapture capture;
            DxDiagReader reader(paths);
            hasRoot = reader.hasRoot();
            out = capture.text();
        }
        QVERIFY(!hasRoot);
        QCOMPARE(out, QByteArray("\n\nDxDiag Error: Unable to read the machine description"));
    }
#endif

    void memoryTreeCanBeWalkedTwice()
    {
        FakeContainer c;
        c.addString("a", "1");
        c.fakeChild("0").addString("b", "2");
        QCOMPARE(dumpToBytes(c), dumpToBytes(c));
    }
};

FB_TEST_MAIN(TestDxDiagDump)
#include "tst_dxdiagdump.moc"
