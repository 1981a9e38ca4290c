// The attachment list's rules without a window: what a drag and a drop take, and how
// an image entry is named on disk.
#include "attachments/attachmentrules.h"
#include "support/testenv.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

class TestAttachmentRules : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir folder;

    QUrl urlOf(const QString &name) const { return QUrl::fromLocalFile(folder.filePath(name)); }

private slots:
    void initTestCase()
    {
        QVERIFY(folder.isValid());
        QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("sub folder")));
        QVERIFY(!writeTestFile(folder.filePath(QStringLiteral("scene.kv"))).isEmpty());
        QVERIFY(!writeTestFile(folder.filePath(QStringLiteral("notes.txt"))).isEmpty());
    }

    void drops()
    {
        const QString scene = folder.filePath(QStringLiteral("scene.kv"));
        const QString notes = folder.filePath(QStringLiteral("notes.txt"));
        const QString missing = folder.filePath(QStringLiteral("missing.bin"));
        const QUrl remote(QStringLiteral("https://example.com/a.png"));

        QCOMPARE(droppedFilePaths({}), QStringList());
        QCOMPARE(droppedFilePaths({urlOf(QStringLiteral("sub folder"))}), QStringList());
        // Folders are skipped; files keep their order; a file that is not there still
        // counts (opening it fails later, with a word to the user).
        QCOMPARE(droppedFilePaths({urlOf(QStringLiteral("notes.txt")), urlOf(QStringLiteral("sub folder")),
                                   urlOf(QStringLiteral("scene.kv")), urlOf(QStringLiteral("missing.bin"))}),
                 (QStringList{notes, scene, missing}));
        // A URL that is no local file names no path at all.
        QCOMPARE(droppedFilePaths({remote}), QStringList(QString()));

        QVERIFY(!dragOffersFiles(false, {urlOf(QStringLiteral("scene.kv"))}));
        QVERIFY(!dragOffersFiles(true, {}));
        QVERIFY(!dragOffersFiles(true, {urlOf(QStringLiteral("sub folder"))}));
        QVERIFY(dragOffersFiles(true, {urlOf(QStringLiteral("sub folder")), urlOf(QStringLiteral("scene.kv"))}));
        QVERIFY(dragOffersFiles(true, {remote}));
    }

    void imageEntryNames_data()
    {
        QTest::addColumn<QString>("given");
        QTest::addColumn<QString>("base");
        QTest::newRow("plain") << "Crash"
                               << "Crash";
        QTest::newRow("ampersand") << "Tom & Jerry"
                                   << "Tom_and_Jerry";
        QTest::newRow("each special once") << "a*b?c$d!e f"
                                           << "a_b_c_d_e_f";
        QTest::newRow("others stay") << "x/y\\z:#%"
                                     << "x/y\\z:#%";
        QTest::newRow("empty") << ""
                               << "";
    }
    void imageEntryNames()
    {
        QFETCH(QString, given);
        QFETCH(QString, base);
        QCOMPARE(imageEntryBaseName(given), base);
    }

    void freePaths()
    {
        const QDir dir(folder.path());
        const QString first = QDir::toNativeSeparators(dir.absoluteFilePath(QStringLiteral("shot.png")));
        QCOMPARE(freeImageEntryPath(dir, QStringLiteral("shot")), first);
        QVERIFY(!writeTestFile(dir.absoluteFilePath(QStringLiteral("shot.png"))).isEmpty());
        QVERIFY(!writeTestFile(dir.absoluteFilePath(QStringLiteral("shot_1.png"))).isEmpty());
        QCOMPARE(freeImageEntryPath(dir, QStringLiteral("shot")),
                 QDir::toNativeSeparators(dir.absoluteFilePath(QStringLiteral("shot_2.png"))));
    }

    void toolTip()
    {
        QCOMPARE(previewToolTip(QStringLiteral("/tmp/a b.png")),
                 QStringLiteral("<html><img src='/tmp/a b.png'/></html>"));
    }
};

FB_TEST_MAIN(TestAttachmentRules)
#include "tst_attachmentrules.moc"
