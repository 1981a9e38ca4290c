// The worker's job with its dump file: the normal run and each failure, made to
// happen for real: a dump folder that cannot exist, a provider that fails, an
// exception in the middle of the walk, and a dump that cannot be opened again.

#include "app/suitepath.h"
#include "sysinfo/dxdiagreader.h"
#include "sysinfo/gathersysinfo.h"
#include "sysinfo/linuxmachine.h"
#include "sysinfo/systemsummary.h"

#include "containersession.h"
#include "fakedxdiag.h"
#include "support/testenv.h"

#include <QDir>
#include <QFileInfo>
#include <QSignalSpy>
#include <QtTest>

#include <stdexcept>

namespace {

QString dumpFile()
{
    return TestEnvironment::instance().temp() + "/kvfba_dxdiag.txt";
}

// A small tree shaped like the provider's: both sections, one display.
std::unique_ptr<FakeContainer> machineTree()
{
    auto root = std::make_unique<FakeContainer>();
    FakeContainer &system = root->fakeChild(kDxDiagSystemInfo);
    system.addUInt32("dwOSMajorVersion", 10);
    system.addString("szProcessorEnglish", "CPU (4 CPUs), ~3.0GHz");
    system.addString("szPhysicalMemoryEnglish", "16384MB RAM");
    system.addString("szOSExLongEnglish", "Windows 10 Pro 64-bit");
    system.addString("szDirectXVersionLongEnglish", "DirectX 12");
    FakeContainer &display = root->fakeChild(kDxDiagDisplayDevices).fakeChild("0");
    display.addString("szDeviceName", "\\\\.\\DISPLAY1");
    display.addString("szDescription", "GPU");
    display.addBool("b3DAccelerationEnabled", true);
    return root;
}

const char kMachineSummary[] = "{ \"Processor\" : \"CPU%20%284%20CPUs%29%2C%20~3.0GHz\", "
                               "\"PhysicalMemory\" : \"16384MB%20RAM\", \"OS\" : \"Windows%2010%20Pro%2064-bit\", "
                               "\"DirectXVersion\" : \"DirectX%2012\", \"Display\" : \"%5C%5C.%5CDISPLAY1; GPU\" }";

QString runJob(const DxDiagSessionFactory &factory)
{
    QString summary;
    QTextStream out(&summary, QIODevice::ReadWrite);
    writeSystemSummary(out, factory);
    out.flush();
    return summary;
}

// Points the temporary folder (SuitePath kind 2) elsewhere while it lives.
class TempFolder
{
public:
    explicit TempFolder(const QByteArray &path)
        : m_saved(qgetenv("TMPDIR"))
    {
        qputenv("TMPDIR", path);
    }
    ~TempFolder() { qputenv("TMPDIR", m_saved); }

private:
    QByteArray m_saved;
};

} // namespace

class TestSummaryJob : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QFile::remove(dumpFile());
        QVERIFY(!QFileInfo::exists(dumpFile()));
    }

    void dumpFileIsInTheTemporarySuiteFolder()
    {
        QCOMPARE(QString::fromUtf8(sysInfoDumpPath()), QString::fromUtf8(SuitePath(2)) + "/kvfba_dxdiag.txt");
        QCOMPARE(QString::fromUtf8(sysInfoDumpPath()), dumpFile());
    }

    void normalRunReadsTheDumpBackAndRemovesIt()
    {
        QByteArray seen;
        QByteArray out;
        QString summary;
        {
            StdoutCapture capture;
            summary = runJob([&seen] {
                auto root = machineTree();
                // Look at the file while the walk is on: it exists and is being written.
                root->findChild(kDxDiagSystemInfo)->addString("szLast", "x");
                static_cast<FakeContainer *>(root->findChild(kDxDiagSystemInfo))->beforeGet =
                    [&seen](const std::string &name) {
                        if (name == "szLast")
                            seen = QFileInfo::exists(dumpFile()) ? "exists" : "missing";
                    };
                return std::make_unique<ContainerSession>(std::move(root));
            });
            out = capture.text();
        }
        QCOMPARE(summary, QString::fromUtf8(kMachineSummary));
        QCOMPARE(seen, QByteArray("exists"));
        QVERIFY(!QFileInfo::exists(dumpFile()));
        QVERIFY(out.contains("\nDxDiag_SystemInfo\n"));
        QVERIFY(out.contains("\nDxDiag_DisplayDevices\n"));
    }

    void oldDumpIsTruncated()
    {
        QFile old(dumpFile());
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write("     0: szOSExLongEnglish: left over from a crash\n");
        old.close();
        QString summary;
        {
            StdoutCapture capture;
            summary = runJob([] { return std::make_unique<ContainerSession>(machineTree()); });
        }
        QCOMPARE(summary, QString::fromUtf8(kMachineSummary));
        QVERIFY(!QFileInfo::exists(dumpFile()));
    }

    void dumpFileCannotBeCreated_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("dumpPath");
        // As root no permission stops fopen, so the file is made impossible.
        // A folder that does not exist, here below a regular file: SuitePath
        // then gives no folder at all.
        const QString blocker = TestEnvironment::instance().root() + "/not-a-folder";
        QTest::newRow("folder below a file") << blocker + "/sub" << QString("/kvfba_dxdiag.txt");
        // A file system that takes no new files.
        QTest::newRow("folder on /proc") << QString("/proc") << QString("/proc/kvfba_dxdiag.txt");
        // A folder of the dump file's name is in the way.
        QTest::newRow("dump name taken by a folder")
            << TestEnvironment::instance().temp() << TestEnvironment::instance().temp() + "/kvfba_dxdiag.txt";
    }

    void dumpFileCannotBeCreated()
    {
        QFETCH(QString, folder);
        QFETCH(QString, dumpPath);
        const QString blocker = TestEnvironment::instance().root() + "/not-a-folder";
        QFile file(blocker);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        QVERIFY(QDir().mkpath(dumpFile()));
        const bool rootHadDump = QFileInfo::exists("/kvfba_dxdiag.txt");
        TempFolder temp(QFile::encodeName(folder));
        QCOMPARE(QString::fromUtf8(sysInfoDumpPath()), dumpPath);

        bool readerMade = false;
        QByteArray out;
        QString summary;
        {
            StdoutCapture capture;
            summary = runJob([&readerMade] {
                readerMade = true;
                return std::make_unique<ContainerSession>(machineTree());
            });
            out = capture.text();
        }
        QVERIFY(summary.isEmpty());
        QVERIFY(!readerMade);
        QVERIFY(out.isEmpty());
        QCOMPARE(QFileInfo::exists("/kvfba_dxdiag.txt"), rootHadDump);

        // The worker itself: results is still emitted, once, with the empty summary.
        GatherSysInfo worker;
        QStringList order;
        connect(&worker, &GatherSysInfo::results, this, [&order](const QString &info) { order << "results:" + info; });
        connect(&worker, &GatherSysInfo::finished, this, [&order] { order << "finished"; });
        worker.process();
        QCOMPARE(order, QStringList({"results:", "finished"}));
        QVERIFY(QFileInfo(dumpFile()).isDir()); // the folder in the way stays
        QVERIFY(QDir().rmdir(dumpFile()));
    }

    void providerCannotBeCreated()
    {
        QByteArray out;
        QString summary;
        {
            StdoutCapture capture;
            summary =
                runJob([] { return std::make_unique<FailedProviderSession>("Unable to create provider instance"); });
            out = capture.text();
        }
        QCOMPARE(summary, QString("{  }"));
        QVERIFY(!summary.isEmpty());
        QCOMPARE(out, QByteArray("\n\nDxDiag Error: Unable to create provider instance"));
        QVERIFY(!QFileInfo::exists(dumpFile()));
    }

    void machineReaderThatFindsNothingToDescribe()
    {
        // The Linux reader fails like the provider does when the process files are missing.
        LinuxMachinePaths paths;
        paths.proc = (TestEnvironment::instance().root() + "/no-proc").toStdString();
        QByteArray out;
        QString summary;
        {
            StdoutCapture capture;
            summary = runJob([&paths] { return std::make_unique<DxDiagReader>(paths); });
            out = capture.text();
        }
        QCOMPARE(summary, QString("{  }"));
        QCOMPARE(out, QByteArray("\n\nDxDiag Error: Unable to read the machine description"));
        QVERIFY(!QFileInfo::exists(dumpFile()));
    }

    void failedProviderLeavesTheDumpFileEmpty()
    {
        // What the job does up to reading back, with the file left to look at.
        const QByteArray path = sysInfoDumpPath();
        std::FILE *file = std::fopen(path.constData(), "w");
        QVERIFY(file);
        QByteArray out;
        {
            StdoutCapture capture;
            {
                FailedProviderSession reader("Unable to initialize provider");
                dumpSections(reader, file);
            }
            std::fclose(file);
            out = capture.text();
        }
        QCOMPARE(QFileInfo(dumpFile()).size(), 0);
        QVERIFY(QFileInfo::exists(dumpFile()));
        QCOMPARE(out, QByteArray("\n\nDxDiag Error: Unable to initialize provider"));
    }

    void exceptionDuringTheDumpLeavesTheFile()
    {
        bool destroyed = false;
        struct Guarded : ContainerSession
        {
            bool *flag;
            Guarded(std::unique_ptr<DxDiagContainer> root, bool *f)
                : ContainerSession(std::move(root))
                , flag(f)
            {
            }
            ~Guarded() override { *flag = true; }
        };
        QString summary;
        {
            StdoutCapture capture;
            summary = runJob([&destroyed] {
                auto root = machineTree();
                FakeContainer *display =
                    static_cast<FakeContainer *>(root->findChild(kDxDiagDisplayDevices)->findChild("0"));
                display->beforeGet = [](const std::string &name) {
                    if (name == "szDescription")
                        throw std::runtime_error("provider went away");
                };
                return std::make_unique<Guarded>(std::move(root), &destroyed);
            });
        }
        QVERIFY(summary.isEmpty());
        QVERIFY(destroyed); // the reader is released on the way out
        QVERIFY(QFileInfo::exists(dumpFile()));
        // The file holds what was written before the exception, complete up to it.
        const QByteArray left = readAll(dumpFile());
        QVERIFY(left.contains("szProcessorEnglish: CPU (4 CPUs), ~3.0GHz\n"));
        QVERIFY(left.endsWith("     0: szDeviceName: \\\\.\\DISPLAY1\n     1: szDescription: "));
    }

    void dumpThatVanishesCannotBeReopened()
    {
        // Something removes the file while it is written: fclose still succeeds,
        // the read-back open does not.
        QString summary;
        {
            StdoutCapture capture;
            summary = runJob([] {
                auto root = machineTree();
                static_cast<FakeContainer *>(root->findChild(kDxDiagSystemInfo))->beforeGet =
                    [](const std::string &name) {
                        if (name == "szOSExLongEnglish")
                            QFile::remove(dumpFile());
                    };
                return std::make_unique<ContainerSession>(std::move(root));
            });
        }
        QVERIFY(summary.isEmpty());
        QVERIFY(!QFileInfo::exists(dumpFile()));
    }

    void dumpReplacedByALinkLoopIsRemoved()
    {
        // The path turns into a symbolic link to itself while the dump is written:
        // opening it fails (too many levels of links) and the job removes the link.
        QString summary;
        {
            StdoutCapture capture;
            summary = runJob([] {
                auto root = machineTree();
                static_cast<FakeContainer *>(root->findChild(kDxDiagSystemInfo))->beforeGet =
                    [](const std::string &name) {
                        if (name != "szOSExLongEnglish")
                            return;
                        QFile::remove(dumpFile());
                        QFile::link(dumpFile(), dumpFile());
                    };
                return std::make_unique<ContainerSession>(std::move(root));
            });
        }
        QVERIFY(summary.isEmpty());
        QVERIFY(!QFileInfo(dumpFile()).isSymLink());
        QVERIFY(!QFileInfo::exists(dumpFile()));
    }

    void machineReaderRunsTheWholeJob()
    {
        QByteArray out;
        QString summary;
        {
            StdoutCapture capture;
            summary = runJob(makeDxDiagReader);
            out = capture.text();
        }
        QVERIFY2(summary.startsWith("{ \"DirectXVersion\" : \""), qPrintable(summary));
        QVERIFY(summary.contains("\"PhysicalMemory\" : \""));
        QVERIFY(summary.contains("\"Processor\" : \""));
        QVERIFY(summary.contains("\"OS\" : \""));
        QVERIFY(summary.endsWith(" }"));
        QVERIFY(!summary.contains('\n'));
        QVERIFY(!QFileInfo::exists(dumpFile()));
        QCOMPARE(out.count(QByteArray(38, '-')), 4);
    }

    void processEmitsResultsOnceThenFinished()
    {
        GatherSysInfo worker;
        QSignalSpy results(&worker, SIGNAL(results(const QString &)));
        QSignalSpy finished(&worker, SIGNAL(finished()));
        QSignalSpy error(&worker, SIGNAL(error(const QString &)));
        QStringList order;
        connect(&worker, &GatherSysInfo::results, this, [&order, &finished] {
            order << QStringLiteral("results (finished so far: %1)").arg(finished.count());
        });
        connect(&worker, &GatherSysInfo::finished, this, [&order] { order << "finished"; });
        {
            StdoutCapture capture;
            worker.process();
        }
        QCOMPARE(results.count(), 1);
        QCOMPARE(finished.count(), 1);
        QCOMPARE(error.count(), 0);
        QCOMPARE(order, QStringList({"results (finished so far: 0)", "finished"}));
        QVERIFY(results.at(0).at(0).toString().startsWith("{ \"DirectXVersion\""));
    }

    void signalsInTheirOrder()
    {
        const QMetaObject &mo = GatherSysInfo::staticMetaObject;
        const int base = mo.methodOffset();
        QCOMPARE(mo.methodCount() - base, 4);
        QCOMPARE(mo.method(base + 0).methodSignature(), QByteArray("finished()"));
        QCOMPARE(mo.method(base + 1).methodSignature(), QByteArray("results(QString)"));
        QCOMPARE(mo.method(base + 2).methodSignature(), QByteArray("error(QString)"));
        QCOMPARE(mo.method(base + 3).methodSignature(), QByteArray("process()"));
        QCOMPARE(mo.method(base + 3).methodType(), QMetaMethod::Slot);
    }
};

FB_TEST_MAIN(TestSummaryJob)
#include "tst_summaryjob.moc"
