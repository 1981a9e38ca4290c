#include "support/testenv.h"

#include "app/processexit.h"
#include "sysinfo/gathersysinfo.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

TestEnvironment::TestEnvironment()
    : m_root(QDir::tempPath() + "/fbtest-XXXXXX")
{
    const QString base = m_root.path();
    for (const char *sub : {"home", "config", "data", "cache", "tmp", "runtime"})
        QDir().mkpath(base + "/" + sub);
    QFile::setPermissions(base + "/runtime", QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    qputenv("HOME", (base + "/home").toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (base + "/config").toLocal8Bit());
    qputenv("XDG_DATA_HOME", (base + "/data").toLocal8Bit());
    qputenv("XDG_CACHE_HOME", (base + "/cache").toLocal8Bit());
    qputenv("XDG_RUNTIME_DIR", (base + "/runtime").toLocal8Bit());
    qputenv("TMPDIR", (base + "/tmp").toLocal8Bit());
#ifdef Q_OS_WIN
    // Windows names the same folders differently: the profile, the roaming and local
    // application data (the suite keeps its settings under %APPDATA%) and the
    // temporary folder.
    qputenv("USERPROFILE", QDir::toNativeSeparators(base + "/home").toLocal8Bit());
    qputenv("APPDATA", QDir::toNativeSeparators(base + "/config").toLocal8Bit());
    qputenv("LOCALAPPDATA", QDir::toNativeSeparators(base + "/data").toLocal8Bit());
    qputenv("TMP", QDir::toNativeSeparators(base + "/tmp").toLocal8Bit());
    qputenv("TEMP", QDir::toNativeSeparators(base + "/tmp").toLocal8Bit());
    m_home = QDir::homePath();
    forgetSharedHomeSettings();
#else
    m_home = base + "/home";
#endif
}

TestEnvironment::~TestEnvironment()
{
    tearDown();
}

void TestEnvironment::tearDown()
{
#ifdef Q_OS_WIN
    forgetSharedHomeSettings();
#endif
    if (QFileInfo::exists(m_root.path()))
        m_root.remove();
}

// On Windows every test of a run shares the home folder. The tests that build windows
// (FB_TEST_BUILDS_WINDOWS, set by the test registration) take turns, and each starts
// and leaves without the old settings file there, so none sees another's.
void TestEnvironment::forgetSharedHomeSettings() const
{
    if (qEnvironmentVariableIsSet("FB_TEST_BUILDS_WINDOWS"))
        QFile::remove(oldSettingsFile());
}

TestEnvironment &TestEnvironment::instance()
{
    static TestEnvironment environment;
    return environment;
}

QString TestEnvironment::settingsFile() const
{
    return QDir::toNativeSeparators(suiteFolder() + "/feedbackagent.cfg");
}

QString TestEnvironment::oldSettingsFile() const
{
    return QDir::toNativeSeparators(home() + "/.fbagent");
}

void TestEnvironment::forgetSettings() const
{
    QFile::remove(settingsFile());
    QFile::remove(oldSettingsFile());
}

QString writeTestFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return QString();
    file.write(content);
    return QFileInfo(path).absoluteFilePath();
}

int execTests(QObject *testObject, int argc, char **argv)
{
    return execTests(std::vector<QObject *>{testObject}, argc, argv);
}

namespace {

// The file of a "-o file[,format]" argument: every run of QtTest would start it anew.
QString logFileOf(const QString &output)
{
    const int comma = output.lastIndexOf(QLatin1Char(','));
    return comma > 0 && !output.mid(comma).contains(QLatin1Char('/')) ? output.left(comma) : output;
}

// Runs one more test object with its log, if one is named, written beside the first
// one's and then appended to it, so that the log keeps every object's results.
int execFollowingTests(QObject *testObject, int argc, char **argv)
{
    QList<QByteArray> args;
    for (int i = 0; i < argc; ++i)
        args << QByteArray(argv[i]);
    const int flag = args.indexOf("-o");
    if (flag < 0 || flag + 1 >= args.size())
        return QTest::qExec(testObject, argc, argv);
    const QString output = QString::fromLocal8Bit(args.at(flag + 1));
    const QString log = logFileOf(output);
    const QString part = log + ".part";
    args[flag + 1] = (part + output.mid(log.size())).toLocal8Bit();
    std::vector<char *> partArgv;
    for (QByteArray &arg : args)
        partArgv.push_back(arg.data());
    const int status = QTest::qExec(testObject, argc, partArgv.data());
    QFile in(part);
    QFile out(log);
    if (in.open(QIODevice::ReadOnly) && out.open(QIODevice::Append))
        out.write(in.readAll());
    in.remove();
    return status;
}

} // namespace

int execTests(const std::vector<QObject *> &testObjects, int argc, char **argv)
{
    int status = 0;
    for (size_t i = 0; i < testObjects.size(); ++i) {
        const int objectStatus =
            i == 0 ? QTest::qExec(testObjects[i], argc, argv) : execFollowingTests(testObjects[i], argc, argv);
        if (status == 0)
            status = objectStatus;
    }
    GatherSysInfo::finishJobsBeforeExit(kEventWaitMs);
    return status;
}

void endTestProcess(int status)
{
    TestEnvironment::instance().tearDown();
    endProcess(status);
}

void runTestProgram(int argc, char **argv, const std::vector<TestMaker> &makers)
{
    TestEnvironment::instance();
    int status = 0;
    {
        QApplication app(argc, argv);
        app.setAttribute(Qt::AA_Use96Dpi, true);
        std::vector<std::unique_ptr<QObject>> tests;
        std::vector<QObject *> objects;
        for (TestMaker make : makers) {
            tests.push_back(make());
            objects.push_back(tests.back().get());
        }
        status = execTests(objects, argc, argv);
    }
    endTestProcess(status);
}
