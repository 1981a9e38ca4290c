// The X11 clipboard in both directions against xclip on a real X server: a copied
// picture reaches another program as PNG, and a PNG another program owns is read.
#include "attachmentcheck.h"
#include "attachments/clipboard.h"
#include "support/testenv.h"
#include "xclip.h"

#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <QWidget>
#include <QtTest>

using namespace attachmentcheck;

class TestClipboardXclip : public QObject
{
    Q_OBJECT

private:
    Xclip xclip;
    QWidget owner;

private slots:
    void initTestCase()
    {
        QCOMPARE(QGuiApplication::platformName(), QString("xcb"));
        bool ok = false;
        Xclip::run({"-version"}, &ok);
        QVERIFY2(ok, "xclip is not installed");
    }

    void cleanup()
    {
        xclip.stopServing();
        QGuiApplication::clipboard()->clear();
    }

    void copiedPixmapReachesXclipAsPng()
    {
        const QImage image = patternImage(37, 23);
        QVERIFY(copyPixmapToClipboard(QPixmap::fromImage(image), &owner));
        bool ok = false;
        const QByteArray targets = Xclip::read("TARGETS", &ok);
        QVERIFY(ok);
        QVERIFY2(targets.split('\n').contains("image/png"), targets.constData());
        const QByteArray png = Xclip::read("image/png", &ok);
        QVERIFY(ok);
        QVERIFY(png.startsWith("\x89PNG\r\n\x1a\n"));
        const QImage received = QImage::fromData(png, "PNG");
        QCOMPARE(received.size(), QSize(37, 23));
        QCOMPARE(argb(received), argb(image));
    }

    void nullPixmapEmptiesTheClipboard()
    {
        QGuiApplication::clipboard()->setText("before");
        QVERIFY(!copyPixmapToClipboard(QPixmap(), &owner));
        bool ok = true;
        Xclip::read("UTF8_STRING", &ok);
        QVERIFY(!ok); // nothing there for another program
    }

    void pngFromXclipIsRead()
    {
        const QImage image = patternImage(41, 19);
        QVERIFY(xclip.serve(pngOf(image), "image/png"));
        QImage read;
        const QDir scratch(TestEnvironment::instance().temp());
        const QStringList before = scratch.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        QVERIFY(readImageFromClipboard(read, scratch));
        QCOMPARE(read.size(), QSize(41, 19));
        QCOMPARE(argb(read), argb(image));
        // Here nothing goes through a file: the scratch folder is left as it was.
        QCOMPARE(scratch.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), before);
    }

    // Another program's picture is decoded only when its header claims at most 2^27
    // pixels; beyond that it is no image, even a valid one. One-bit pictures keep the
    // test's own memory small (16 MiB at the bound).
    void offeredPictureWithinTheBound_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<bool>("read");

        QTest::newRow("16384 x 8192, the bound") << QSize(16384, 8192) << true;
        QTest::newRow("16385 x 8192, one column more") << QSize(16385, 8192) << false;
        QTest::newRow("12000 x 12000") << QSize(12000, 12000) << false;
    }

    void offeredPictureWithinTheBound()
    {
        QFETCH(QSize, size);
        QFETCH(bool, read);
        QImage offered(size, QImage::Format_Mono);
        offered.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
        offered.fill(0);
        offered.setPixel(size.width() - 1, size.height() - 1, 1);
        QVERIFY(xclip.serve(pngOf(offered), "image/png"));
        QImage image;
        QCOMPARE(readImageFromClipboard(image, QDir(TestEnvironment::instance().temp())), read);
        QCOMPARE(image.size(), read ? size : QSize(0, 0)); // a null image is 0 x 0
        if (read) {
            QCOMPARE(image.pixel(size.width() - 1, size.height() - 1), qRgb(0, 0, 0));
            QCOMPARE(image.pixel(0, 0), qRgb(255, 255, 255));
        }
    }

    void textFromXclipIsNoImage()
    {
        QVERIFY(xclip.serve("just words", "UTF8_STRING", "text/plain"));
        QImage read(3, 3, QImage::Format_RGB32);
        QVERIFY(!readImageFromClipboard(read, QDir(TestEnvironment::instance().temp())));
        QVERIFY(read.isNull());
    }

    void emptyClipboardIsNoImage()
    {
        QImage read;
        QVERIFY(!readImageFromClipboard(read, QDir(TestEnvironment::instance().temp())));
        QVERIFY(read.isNull());
    }

    void ourOwnCopyReadsBack()
    {
        const QImage image = patternImage(16, 9);
        QVERIFY(copyPixmapToClipboard(QPixmap::fromImage(image), &owner));
        QImage read;
        QVERIFY(readImageFromClipboard(read, QDir(TestEnvironment::instance().temp())));
        QCOMPARE(argb(read), argb(image));
    }
};

FB_TEST_MAIN(TestClipboardXclip)
#include "tst_clipboardxclip.moc"
