#include "app/suitepath.h"
#include "support/testenv.h"

#include <QApplication>
#include <QDir>
#include <QtTest>

class TestSuitePath : public QObject
{
    Q_OBJECT

private slots:
    void settingsFolderFollowsXdgConfigHome()
    {
        QCOMPARE(QString::fromUtf8(SuitePath(10)), TestEnvironment::instance().configHome() + "/Korvane");
    }

    void settingsFolderHasNoTrailingSeparator()
    {
        const QByteArray saved = qgetenv("XDG_CONFIG_HOME");
        qputenv("XDG_CONFIG_HOME", (TestEnvironment::instance().configHome() + "///").toLocal8Bit());
        const QString path = QString::fromUtf8(SuitePath(10));
        qputenv("XDG_CONFIG_HOME", saved);
        QCOMPARE(path, TestEnvironment::instance().configHome() + "/Korvane");
    }

    void tempFolderIsWritableWithoutTrailingSeparator()
    {
        const QString path = QString::fromUtf8(SuitePath(2));
        QCOMPARE(path, TestEnvironment::instance().temp());
        QFile probe(path + "/probe.txt");
        QVERIFY(probe.open(QIODevice::WriteOnly));
        probe.close();
        QVERIFY(probe.remove());
    }

    void tempFolderThatIsNotThereIsEmpty()
    {
        const QByteArray saved = qgetenv("TMPDIR");
        qputenv("TMPDIR", (TestEnvironment::instance().root() + "/no-such-folder").toLocal8Bit());
        const QByteArray missing(SuitePath(2));
        const QString blocker = TestEnvironment::instance().root() + "/a-file";
        QVERIFY(!writeTestFile(blocker).isEmpty());
        qputenv("TMPDIR", blocker.toLocal8Bit());
        const QByteArray file(SuitePath(2));
        qputenv("TMPDIR", saved);
        QCOMPARE(missing, QByteArray());
        QCOMPARE(file, QByteArray());
    }

    void utf8PathsSurvive()
    {
        const QString folder = TestEnvironment::instance().root() + QString::fromUtf8("/conf \xC3\xA9t\xC3\xA9");
        QVERIFY(QDir().mkpath(folder));
        const QByteArray saved = qgetenv("XDG_CONFIG_HOME");
        qputenv("XDG_CONFIG_HOME", folder.toLocal8Bit());
        const QByteArray path(SuitePath(10));
        qputenv("XDG_CONFIG_HOME", saved);
        QCOMPARE(path, (folder + "/Korvane").toUtf8());
    }

    void unknownKindIsEmpty()
    {
        QCOMPARE(QByteArray(SuitePath(7)), QByteArray());
    }
};

FB_TEST_MAIN(TestSuitePath)
#include "tst_suitepath.moc"
