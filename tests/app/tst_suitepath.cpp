#include "app/suitepath.h"
#include "support/testenv.h"

#include <QApplication>
#include <QDir>
#include <QtTest>

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
        QCOMPARE(QString::fromUtf8(SuitePath(10)), native(TestEnvironment::instance().configHome() + "/Korvane"));
    }

    void settingsFolderHasNoTrailingSeparator()
    {
        QString path;
        {
            ScopedVariable base(kSettingsBaseVariable, TestEnvironment::instance().configHome() + "///");
            path = QString::fromUtf8(SuitePath(10));
        }
        QCOMPARE(path, native(TestEnvironment::instance().configHome() + "/Korvane"));
    }

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

    void unknownKindIsEmpty() { QCOMPARE(QByteArray(SuitePath(7)), QByteArray()); }
};

FB_TEST_MAIN(TestSuitePath)
#include "tst_suitepath.moc"
