// The summary writer over dump text: recorded dumps in data/ and short made-up ones.

#include "sysinfo/systemsummary.h"
#include "sysinfo/sysinfotooltip.h"

#include "fakedxdiag.h"
#include "support/testenv.h"

#include <QApplication>
#include <QtTest>

namespace {

QString data(const QString &name)
{
    return QStringLiteral(FB_TESTS_DIR "/sysinfo/data/") + name;
}

// Reads a recorded dump the way the job reads its file back.
QString summaryOfFile(const QString &name)
{
    QFile file(data(name));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return QStringLiteral("<missing %1>").arg(name);
    QTextStream dump(&file);
    dump.setCodec("UTF-8");
    QString summary;
    QTextStream out(&summary, QIODevice::ReadWrite);
    writeSummaryFields(dump, out);
    out.flush();
    return summary;
}

QString s(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

class TestSummary : public QObject
{
    Q_OBJECT

private slots:
    void twoDisplays()
    {
        QCOMPARE(summaryOfFile("two-displays-dxdiag.txt"),
                 s("{ \"Processor\" : \"Intel%28R%29%20Core%28TM%29%20i7-8700%20CPU%20%40%203.20GHz%20%2812%20CPUs%29"
                   "%2C%20~3.2GHz\", "
                   "\"PhysicalMemory\" : \"32768MB%20RAM\", "
                   "\"DirectXVersion\" : \"DirectX%2012\", "
                   "\"OS\" : \"Windows%2010%20Pro%2064-bit%20%2810.0%2C%20Build%2019045%29%20"
                   "%2819041.vb_release.191206-1406%29\", "
                   "\"Display\" : \"%5C%5C.%5CDISPLAY1; NVIDIA%20Quadro%20P1000; 8067%20MB; "
                   "2560%20x%201440%20%2832%20bit%29%20%2859Hz%29; DELL%20U2719D%20%28DisplayPort%29; "
                   "C%3A%5CWINDOWS%5CSystem32%5CDriverStore%5CFileRepository%5Cnvdm.inf_amd64_3a8e1c2f%5Cnvldumdx.dll"
                   "%2CC%3A%5CWINDOWS%5CSystem32%5CDriverStore%5CFileRepository%5Cnvdm.inf_amd64_3a8e1c2f"
                   "%5Cnvldumdx.dll; 26.21.14.3064\", "
                   "\"Display\" : \"%5C%5C.%5CDISPLAY2; NVIDIA%20Quadro%20P1000; 8067%20MB; "
                   "1920%20x%201080%20%2832%20bit%29%20%2860Hz%29; Generic%20PnP%20Monitor; "
                   "C%3A%5CWINDOWS%5CSystem32%5CDriverStore%5CFileRepository%5Cnvdm.inf_amd64_3a8e1c2f%5Cnvldumdx.dll; "
                   "26.21.14.3064\" }"));
    }

    void wineDumpIsSentAsItStands()
    {
        // Recorded under Wine 8.0 with a virtual X display. Wine puts a stray
        // '= "' before the DirectX version and lists two display properties
        // before the device name; both are sent as the reading rules make them.
        const QString summary = summaryOfFile("wine-dxdiag.txt");
        QCOMPARE(summary, s("{ \"DirectXVersion\" : \"%3D%20%22DirectX%209.0c%20%284.09.0000.0904%29\", "
                            "\"PhysicalMemory\" : \"24105MB%20RAM\", "
                            "\"Processor\" : \"AMD%20EPYC%282%20CPUs%29%2C%20~2596MHz\", "
                            "\"OS\" : \"Windows%20XP%20Professional\", "
                            "\"Display\" : \"%5C%5C.%5CDISPLAY1; 8.21.0013.9135; "
                            "1280%20x%201024%20%2832%20bit%29%20%280Hz%29; 4289.7%20MB; Generic%20PnP%20Monitor\" }"));
        QVERIFY(!summary.contains(QLatin1String("nvd3dum.dll"))); // listed before the device name
        QVERIFY(!summary.contains(QLatin1Char('\r')));
    }

    void linuxDumpOfThisKindOfMachine()
    {
        QCOMPARE(
            summaryOfFile("linux-vm-dxdiag.txt"),
            s("{ \"DirectXVersion\" : \"Not%20available\", \"PhysicalMemory\" : \"24105MB%20RAM\", "
              "\"Processor\" : \"AMD%20EPYC%20%282%20CPUs%29%2C%20~2.6GHz\", "
              "\"OS\" : \"Debian%20GNU%2FLinux%2012%20%28bookworm%29%20%28Linux%206.18.44-fc-v509%20x86_64%29\" }"));
    }

    void emptyDump()
    {
        QCOMPARE(summaryOfFile("empty-dxdiag.txt"), s("{  }"));
        QCOMPARE(summarizeDump(QString()), s("{  }"));
    }

    void displayWithAllPropertiesBeforeItsDeviceName()
    {
        QCOMPARE(summaryOfFile("props-before-device-name-dxdiag.txt"),
                 s("{ \"DirectXVersion\" : \"DirectX%2012\", \"PhysicalMemory\" : \"8192MB%20RAM\", "
                   "\"Processor\" : \"Intel%28R%29%20Core%28TM%29%20i5-8500%20CPU%20%40%203.00GHz%20%286%20CPUs%29"
                   "%2C%20~3.0GHz\", "
                   "\"OS\" : \"Windows%2010%20Home%2064-bit%20%2810.0%2C%20Build%2018362%29%20"
                   "%2818362.19h1_release.190318-1202%29\", "
                   "\"Display\" : \"%5C%5C.%5CDISPLAY1\" }"));
    }

    void leadingDisplaysGetNoSeparator()
    {
        // Display entries never count, so with no system field before them
        // neither the first nor the second gets ", ".
        QCOMPARE(summaryOfFile("displays-only-dxdiag.txt"),
                 s("{ \"Display\" : \"%5C%5C.%5CDISPLAY1; AMD%20Radeon%20Pro%20WX%203100; 26.20.13001.29010\""
                   "\"Display\" : \"%5C%5C.%5CDISPLAY2; AMD%20Radeon%20Pro%20WX%203100; 26.20.13001.29010\" }"));
    }

    void fieldAfterALeadingDisplayGetsNoSeparatorEither()
    {
        const QString dump = s("     0: szDeviceName: D\n"
                               "     1: szDescription: G\n"
                               "(0 child container(s))\n"
                               "     0: szProcessorEnglish: P\n"
                               "     1: szOSExLongEnglish: O\n");
        QCOMPARE(summarizeDump(dump), s("{ \"Display\" : \"D; G\"\"Processor\" : \"P\", \"OS\" : \"O\" }"));
    }

    void displayBetweenFieldsIsSeparated()
    {
        const QString dump = s("     0: szDirectXVersionLongEnglish: X\n"
                               "     0: szDeviceName: D\n"
                               "     1: szMonitorName: M\n"
                               "\n"
                               "     0: szProcessorEnglish: P\n");
        QCOMPARE(summarizeDump(dump),
                 s("{ \"DirectXVersion\" : \"X\", \"Display\" : \"D; M\", \"Processor\" : \"P\" }"));
    }

    void valuesAreTrimmed()
    {
        const QString dump = s("     3: szProcessorEnglish: \t  Intel CPU  \t\n"
                               "     4: szPhysicalMemoryEnglish:    \n"
                               "     5: szDeviceName:   \\\\.\\DISPLAY1   \n"
                               "     6: szDescription:   GPU   \n"
                               "end\n");
        QCOMPARE(summarizeDump(dump), s("{ \"Processor\" : \"Intel%20CPU\", \"PhysicalMemory\" : \"\", "
                                        "\"Display\" : \"%5C%5C.%5CDISPLAY1; GPU\" }"));
    }

    void percentEncoding_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("encoded");
        QTest::newRow("backslash") << s("\\") << s("%5C");
        QTest::newRow("device name") << s("\\\\.\\DISPLAY1") << s("%5C%5C.%5CDISPLAY1");
        QTest::newRow("space") << s("a b") << s("a%20b");
        QTest::newRow("parentheses and comma") << s("(8 CPUs), ~3.6GHz") << s("%288%20CPUs%29%2C%20~3.6GHz");
        QTest::newRow("unreserved kept") << s("AZaz09-._~") << s("AZaz09-._~");
        QTest::newRow("quote and percent") << s("\"100%\"") << s("%22100%25%22");
        QTest::newRow("plus slash colon") << s("a+b/c:d") << s("a%2Bb%2Fc%3Ad");
        QTest::newRow("semicolon") << s("a; b") << s("a%3B%20b");
        QTest::newRow("upper-case hex, UTF-8") << s("\xC3\xA9\xE2\x84\xA2") << s("%C3%A9%E2%84%A2");
        QTest::newRow("place marker text") << s("%1 %2") << s("%251%20%252");
    }

    void percentEncoding()
    {
        QFETCH(QString, value);
        QFETCH(QString, encoded);
        QCOMPARE(summarizeDump(s("     0: szOSExLongEnglish: ") + value + s("\n")),
                 s("{ \"OS\" : \"") + encoded + s("\" }"));
        QCOMPARE(
            summarizeDump(s("     0: szDeviceName: ") + value + s("\n     1: szDriverName: ") + value + s("\nend\n")),
            s("{ \"Display\" : \"") + encoded + s("; ") + encoded + s("\" }"));
    }

    void keysAreFoundAnywhereAndTheFirstInOrderDecides()
    {
        const QString dump = s("xx szOSExLongEnglish: first szProcessorEnglish: second\n"
                               "szProcessorEnglish: at column zero\n"
                               "     0: szOSExLongLocalized: not a key\n"
                               "     0: szosexlongenglish: case matters\n"
                               "     0: szOSExLongEnglish:no space, not a key\n");
        QCOMPARE(summarizeDump(dump), s("{ \"Processor\" : \"second\", \"Processor\" : \"at%20column%20zero\" }"));
        // szProcessorEnglish is tested before szOSExLongEnglish, wherever each stands.
    }

    void keysThatRepeatAreWrittenEachTime()
    {
        const QString dump = s("     0: szPhysicalMemoryEnglish: 1MB RAM\n"
                               "     1: szPhysicalMemoryEnglish: 2MB RAM\n");
        QCOMPARE(summarizeDump(dump), s("{ \"PhysicalMemory\" : \"1MB%20RAM\", \"PhysicalMemory\" : \"2MB%20RAM\" }"));
    }

    void displayKeysInTheirOrder()
    {
        const QString dump = s("     0: szDeviceName: D\n"
                               "     1: szDriverVersion: v szDescription: d\n" // szDescription comes first
                               "     2: szMonitorName: m szDisplayModeEnglish: x\n"
                               "     3: szChipType: not taken\n"
                               "     4: szProcessorEnglish: not a display key\n"
                               "end\n");
        QCOMPARE(summarizeDump(dump), s("{ \"Display\" : \"D; d; x\" }"));
    }

    void lineThatEndsADisplayIsDiscarded()
    {
        // An index of 100000 has no leading blank: the line ends the block and is
        // not tested against the main keys either.
        const QString dump = s("     0: szDeviceName: D\n"
                               "     1: szDescription: G\n"
                               "100000: szProcessorEnglish: dropped\n"
                               "100001: szProcessorEnglish: taken\n");
        QCOMPARE(summarizeDump(dump), s("{ \"Display\" : \"D; G\"\"Processor\" : \"taken\" }"));
    }

    void deviceNameThatEndsADisplayIsDiscarded()
    {
        const QString dump = s("     0: szDeviceName: A\n"
                               "szDeviceName: B\n"
                               "     0: szDeviceName: C\n"
                               "\n");
        QCOMPARE(summarizeDump(dump), s("{ \"Display\" : \"A\"\"Display\" : \"C\" }"));
    }

    void emptyLineEndsADisplay()
    {
        const QString dump = s("     0: szDeviceName: D\n"
                               "\n"
                               "     1: szDescription: G\n"
                               "(0 child container(s))\n");
        QCOMPARE(summarizeDump(dump), s("{ \"Display\" : \"D\" }"));
    }

    void lastLineOfTheDumpIsNotTestedInsideADisplay()
    {
        QCOMPARE(summarizeDump(s("     0: szDeviceName: D\n     1: szDescription: G\n")), s("{ \"Display\" : \"D\" }"));
        QCOMPARE(summarizeDump(s("     0: szDeviceName: D\n     1: szDescription: G")), s("{ \"Display\" : \"D\" }"));
        QCOMPARE(summarizeDump(s("     0: szDeviceName: D")), s("{ \"Display\" : \"D\" }"));
        QCOMPARE(summarizeDump(s("     0: szDeviceName: D\n     1: szDescription: G\n     2: x\n")),
                 s("{ \"Display\" : \"D; G\" }"));
    }

    void failedGetRunsOnInsideADisplay()
    {
        const QString dump =
            s("     0: szDeviceName: D\n"
              "     1: szMonitorMaxRes:      1: GET FAILED: szMonitorMaxRes:      2: szDriverName: drv\n"
              "     3: szDriverVersion: 1.0\n"
              "(0 child container(s))\n");
        QCOMPARE(summarizeDump(dump), s("{ \"Display\" : \"D; drv; 1.0\" }"));
    }

    void crLfLineEnds()
    {
        QCOMPARE(summarizeDump(s("     0: szProcessorEnglish: P\r\n     1: szDeviceName: D\r\n"
                                 "     2: szDescription: G\r\n\r\n")),
                 s("{ \"Processor\" : \"P\", \"Display\" : \"D; G\" }"));
    }

    void readableToolTipOfTheRecordedDumps()
    {
        QCOMPARE(sysInfoToolTipText(summaryOfFile("wine-dxdiag.txt")),
                 s("DirectX version: = \"DirectX 9.0c (4.09.0000.0904)\n"
                   "Physical memory: 24105MB RAM\n"
                   "Processor: AMD EPYC(2 CPUs), ~2596MHz\n"
                   "Operating system: Windows XP Professional\n"
                   "Display: \\\\.\\DISPLAY1; 8.21.0013.9135; 1280 x 1024 (32 bit) (0Hz); 4289.7 MB; "
                   "Generic PnP Monitor"));
        QCOMPARE(sysInfoToolTipText(summaryOfFile("displays-only-dxdiag.txt")),
                 s("Display: \\\\.\\DISPLAY1; AMD Radeon Pro WX 3100; 26.20.13001.29010\n"
                   "Display: \\\\.\\DISPLAY2; AMD Radeon Pro WX 3100; 26.20.13001.29010"));
    }
};

FB_TEST_MAIN(TestSummary)
#include "tst_summary.moc"
