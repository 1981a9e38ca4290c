// The core library links Qt Core, Gui and Network only. Its build cannot include a
// widget's header; this test also finds a reference that came another way (a
// declaration written by hand, a header reached by its full path): every symbol the
// archive needs from outside is compared with what Qt Widgets and Qt D-Bus define.
#include "support/testenv.h"

#include <QProcess>
#include <QSet>
#include <QtTest>

namespace {

// The symbols nm lists for the file with the given options, mangled.
QSet<QByteArray> symbols(const QStringList &options, const QString &file, const QByteArray &types)
{
    QProcess nm;
    nm.start(QStringLiteral(FB_NM), QStringList(options) << QStringLiteral("--format=posix") << file);
    if (!nm.waitForFinished(60000) || nm.exitStatus() != QProcess::NormalExit || nm.exitCode() != 0)
        return {};
    QSet<QByteArray> names;
    // "name type [value size]" per line; an archive adds "member.o[...]:" headings.
    for (const QByteArray &line : nm.readAllStandardOutput().split('\n')) {
        const QList<QByteArray> fields = line.split(' ');
        if (fields.size() >= 2 && fields.at(1).size() == 1 && types.contains(fields.at(1).at(0)))
            names.insert(fields.at(0).split('@').at(0)); // without the version: "@@Qt_5"
    }
    return names;
}

QSet<QByteArray> undefinedIn(const QString &archive)
{
    return symbols({QStringLiteral("--undefined-only")}, archive, "U");
}

// Strong definitions only: weak template instances are defined by every library.
QSet<QByteArray> definedBy(const QString &library)
{
    return symbols({QStringLiteral("--dynamic"), QStringLiteral("--defined-only")}, library, "TDBR");
}

QStringList sortedNames(const QSet<QByteArray> &names)
{
    QStringList list;
    for (const QByteArray &name : names)
        list << QString::fromLatin1(name);
    list.sort();
    return list;
}

} // namespace

class TestCoreLinks : public QObject
{
    Q_OBJECT

    // Each list is read once (nm over the archives and libraries takes a while).
    QSet<QByteArray> coreNeeds;
    QSet<QByteArray> agentNeeds;
    QSet<QByteArray> widgetsDefines;
    QSet<QByteArray> dbusDefines;

private slots:
    void initTestCase()
    {
        coreNeeds = undefinedIn(QStringLiteral(FB_CORE_ARCHIVE));
        agentNeeds = undefinedIn(QStringLiteral(FB_AGENT_ARCHIVE));
        widgetsDefines = definedBy(QStringLiteral(FB_WIDGETS_LIBRARY));
        dbusDefines = definedBy(QStringLiteral(FB_DBUS_LIBRARY));
    }

    void theListsAreRead()
    {
        QVERIFY(widgetsDefines.contains("_ZN7QWidget4showEv"));
        QVERIFY(coreNeeds.contains("_ZN7QObjectD2Ev"));
    }

    // The comparison finds what it looks for: the widgets library needs Qt Widgets and D-Bus.
    void theWidgetLibraryNeedsWidgets()
    {
        QVERIFY(agentNeeds.contains("_ZN7QWidget4showEv"));
        QVERIFY(agentNeeds.intersects(dbusDefines));
    }

    void theCoreNeedsNoWidget() { QCOMPARE(sortedNames(coreNeeds & widgetsDefines), QStringList()); }

    void theCoreNeedsNoDBus() { QCOMPARE(sortedNames(coreNeeds & dbusDefines), QStringList()); }
};

FB_TEST_MAIN(TestCoreLinks)
#include "tst_corelinks.moc"
