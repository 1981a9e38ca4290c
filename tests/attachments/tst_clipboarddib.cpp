// The byte arithmetic of the Windows clipboard reader and writer (attachments/dib.cpp),
// checked on recorded clipboard blocks. The 32-bit and 8-bit blocks are what Wine's
// clipboard made of a 2 x 2 32-bit bitmap and a 3 x 2 8-bit bitmap put there as
// CF_BITMAP; tools/lanes/wine-clipboard.sh runs the same code against the live clipboard.
// Also the Windows paste's detour through a temporary .bmp file, which needs no Win32.
#include "attachments/clipboardbmp.h"
#include "attachments/dib.h"
#include "attachments/imagelimits.h"
#include "support/testenv.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

// The byte blocks below are written one header field per literal.
// clang-format off
namespace {

QByteArray bytes(const std::vector<unsigned char> &v)
{
    return QByteArray(reinterpret_cast<const char *>(v.data()), int(v.size()));
}

std::vector<unsigned char> bmpFor(const QByteArray &block)
{
    return dib::bmpFileFromClipboardBlock(reinterpret_cast<const unsigned char *>(block.constData()),
                                              std::size_t(block.size()));
}

// 2 x 2, 32 bits, BI_BITFIELDS, image size 16, masks behind the header.
const QByteArray kBitfieldsBlock = QByteArray::fromHex(
    "28000000" "02000000" "02000000" "0100" "2000" "03000000" "10000000" "00000000" "00000000" "00000000" "00000000"
    "0000ff00" "00ff0000" "ff000000"
    "102030ff" "405060ff" "708090ff" "a0b0c0ff");

// 3 x 2, 8 bits, BI_RGB, image size 8, a table of 256 colours of which four are used.
QByteArray paletteBlock()
{
    QByteArray block = QByteArray::fromHex("28000000" "03000000" "02000000" "0100" "0800" "00000000" "08000000"
                                           "00000000" "00000000" "00000000" "00000000");
    block += QByteArray::fromHex("00000000" "ff000000" "00ff0000" "0000ff00");
    block += QByteArray(252 * 4, '\0');
    block += QByteArray::fromHex("00010200" "03020100");
    return block;
}

// 2 x 1, 32 bits, BI_RGB, image size 0 (allowed for BI_RGB, so some programs write it).
const QByteArray kZeroSizeBlock = QByteArray::fromHex(
    "28000000" "02000000" "01000000" "0100" "2000" "00000000" "00000000" "00000000" "00000000" "00000000" "00000000"
    "112233ff" "445566ff");

// 3 x 2, 24 bits, BI_RGB, rows padded from 9 to 12 bytes, bottom row first.
const QByteArray kRgb24Block = QByteArray::fromHex(
    "28000000" "03000000" "02000000" "0100" "1800" "00000000" "18000000" "00000000" "00000000" "00000000" "00000000"
    "0000ff" "00ff00" "ff0000" "000000"
    "ffffff" "808080" "102030" "000000");

const QByteArray kFileHeaderPrefix = QByteArray::fromHex("424d"); // "BM"

} // namespace

class TestClipboardDib : public QObject
{
    Q_OBJECT

private slots:
    void bitfieldsMasksBecomePixelBytes()
    {
        QCOMPARE(kBitfieldsBlock.size(), 68);
        const QByteArray file = bytes(bmpFor(kBitfieldsBlock));
        const QByteArray expected = QByteArray::fromHex(
            // file header: type, size 16 + 54, reserved, pixel offset 54
            "424d" "46000000" "00000000" "36000000"
            // the clipboard's 40 header bytes as they were
            "28000000" "02000000" "02000000" "0100" "2000" "03000000" "10000000" "00000000" "00000000" "00000000"
            "00000000"
            // 16 pixel bytes from byte 40: the three masks, then the first pixel
            "0000ff00" "00ff0000" "ff000000" "102030ff");
        QCOMPARE(file.toHex(), expected.toHex());
    }

    void paletteBecomesThePixelBytes()
    {
        const QByteArray block = paletteBlock();
        QCOMPARE(block.size(), 40 + 1024 + 8);
        const QByteArray file = bytes(bmpFor(block));
        const QByteArray expected = QByteArray::fromHex(
            "424d" "3e000000" "00000000" "36000000"
            "28000000" "03000000" "02000000" "0100" "0800" "00000000" "08000000" "00000000" "00000000" "00000000"
            "00000000"
            // the first two colour-table entries, not the pixel indices
            "00000000" "ff000000");
        QCOMPARE(file.toHex(), expected.toHex());
    }

    void zeroImageSizeGivesHeadersOnly()
    {
        const QByteArray file = bytes(bmpFor(kZeroSizeBlock));
        const QByteArray expected = QByteArray::fromHex(
            "424d" "36000000" "00000000" "36000000"
            "28000000" "02000000" "01000000" "0100" "2000" "00000000" "00000000" "00000000" "00000000" "00000000"
            "00000000");
        QCOMPARE(file.toHex(), expected.toHex());
        QImage image;
        QVERIFY(!image.loadFromData(file)); // no picture from it
    }

    void largerHeaderKeepsItsSizeField()
    {
        // A version-5 header (124 bytes): its size field stays, and its last 84 bytes
        // are taken as pixel bytes.
        QByteArray block = QByteArray::fromHex("7c000000" "01000000" "01000000" "0100" "2000" "03000000" "04000000"
                                               "00000000" "00000000" "00000000" "00000000");
        for (int i = 0; i < 84; ++i)
            block += char(0x80 + i);
        block += QByteArray::fromHex("0a0b0c0d");
        const QByteArray file = bytes(bmpFor(block));
        QCOMPARE(file.size(), 58);
        QCOMPARE(file.left(2), kFileHeaderPrefix);
        QCOMPARE(file.mid(2, 4).toHex(), QByteArray("3a000000"));
        QCOMPARE(file.mid(14, 4).toHex(), QByteArray("7c000000"));
        QCOMPARE(file.mid(54).toHex(), QByteArray("80818283"));
    }

    void shortBlocks()
    {
        QVERIFY(bmpFor(QByteArray(39, '\x28')).empty());
        QVERIFY(bmpFor(QByteArray()).empty());
        // Fewer pixel bytes than the image size says: no image.
        QVERIFY(bmpFor(kBitfieldsBlock.left(55)).empty());
        // Exactly as many: the whole file.
        QCOMPARE(int(bmpFor(kBitfieldsBlock.left(56)).size()), 54 + 16);
    }

    // A 40-byte block whose image size says 0xFFFFFF00 bytes: no image (it used to give
    // a 4 GiB file of zeros).
    void imageSizeBeyondTheBlockGivesNoImage()
    {
        QByteArray block = kBitfieldsBlock.left(40);
        block.replace(20, 4, QByteArray::fromHex("00ffffff"));
        QVERIFY(bmpFor(block).empty());
        block += QByteArray(1000, '\x7f');
        QVERIFY(bmpFor(block).empty());
    }

    void pixelBound_data()
    {
        QTest::addColumn<qint64>("width");
        QTest::addColumn<qint64>("height");
        QTest::addColumn<bool>("within");

        QTest::newRow("empty") << qint64(0) << qint64(0) << true;
        QTest::newRow("a screen") << qint64(3840) << qint64(2160) << true;
        QTest::newRow("exactly 2^27") << qint64(16384) << qint64(8192) << true;
        QTest::newRow("2^27 top-down") << qint64(16384) << qint64(-8192) << true;
        QTest::newRow("one row more") << qint64(16384) << qint64(8193) << false;
        QTest::newRow("one column more") << qint64(16385) << qint64(8192) << false;
        QTest::newRow("one pixel high, 2^27 wide") << qint64(1) << (qint64(1) << 27) << true;
        QTest::newRow("one pixel high, 2^27 + 1 wide") << (qint64(1) << 27) + 1 << qint64(1) << false;
        QTest::newRow("largest 32-bit fields") << qint64(INT32_MAX) << qint64(INT32_MAX) << false;
        QTest::newRow("smallest 32-bit fields") << qint64(INT32_MIN) << qint64(INT32_MIN) << false;
    }

    void pixelBound()
    {
        QFETCH(qint64, width);
        QFETCH(qint64, height);
        QTEST(imagelimits::withinPixelBound(width, height), "within");
    }

    // Width and height beyond the bound give no image whatever the image size says; at
    // the bound the file is made as always (here with no pixel bytes: 54 bytes).
    void blockDimensionsBeyondTheBoundGiveNoImage_data()
    {
        QTest::addColumn<QByteArray>("widthField");
        QTest::addColumn<QByteArray>("heightField");
        QTest::addColumn<int>("fileSize");

        QTest::newRow("16384 x 8192") << QByteArray("00400000") << QByteArray("00200000") << 54;
        QTest::newRow("16384 x -8192") << QByteArray("00400000") << QByteArray("00e0ffff") << 54;
        QTest::newRow("16385 x 8192") << QByteArray("01400000") << QByteArray("00200000") << 0;
        QTest::newRow("2^31 - 1 squared") << QByteArray("ffffff7f") << QByteArray("ffffff7f") << 0;
        QTest::newRow("-2^31 squared") << QByteArray("00000080") << QByteArray("00000080") << 0;
    }

    void blockDimensionsBeyondTheBoundGiveNoImage()
    {
        QFETCH(QByteArray, widthField);
        QFETCH(QByteArray, heightField);
        QByteArray block = kZeroSizeBlock;
        block.replace(4, 4, QByteArray::fromHex(widthField));
        block.replace(8, 4, QByteArray::fromHex(heightField));
        QTEST(int(bmpFor(block).size()), "fileSize");
    }

    void headerRoundTrip()
    {
        const QByteArray raw = kBitfieldsBlock.left(40);
        dib::InfoHeader header;
        QVERIFY(dib::readInfoHeader(reinterpret_cast<const unsigned char *>(raw.constData()), 40, header));
        QCOMPARE(header.size, 40u);
        QCOMPARE(header.width, 2);
        QCOMPARE(header.height, 2);
        QCOMPARE(header.planes, quint16(1));
        QCOMPARE(header.bitCount, quint16(32));
        QCOMPARE(header.compression, 3u);
        QCOMPARE(header.sizeImage, 16u);
        QVERIFY(!dib::readInfoHeader(reinterpret_cast<const unsigned char *>(raw.constData()), 39, header));
        header.xPelsPerMeter = -2;
        header.clrImportant = 0x01020304;
        QByteArray written(40, '\xee');
        dib::writeInfoHeader(header, reinterpret_cast<unsigned char *>(written.data()));
        QCOMPARE(written.toHex(), (raw.left(24) + QByteArray::fromHex("feffffff" "00000000" "00000000" "04030201")).toHex());
    }

    // The detour through a temporary file that the Windows paste takes.

    void temporaryBmpName()
    {
        QTemporaryDir folder(TestEnvironment::instance().temp() + "/detour-XXXXXX");
        const QString first = temporaryBmpPath(QDir(folder.path()));
        const QString second = temporaryBmpPath(QDir(folder.path()));
        const QString prefix = QRegularExpression::escape(QDir::toNativeSeparators(folder.path() + "/"));
        const QRegularExpression form("^" + prefix + "\\{[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}\\}\\.bmp$");
        QVERIFY2(form.match(first).hasMatch(), qPrintable(first));
        QVERIFY(form.match(second).hasMatch());
        QVERIFY(first != second);
    }

    void detourLoadsThePictureAndRemovesTheFile()
    {
        QTemporaryDir folder(TestEnvironment::instance().temp() + "/detour-XXXXXX");
        QImage image;
        QVERIFY(loadBmpThroughFile(bmpFor(kRgb24Block), QDir(folder.path()), image));
        QCOMPARE(image.size(), QSize(3, 2));
        QCOMPARE(image.pixel(0, 1), qRgb(0xff, 0x00, 0x00));
        QCOMPARE(image.pixel(1, 1), qRgb(0x00, 0xff, 0x00));
        QCOMPARE(image.pixel(2, 1), qRgb(0x00, 0x00, 0xff));
        QCOMPARE(image.pixel(0, 0), qRgb(0xff, 0xff, 0xff));
        QCOMPARE(image.pixel(1, 0), qRgb(0x80, 0x80, 0x80));
        QCOMPARE(image.pixel(2, 0), qRgb(0x30, 0x20, 0x10));
        QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
    }

    void detourFailedLoadRemovesTheFile()
    {
        QTemporaryDir folder(TestEnvironment::instance().temp() + "/detour-XXXXXX");
        QImage image;
        QVERIFY(!loadBmpThroughFile(bmpFor(kZeroSizeBlock), QDir(folder.path()), image));
        QVERIFY(image.isNull());
        QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
    }

    void detourIntoAMissingFolderFails()
    {
        QImage image;
        const QDir missing(TestEnvironment::instance().temp() + "/no such folder");
        QVERIFY(!loadBmpThroughFile(bmpFor(kRgb24Block), missing, image));
        QVERIFY(image.isNull());
        QVERIFY(!missing.exists());
    }

    // The writer's arithmetic.

    void writerFormatByDepth_data()
    {
        QTest::addColumn<uint>("bitsPerPixel");
        QTest::addColumn<int>("bitCount");
        QTest::addColumn<uint>("tableSize");
        QTest::newRow("0") << 0u << 1 << 8u;
        QTest::newRow("1") << 1u << 1 << 8u;
        QTest::newRow("2") << 2u << 4 << 64u;
        QTest::newRow("4") << 4u << 4 << 64u;
        QTest::newRow("5") << 5u << 8 << 1024u;
        QTest::newRow("8") << 8u << 8 << 1024u;
        QTest::newRow("9") << 9u << 24 << 0u;
        QTest::newRow("16") << 16u << 24 << 0u;
        QTest::newRow("24") << 24u << 24 << 0u;
        QTest::newRow("32") << 32u << 24 << 0u;
    }
    void writerFormatByDepth()
    {
        QFETCH(uint, bitsPerPixel);
        QFETCH(int, bitCount);
        QFETCH(uint, tableSize);
        const dib::DibFormat format = dib::dibFormatFor(bitsPerPixel);
        QCOMPARE(int(format.bitCount), bitCount);
        QCOMPARE(format.colourTableSize, tableSize);
    }

    void imageSizeRoundsRowsTo32Bits_data()
    {
        QTest::addColumn<int>("bitCount");
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::addColumn<uint>("size");
        QTest::newRow("24 bits, 7 x 5") << 24 << 7 << 5 << 120u; // 21 bytes a row, padded to 24
        QTest::newRow("24 bits, 8 x 2") << 24 << 8 << 2 << 48u;
        QTest::newRow("1 bit, 10 x 3") << 1 << 10 << 3 << 12u;
        QTest::newRow("1 bit, 33 x 1") << 1 << 33 << 1 << 8u;
        QTest::newRow("4 bits, 9 x 2") << 4 << 9 << 2 << 16u;
        QTest::newRow("8 bits, 3 x 2") << 8 << 3 << 2 << 8u;
        QTest::newRow("24 bits, 1920 x 1080") << 24 << 1920 << 1080 << 6220800u;
    }
    void imageSizeRoundsRowsTo32Bits()
    {
        QFETCH(int, bitCount);
        QFETCH(int, width);
        QFETCH(int, height);
        QFETCH(uint, size);
        QCOMPARE(dib::dibImageSize(quint16(bitCount), width, height), size);
    }

    void writerHeader()
    {
        const dib::InfoHeader header = dib::infoHeaderForBitmap(640, 480, 32);
        QByteArray written(40, '\xee');
        dib::writeInfoHeader(header, reinterpret_cast<unsigned char *>(written.data()));
        QCOMPARE(written.toHex(), QByteArray::fromHex("28000000" "80020000" "e0010000" "0100" "1800" "00000000"
                                                      "00000000" "00000000" "00000000" "00000000" "00000000")
                                      .toHex());
    }
};

FB_TEST_MAIN(TestClipboardDib)
// clang-format on
#include "tst_clipboarddib.moc"
