// The machine summary in a temporary folder whose name has letters outside ASCII, as
// the profile folders of many users have, and with names outside Latin-1 in the
// machine's description: the dump is written and read back through the C runtime's
// own file calls, and the summary holds the same letters, percent-encoded as UTF-8.
// On Windows this needs the program's manifest, which makes UTF-8 the process's code
// page; the Windows lane also runs every test under such a profile.

#include "app/suitepath.h"
#include "sysinfo/dxdiagreader.h"
#include "sysinfo/systemsummary.h"

#include "containersession.h"
#include "fakedxdiag.h"
#include "support/testenv.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QUrl>
#include <QtTest>

#include <thread>

namespace {

// Points the temporary folder (SuitePath kind 2) elsewhere while it lives.
class TempFolder
{
public:
    explicit TempFolder(const QString &path)
        : m_saved(qgetenv(kTempVariable))
    {
        qputenv(kTempVariable, QDir::toNativeSeparators(path).toLocal8Bit());
#ifdef Q_OS_WIN
        m_savedTemp = qgetenv("TEMP");
        qputenv("TEMP", QDir::toNativeSeparators(path).toLocal8Bit());
#endif
    }
    ~TempFolder()
    {
        qputenv(kTempVariable, m_saved);
#ifdef Q_OS_WIN
        qputenv("TEMP", m_savedTemp);
#endif
    }
    TempFolder(const TempFolder &) = delete;
    TempFolder &operator=(const TempFolder &) = delete;

private:
    QByteArray m_saved;
    QByteArray m_savedTemp;
};

QString runJob(const DxDiagSessionFactory &factory)
{
    QString summary;
    QTextStream out(&summary, QIODevice::ReadWrite);
    writeSystemSummary(out, factory);
    out.flush();
    return summary;
}

QString encoded(const QString &text)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(text));
}

const QString kProfileTemp = QString::fromUtf8("J\u00fcrgen \u00d1\u00fa\u00f1ez/AppData/Local/Temp");
const QString kJapanese = QString::fromUtf8("\u65e5\u672c\u8a9e\u306e\u30e2\u30cb\u30bf\u30fc");
const QString kCyrillic = QString::fromUtf8("\u0412\u0438\u0434\u0435\u043e\u043a\u0430\u0440\u0442\u0430");

} // namespace

class TestSummaryFolders : public QObject
{
    Q_OBJECT

private:
    QString folder;

private slots:
    void initTestCase()
    {
        folder = TestEnvironment::instance().root() + "/" + kProfileTemp;
        QVERIFY(QDir().mkpath(folder));
    }

    void dumpPathIsTheFoldersOwn()
    {
        TempFolder temp(folder);
        QCOMPARE(QString::fromUtf8(sysInfoDumpPath()), QDir::toNativeSeparators(folder) + "/kvfba_dxdiag.txt");
    }

    void namesOutsideLatin1ReadBackTheSame()
    {
        QString summary;
        {
            TempFolder temp(folder);
            StdoutCapture capture;
            summary = runJob([] {
                auto root = std::make_unique<FakeContainer>();
                FakeContainer &system = root->fakeChild(kDxDiagSystemInfo);
                system.addString("szOSExLongEnglish", "Windows 11 Pro 64-bit");
                FakeContainer &display = root->fakeChild(kDxDiagDisplayDevices).fakeChild("0");
                display.addString("szDeviceName", "\\\\.\\DISPLAY1");
                display.addString("szDescription", kCyrillic.toStdString());
                display.addString("szMonitorName", kJapanese.toStdString());
                return std::make_unique<ContainerSession>(std::move(root));
            });
        }
        QCOMPARE(summary, "{ \"OS\" : \"Windows%2011%20Pro%2064-bit\", \"Display\" : \"%5C%5C.%5CDISPLAY1; "
                              + encoded(kCyrillic) + "; " + encoded(kJapanese) + "\" }");
        QVERIFY(summary.contains("%D0%92%D0%B8%D0%B4%D0%B5%D0%BE")); // UTF-8, as the server reads it
        QVERIFY(!QFileInfo::exists(folder + "/kvfba_dxdiag.txt"));
    }

    // A program whose window has closed may still be finishing its job when the user
    // starts the next one: the second job leaves the first one's dump alone, and goes
    // on once the first is done.
    void aSecondProgramLeavesTheFirstOnesDumpAlone()
    {
        TempFolder temp(folder);
        const QString dump = QString::fromUtf8(sysInfoDumpPath());
        QLockFile firstProgram(dump + ".lock");
        QVERIFY(firstProgram.lock());
        QVERIFY(!writeTestFile(dump, "     0: szOSExLongEnglish: the first program's\n").isEmpty());
        const auto machine = [] {
            auto root = std::make_unique<FakeContainer>();
            root->fakeChild(kDxDiagSystemInfo).addString("szOSExLongEnglish", "the second program's");
            return std::make_unique<ContainerSession>(std::move(root));
        };

        // Still held when the wait runs out: no summary, and the dump as it was.
        QString summary;
        QTextStream out(&summary, QIODevice::ReadWrite);
        writeSystemSummary(out, machine, 200);
        out.flush();
        QCOMPARE(summary, QString());
        QCOMPARE(readAll(dump), QByteArray("     0: szOSExLongEnglish: the first program's\n"));

        // Let go while the second job waits: it goes on, with its own dump.
        QString later;
        std::thread second([&] {
            QTextStream laterOut(&later, QIODevice::ReadWrite);
            writeSystemSummary(laterOut, machine);
            laterOut.flush();
        });
        QFile::remove(dump); // the first program's job ends as jobs end
        firstProgram.unlock();
        second.join();
        QCOMPARE(later, QString("{ \"OS\" : \"the%20second%20program%27s\" }"));
        QVERIFY(!QFileInfo::exists(dump));
        QVERIFY(!QFileInfo::exists(dump + ".lock"));
    }

    // The machine's own reader: the DirectX diagnostics provider on Windows, /proc and
    // /sys on Linux.
    void machineReaderUnderTheFolder()
    {
        QString summary;
        {
            TempFolder temp(folder);
            StdoutCapture capture;
            summary = runJob(makeDxDiagReader);
        }
        QVERIFY2(summary.startsWith("{ ") && summary.endsWith(" }"), qPrintable(summary));
        QVERIFY2(summary.contains("\"OS\" : \""), qPrintable(summary));
        QVERIFY2(summary.contains("\"Processor\" : \""), qPrintable(summary));
        QVERIFY(!QFileInfo::exists(folder + "/kvfba_dxdiag.txt"));
    }
};

FB_TEST_MAIN(TestSummaryFolders)
#include "tst_summaryfolders.moc"
