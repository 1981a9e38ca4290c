#include "app/suitepath.h"
#include "support/testenv.h"

#include <QDir>
#include <QtTest>

#ifdef Q_OS_WIN
#include <shlobj.h>
#include <windows.h>
#endif

namespace {

// Sets a variable for the life of the object.
class ScopedVariable
{
public:
    ScopedVariable(const char *name, const QString &value)
        : m_name(name)
        , m_saved(qgetenv(name))
    {
        qputenv(name, QDir::toNativeSeparators(value).toLocal8Bit());
    }
    ~ScopedVariable() { qputenv(m_name, m_saved); }
    ScopedVariable(const ScopedVariable &) = delete;
    ScopedVariable &operator=(const ScopedVariable &) = delete;

private:
    const char *m_name;
    QByteArray m_saved;
};

QString native(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

} // namespace

class TestSuitePath : public QObject
{
    Q_OBJECT

private slots:
    void settingsFolderIsUnderTheUsersConfigurationBase()
    {
        QCOMPARE(QString::fromUtf8(SuitePath(10)), native(TestEnvironment::instance().suiteFolder()));
    }

#ifdef Q_OS_WIN
    // The account's roaming application data, as the system names it, whatever the
    // environment says: the variable may be unset, or point elsewhere.
    void settingsFolderComesFromTheSystem_data()
    {
        QTest::addColumn<bool>("unset");
        QTest::addColumn<QString>("variable");
        QTest::newRow("APPDATA unset") << true << QString();
        QTest::newRow("APPDATA elsewhere") << false << TestEnvironment::instance().root() + "/elsewhere";
        QTest::newRow("APPDATA empty") << false << QString();
    }

    void settingsFolderComesFromTheSystem()
    {
        QFETCH(bool, unset);
        QFETCH(QString, variable);
        PWSTR known = nullptr;
        QCOMPARE(SHGetKnownFolderPath(FOLDERID_RoamingAppData, 0, nullptr, &known), S_OK);
        const QString expected = QString::fromWCharArray(known) + "\\Korvane";
        CoTaskMemFree(known);

        const QByteArray saved = qgetenv("APPDATA");
        if (unset)
            qunsetenv("APPDATA");
        else
            qputenv("APPDATA", QDir::toNativeSeparators(variable).toLocal8Bit());
        const QString path = QString::fromUtf8(SuitePath(10));
        qputenv("APPDATA", saved);
        QCOMPARE(path, expected);
    }
#else
    void settingsFolderHasNoTrailingSeparator()
    {
        QString path;
        {
            ScopedVariable base(kSettingsBaseVariable, TestEnvironment::instance().configHome() + "///");
            path = QString::fromUtf8(SuitePath(10));
        }
        QCOMPARE(path, native(TestEnvironment::instance().configHome() + "/Korvane"));
    }

#endif

    void tempFolderIsWritableWithoutTrailingSeparator()
    {
        const QString path = QString::fromUtf8(SuitePath(2));
        QCOMPARE(path, native(TestEnvironment::instance().temp()));
        QFile probe(path + "/probe.txt");
        QVERIFY(probe.open(QIODevice::WriteOnly));
        probe.close();
        QVERIFY(probe.remove());
    }

    void tempFolderThatIsNotThereIsEmpty()
    {
        QByteArray missing;
        {
            ScopedVariable temp(kTempVariable, TestEnvironment::instance().root() + "/no-such-folder");
            missing = SuitePath(2);
        }
        const QString blocker = TestEnvironment::instance().root() + "/a-file";
        QVERIFY(!writeTestFile(blocker).isEmpty());
        QByteArray file;
        {
            ScopedVariable temp(kTempVariable, blocker);
            file = SuitePath(2);
        }
        QCOMPARE(missing, QByteArray());
        QCOMPARE(file, QByteArray());
    }

#ifndef Q_OS_WIN
    void utf8PathsSurvive()
    {
        const QString folder = TestEnvironment::instance().root() + QString::fromUtf8("/conf \xC3\xA9t\xC3\xA9");
        QVERIFY(QDir().mkpath(folder));
        QByteArray path;
        {
            ScopedVariable base(kSettingsBaseVariable, folder);
            path = SuitePath(10);
        }
        QCOMPARE(path, native(folder + "/Korvane").toUtf8());
    }
#endif

    void unknownKindIsEmpty()
    {
        QCOMPARE(QByteArray(SuitePath(7)), QByteArray());
    }
};

FB_TEST_MAIN(TestSuitePath)
#include "tst_suitepath.moc"
