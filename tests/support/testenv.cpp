#include "support/testenv.h"

#include "app/processexit.h"
#include "app/settingsbase.h"
#include "sysinfo/gathersysinfo.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMetaMethod>
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
    // Windows names the same folders differently, and takes most of them from the
    // account: only the temporary folder follows its variables. The profile and the
    // application data are the account's (under Wine, the prefix's).
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

// On Windows every test of a run shares the home folder and the suite settings folder.
// The tests that build windows (FB_TEST_BUILDS_WINDOWS, set by the test registration)
// take turns, and each starts and leaves without settings files there, so none sees
// another's.
void TestEnvironment::forgetSharedHomeSettings() const
{
    if (qEnvironmentVariableIsSet("FB_TEST_BUILDS_WINDOWS"))
        forgetSettings();
}

QString TestEnvironment::suiteFolder() const
{
#ifdef Q_OS_WIN
    return QDir::fromNativeSeparators(userSettingsBase()) + "/Korvane";
#else
    return configHome() + "/Korvane";
#endif
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

void setTestHighDpiAttributes()
{
    setHighDpiAttributes();
    if (qgetenv("QT_QPA_PLATFORM") == "offscreen")
        QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::Round);
}

QByteArray currentTestTag(const QObject &tests)
{
    const QMetaObject *meta = tests.metaObject();
    const int index = meta->indexOfMethod(QByteArray(QTest::currentTestFunction()) + "()");
    return index < 0 ? QByteArray() : QByteArray(meta->method(index).tag());
}

int execTests(QObject *testObject, int argc, char **argv)
{
    const int status = QTest::qExec(testObject, argc, argv);
    GatherSysInfo::finishJobsBeforeExit(kEventWaitMs);
    return status;
}

void endTestProcess(int status)
{
    TestEnvironment::instance().tearDown();
    endProcess(status);
}
