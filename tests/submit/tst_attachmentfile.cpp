// The file behind an attachment's part: read whole and unbuffered, with the size it had
// when it was opened, which is the size the request announced.
#include "submit/attachmentfile.h"
#include "support/testenv.h"
#include "support/unreadablefile.h"

#include <QTemporaryDir>
#include <QtTest>

class TestAttachmentFile : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir folder;

    QString writeFile(const QString &name, const QByteArray &bytes)
    {
        const QString path = folder.filePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            return QString();
        return path;
    }

private slots:
    void readsEveryByteUnbuffered_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("chunk");
        QTest::newRow("empty") << 0 << 16384;
        QTest::newRow("one byte") << 1 << 16384;
        QTest::newRow("smaller than a chunk") << 1000 << 16384;
        QTest::newRow("exactly one chunk") << 16384 << 16384;
        QTest::newRow("chunk and a byte") << 16385 << 16384;
        QTest::newRow("odd chunks") << 100000 << 777;
    }
    void readsEveryByteUnbuffered()
    {
        QFETCH(int, size);
        QFETCH(int, chunk);
        QByteArray bytes(size, Qt::Uninitialized);
        for (int i = 0; i < size; ++i)
            bytes[i] = char((i * 131 + 7) & 0xFF);
        const QString path = writeFile(QStringLiteral("data.bin"), bytes);
        QVERIFY(!path.isEmpty());

        AttachmentFile file(path);
        QVERIFY(file.openForSending());
        QCOMPARE(file.openMode(), QIODevice::ReadOnly | QIODevice::Unbuffered);
        QCOMPARE(file.size(), qint64(size));
        QByteArray read;
        QByteArray buffer(chunk, '\0');
        qint64 got = 0;
        while ((got = file.read(buffer.data(), chunk)) > 0)
            read.append(buffer.constData(), int(got));
        QCOMPARE(got, qint64(0));
        QVERIFY(file.atEnd());
        QCOMPARE(read, bytes);
    }

    void sizeIsTheOneAtOpen()
    {
        const QString path = writeFile(QStringLiteral("growing.bin"), QByteArray(5000, 'a'));
        QVERIFY(!path.isEmpty());
        AttachmentFile file(path);
        QCOMPARE(file.size(), qint64(5000)); // not open: the file's own size
        QVERIFY(file.openForSending());

        QFile writer(path);
        QVERIFY(writer.open(QIODevice::Append));
        QCOMPARE(writer.write(QByteArray(3000, 'b')), qint64(3000));
        writer.close();

        // What grew since stays out: the part keeps the length its headers announced.
        QCOMPARE(file.size(), qint64(5000));
        QCOMPARE(file.readAll(), QByteArray(5000, 'a'));
        QVERIFY(file.atEnd());
        file.close();
        QCOMPARE(file.size(), qint64(8000)); // closed: the file's own size again
    }

    void missingOrUnreadableFileDoesNotOpen()
    {
        AttachmentFile missing(folder.filePath(QStringLiteral("missing.bin")));
        QVERIFY(!missing.openForSending());
        QVERIFY(!missing.isOpen());

        const QString path = writeFile(QStringLiteral("locked.bin"), QByteArray("secret"));
        QVERIFY(!path.isEmpty());
        UnreadableFile lock(path);
        QVERIFY(lock.ok());
        AttachmentFile locked(path);
        QVERIFY(!locked.openForSending());
        QVERIFY(!locked.isOpen());
    }
};

FB_TEST_MAIN(TestAttachmentFile)
#include "tst_attachmentfile.moc"
