// The arithmetic of the capture overlay and of the screen-shot delay, table by table.
#include "attachments/capturegeometry.h"
#include "attachments/screenshotflow.h"
#include "support/testenv.h"

#include <QPixmap>
#include <QtTest>

using namespace CaptureGeometry;

namespace {

const QRect kFullHd(0, 0, 1920, 1080);

// Which zones a layout holds, as a string of indices: "0246" for the four corners.
QString presentZones(const ZoneLayout &layout)
{
    QString zones;
    for (int zone = 0; zone < kZoneCount; ++zone) {
        if (layout.present[zone])
            zones += QString::number(zone);
    }
    return zones;
}

// A text bounding rectangle of the given width and height, as fonts report them.
QRect textBox(int width, int height)
{
    return QRect(0, -height + 3, width, height);
}

} // namespace

class TestCaptureGeometry : public QObject
{
    Q_OBJECT

private slots:
    void delay_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("milliseconds");
        QTest::newRow("empty") << "" << 2000;
        QTest::newRow("zero") << "0" << 2000;
        QTest::newRow("not a number") << "abc" << 2000;
        QTest::newRow("one") << "1" << 1000;
        QTest::newRow("two") << "2" << 2000;
        QTest::newRow("five") << "5" << 5000;
        QTest::newRow("sixty") << "60" << 60000;
        QTest::newRow("sixty-one") << "61" << 60000;
        QTest::newRow("hundred-twenty") << "120" << 60000;
        QTest::newRow("validator maximum") << "999" << 60000;
        QTest::newRow("beyond int range once multiplied") << "99999999" << 60000;
        QTest::newRow("negative from a settings file") << "-5" << 0;
    }

    void delay()
    {
        QFETCH(QString, text);
        QFETCH(int, milliseconds);
        QCOMPARE(screenShotDelayMs(text), milliseconds);
    }

    void handleMetrics_data()
    {
        QTest::addColumn<QSize>("bounds");
        QTest::addColumn<int>("hx");
        QTest::addColumn<int>("hy");
        QTest::addColumn<int>("margin");
        QTest::newRow("1920x1080") << QSize(1920, 1080) << 10 << 9 << 3;
        QTest::newRow("3840x2160") << QSize(3840, 2160) << 20 << 18 << 6;
        QTest::newRow("2560x1440") << QSize(2560, 1440) << 13 << 12 << 4;
        QTest::newRow("1366x768") << QSize(1366, 768) << 7 << 6 << 2;
        QTest::newRow("1280x720") << QSize(1280, 720) << 6 << 6 << 2;
        QTest::newRow("800x600") << QSize(800, 600) << 4 << 5 << 1;
        QTest::newRow("191x119") << QSize(191, 119) << 0 << 0 << 0;
        QTest::newRow("192x120") << QSize(192, 120) << 1 << 1 << 0;
    }

    void handleMetrics()
    {
        QFETCH(QSize, bounds);
        QFETCH(int, hx);
        QFETCH(int, hy);
        QFETCH(int, margin);
        const HandleMetrics metrics = CaptureGeometry::handleMetrics(bounds);
        QCOMPARE(metrics.hx, hx);
        QCOMPARE(metrics.hy, hy);
        QCOMPARE(metrics.margin, margin);
    }

    // Handles appear when the band is wider than 2 hx and higher than 2 hy; the edge
    // middles when it is wider than 3 hx (top, bottom) or higher than 3 hy (left, right).
    void handleThresholds_data()
    {
        QTest::addColumn<QRect>("bounds");
        QTest::addColumn<QSize>("band");
        QTest::addColumn<bool>("handles");
        QTest::addColumn<QString>("zones");
        QTest::newRow("1080p 20x18: none") << kFullHd << QSize(20, 18) << false << "";
        QTest::newRow("1080p 21x18: none") << kFullHd << QSize(21, 18) << false << "";
        QTest::newRow("1080p 20x19: none") << kFullHd << QSize(20, 19) << false << "";
        QTest::newRow("1080p 21x19: corners") << kFullHd << QSize(21, 19) << true << "0246";
        QTest::newRow("1080p 30x27: corners") << kFullHd << QSize(30, 27) << true << "0246";
        QTest::newRow("1080p 31x27: top and bottom") << kFullHd << QSize(31, 27) << true << "012456";
        QTest::newRow("1080p 30x28: left and right") << kFullHd << QSize(30, 28) << true << "023467";
        QTest::newRow("1080p 31x28: all eight") << kFullHd << QSize(31, 28) << true << "01234567";
        QTest::newRow("2160p 40x36: none") << QRect(0, 0, 3840, 2160) << QSize(40, 36) << false << "";
        QTest::newRow("2160p 41x37: corners") << QRect(0, 0, 3840, 2160) << QSize(41, 37) << true << "0246";
        QTest::newRow("2160p 60x54: corners") << QRect(0, 0, 3840, 2160) << QSize(60, 54) << true << "0246";
        QTest::newRow("2160p 61x55: all eight") << QRect(0, 0, 3840, 2160) << QSize(61, 55) << true << "01234567";
        QTest::newRow("800x600 9x11: corners") << QRect(0, 0, 800, 600) << QSize(9, 11) << true << "0246";
        QTest::newRow("800x600 8x11: none") << QRect(0, 0, 800, 600) << QSize(8, 11) << false << "";
        QTest::newRow("800x600 13x16: all eight") << QRect(0, 0, 800, 600) << QSize(13, 16) << true << "01234567";
        QTest::newRow("second screen, same rules") << QRect(1920, 0, 1920, 1080) << QSize(31, 28) << true << "01234567";
    }

    void handleThresholds()
    {
        QFETCH(QRect, bounds);
        QFETCH(QSize, band);
        QFETCH(bool, handles);
        QFETCH(QString, zones);
        // A text far too big for the band keeps the label out of these rows.
        const ZoneLayout layout = zoneLayout(bounds, QRect(QPoint(5, 7), band), textBox(500, 300));
        QCOMPARE(layout.handles, handles);
        QCOMPARE(presentZones(layout), zones);
    }

    void zoneRectangles_data()
    {
        QTest::addColumn<QRect>("bounds");
        QTest::addColumn<QRect>("band");
        QTest::addColumn<int>("zone");
        QTest::addColumn<QRect>("rect");
        // 1920 x 1080: hx 10, hy 9; half sizes 5 and 4.
        const QRect small(0, 0, 31, 28); // x2 30, y2 27, w/2 15, h/2 14
        QTest::newRow("31x28 top-left") << kFullHd << small << 0 << QRect(0, 0, 10, 9);
        QTest::newRow("31x28 top") << kFullHd << small << 1 << QRect(10, 0, 10, 9);
        QTest::newRow("31x28 top-right") << kFullHd << small << 2 << QRect(21, 0, 10, 9);
        QTest::newRow("31x28 right") << kFullHd << small << 3 << QRect(21, 10, 10, 9);
        QTest::newRow("31x28 bottom-right") << kFullHd << small << 4 << QRect(21, 19, 10, 9);
        QTest::newRow("31x28 bottom") << kFullHd << small << 5 << QRect(10, 19, 10, 9);
        QTest::newRow("31x28 bottom-left") << kFullHd << small << 6 << QRect(0, 19, 10, 9);
        QTest::newRow("31x28 left, centred with hx/2") << kFullHd << small << 7 << QRect(0, 9, 10, 9);
        const QRect large(100, 50, 300, 200); // x2 399, y2 249
        QTest::newRow("300x200 top-left") << kFullHd << large << 0 << QRect(100, 50, 10, 9);
        QTest::newRow("300x200 top") << kFullHd << large << 1 << QRect(245, 50, 10, 9);
        QTest::newRow("300x200 top-right") << kFullHd << large << 2 << QRect(390, 50, 10, 9);
        QTest::newRow("300x200 right") << kFullHd << large << 3 << QRect(390, 146, 10, 9);
        QTest::newRow("300x200 bottom-right") << kFullHd << large << 4 << QRect(390, 241, 10, 9);
        QTest::newRow("300x200 bottom") << kFullHd << large << 5 << QRect(245, 241, 10, 9);
        QTest::newRow("300x200 bottom-left") << kFullHd << large << 6 << QRect(100, 241, 10, 9);
        QTest::newRow("300x200 left one row above right") << kFullHd << large << 7 << QRect(100, 145, 10, 9);
        // 3840 x 2160: hx 20, hy 18; half sizes 10 and 9.
        const QRect uhd(0, 0, 101, 81); // x2 100, y2 80, w/2 50, h/2 40
        QTest::newRow("2160p top") << QRect(0, 0, 3840, 2160) << uhd << 1 << QRect(40, 0, 20, 18);
        QTest::newRow("2160p right") << QRect(0, 0, 3840, 2160) << uhd << 3 << QRect(81, 31, 20, 18);
        QTest::newRow("2160p bottom-right") << QRect(0, 0, 3840, 2160) << uhd << 4 << QRect(81, 63, 20, 18);
        QTest::newRow("2160p left") << QRect(0, 0, 3840, 2160) << uhd << 7 << QRect(0, 30, 20, 18);
        // 800 x 600: hx 4, hy 5; half sizes 2 and 2, so left and right line up here.
        const QRect svga(0, 0, 40, 30);
        QTest::newRow("800x600 left") << QRect(0, 0, 800, 600) << svga << 7 << QRect(0, 13, 4, 5);
        QTest::newRow("800x600 right") << QRect(0, 0, 800, 600) << svga << 3 << QRect(36, 13, 4, 5);
    }

    void zoneRectangles()
    {
        QFETCH(QRect, bounds);
        QFETCH(QRect, band);
        QFETCH(int, zone);
        QFETCH(QRect, rect);
        const ZoneLayout layout = zoneLayout(bounds, band, textBox(500, 300));
        QVERIFY(layout.present[zone]);
        QCOMPARE(layout.zones[zone], rect);
    }

    // The label needs w > 2 hx + 1 + tw and h > 2 hy + 1 + th, tw and th being one less
    // than the text's bounding width and height: on 1080p, wider than 20 + the text
    // width and higher than 18 + the text height.
    void labelThreshold_data()
    {
        QTest::addColumn<QRect>("bounds");
        QTest::addColumn<QSize>("band");
        QTest::addColumn<QSize>("text");
        QTest::addColumn<bool>("label");
        QTest::newRow("1080p 62x32, text 42x13: too narrow") << kFullHd << QSize(62, 32) << QSize(42, 13) << false;
        QTest::newRow("1080p 63x31, text 42x13: too low") << kFullHd << QSize(63, 31) << QSize(42, 13) << false;
        QTest::newRow("1080p 63x32, text 42x13: shown") << kFullHd << QSize(63, 32) << QSize(42, 13) << true;
        QTest::newRow("1080p 300x200, text 280x182: too narrow")
            << kFullHd << QSize(300, 200) << QSize(280, 182) << false;
        QTest::newRow("1080p 300x200, text 279x181: shown") << kFullHd << QSize(300, 200) << QSize(279, 181) << true;
        QTest::newRow("2160p 82x50, text 42x13: too narrow")
            << QRect(0, 0, 3840, 2160) << QSize(82, 50) << QSize(42, 13) << false;
        QTest::newRow("2160p 83x50, text 42x13: shown")
            << QRect(0, 0, 3840, 2160) << QSize(83, 50) << QSize(42, 13) << true;
    }

    void labelThreshold()
    {
        QFETCH(QRect, bounds);
        QFETCH(QSize, band);
        QFETCH(QSize, text);
        QFETCH(bool, label);
        const ZoneLayout layout = zoneLayout(bounds, QRect(QPoint(0, 0), band), textBox(text.width(), text.height()));
        QCOMPARE(layout.present[SizeLabel], label);
    }

    void labelBox_data()
    {
        QTest::addColumn<QRect>("bounds");
        QTest::addColumn<QRect>("band");
        QTest::addColumn<QSize>("text");
        QTest::addColumn<QRect>("box");
        // left = x1 + w/2 - (tw+1)/2 - m, top = y1 + h/2 - (th+1)/2 - m,
        // right = left + 2m + tw, bottom = top + 2m + th.
        QTest::newRow("1080p 63x32") << kFullHd << QRect(0, 0, 63, 32) << QSize(42, 13)
                                     << QRect(QPoint(7, 7), QPoint(54, 25));
        QTest::newRow("1080p 300x200 at 100,50")
            << kFullHd << QRect(100, 50, 300, 200) << QSize(49, 14) << QRect(QPoint(223, 140), QPoint(277, 159));
        QTest::newRow("2160p 400x300") << QRect(0, 0, 3840, 2160) << QRect(0, 0, 400, 300) << QSize(49, 14)
                                       << QRect(QPoint(170, 137), QPoint(230, 162));
    }

    void labelBox()
    {
        QFETCH(QRect, bounds);
        QFETCH(QRect, band);
        QFETCH(QSize, text);
        QFETCH(QRect, box);
        const ZoneLayout layout = zoneLayout(bounds, band, textBox(text.width(), text.height()));
        QVERIFY(layout.present[SizeLabel]);
        QCOMPARE(layout.zones[SizeLabel], box);
    }

    void labelText()
    {
        QCOMPARE(sizeLabelText(QSize(300, 200)), QString("300x200"));
        QCOMPARE(sizeLabelText(QSize(1920, 1080)), QString("1920x1080"));
        QCOMPARE(sizeLabelText(QSize(0, 7)), QString("0x7"));
    }

    void cursors_data()
    {
        QTest::addColumn<int>("zone");
        QTest::addColumn<int>("shape");
        QTest::newRow("0 top-left") << 0 << int(Qt::SizeFDiagCursor);
        QTest::newRow("1 top") << 1 << int(Qt::SizeVerCursor);
        QTest::newRow("2 top-right") << 2 << int(Qt::SizeBDiagCursor);
        QTest::newRow("3 right") << 3 << int(Qt::SizeHorCursor);
        QTest::newRow("4 bottom-right") << 4 << int(Qt::SizeFDiagCursor);
        QTest::newRow("5 bottom") << 5 << int(Qt::SizeVerCursor);
        QTest::newRow("6 bottom-left") << 6 << int(Qt::SizeBDiagCursor);
        QTest::newRow("7 left") << 7 << int(Qt::SizeHorCursor);
        QTest::newRow("8 label") << 8 << int(Qt::SizeAllCursor);
        QTest::newRow("9 none") << 9 << int(Qt::CrossCursor);
    }

    void cursors()
    {
        QFETCH(int, zone);
        QFETCH(int, shape);
        QCOMPARE(int(zoneCursor(zone)), shape);
    }

    void plainSelection_data()
    {
        QTest::addColumn<QPoint>("press");
        QTest::addColumn<QPoint>("current");
        QTest::addColumn<QRect>("rect");
        QTest::addColumn<QSize>("copied");
        QTest::newRow("down-right drag") << QPoint(100, 100) << QPoint(300, 250) << QRect(100, 100, 200, 150)
                                         << QSize(200, 150);
        QTest::newRow("one pixel") << QPoint(10, 10) << QPoint(11, 11) << QRect(10, 10, 1, 1) << QSize(1, 1);
        QTest::newRow("upper-left drag: whole picture")
            << QPoint(300, 250) << QPoint(100, 100) << QRect(QPoint(300, 250), QPoint(99, 99)) << QSize(640, 480);
        QTest::newRow("up-right drag: whole picture")
            << QPoint(100, 250) << QPoint(300, 100) << QRect(QPoint(100, 250), QPoint(299, 99)) << QSize(640, 480);
        QTest::newRow("horizontal drag: whole picture")
            << QPoint(100, 100) << QPoint(300, 100) << QRect(QPoint(100, 100), QPoint(299, 99)) << QSize(640, 480);
        QTest::newRow("beyond the picture: clipped")
            << QPoint(600, 400) << QPoint(700, 500) << QRect(600, 400, 100, 100) << QSize(40, 80);
    }

    void plainSelection()
    {
        QFETCH(QPoint, press);
        QFETCH(QPoint, current);
        QFETCH(QRect, rect);
        QFETCH(QSize, copied);
        const QRect selection = CaptureGeometry::plainSelection(press, current);
        QCOMPARE(selection, rect);
        QPixmap picture(640, 480);
        picture.fill(Qt::red);
        QCOMPARE(picture.copy(selection).size(), copied);
    }

    void draggedRect_data()
    {
        QTest::addColumn<int>("zone");
        QTest::addColumn<QPoint>("pointer");
        QTest::addColumn<QRect>("rect");
        // The band is x 100..299, y 100..199, centre (199, 149); the press was at (120, 130).
        QTest::newRow("0 top-left") << 0 << QPoint(50, 60) << QRect(50, 60, 250, 140);
        QTest::newRow("1 top") << 1 << QPoint(50, 60) << QRect(100, 60, 200, 140);
        QTest::newRow("2 top-right") << 2 << QPoint(350, 60) << QRect(100, 60, 251, 140);
        QTest::newRow("2 top-right crossing the left edge") << 2 << QPoint(50, 60) << QRect(50, 60, 51, 140);
        QTest::newRow("3 right") << 3 << QPoint(350, 60) << QRect(100, 100, 251, 100);
        QTest::newRow("4 bottom-right") << 4 << QPoint(350, 260) << QRect(100, 100, 251, 161);
        QTest::newRow("5 bottom") << 5 << QPoint(350, 260) << QRect(100, 100, 200, 161);
        QTest::newRow("5 bottom crossing the top") << 5 << QPoint(0, 40) << QRect(100, 40, 200, 61);
        QTest::newRow("6 bottom-left") << 6 << QPoint(50, 260) << QRect(50, 100, 250, 161);
        QTest::newRow("7 left") << 7 << QPoint(50, 260) << QRect(50, 100, 250, 100);
        QTest::newRow("8 label: centre to the pointer") << 8 << QPoint(700, 500) << QRect(601, 451, 200, 100);
        QTest::newRow("8 label: partly off the top-left") << 8 << QPoint(10, 10) << QRect(-89, -39, 200, 100);
        QTest::newRow("9 new selection") << 9 << QPoint(400, 300) << QRect(120, 130, 281, 171);
        QTest::newRow("9 new selection, upwards") << 9 << QPoint(20, 30) << QRect(20, 30, 101, 101);
    }

    void draggedRect()
    {
        QFETCH(int, zone);
        QFETCH(QPoint, pointer);
        QFETCH(QRect, rect);
        const QRect band(100, 100, 200, 100);
        const QRect dragged = CaptureGeometry::draggedRect(zone, band, QPoint(120, 130), pointer);
        QCOMPARE(dragged, rect);
        if (zone == SizeLabel)
            QCOMPARE(dragged.center(), pointer);
    }

    void nudge_data()
    {
        QTest::addColumn<QRect>("band");
        QTest::addColumn<int>("key");
        QTest::addColumn<bool>("resize");
        QTest::addColumn<QRect>("rect");
        const QRect band(100, 100, 200, 100);
        QTest::newRow("left") << band << int(Qt::Key_Left) << false << QRect(99, 100, 200, 100);
        QTest::newRow("right") << band << int(Qt::Key_Right) << false << QRect(101, 100, 200, 100);
        QTest::newRow("up") << band << int(Qt::Key_Up) << false << QRect(100, 99, 200, 100);
        QTest::newRow("down") << band << int(Qt::Key_Down) << false << QRect(100, 101, 200, 100);
        QTest::newRow("shift+right grows") << band << int(Qt::Key_Right) << true << QRect(100, 100, 201, 100);
        QTest::newRow("shift+left shrinks") << band << int(Qt::Key_Left) << true << QRect(100, 100, 199, 100);
        QTest::newRow("shift+down grows") << band << int(Qt::Key_Down) << true << QRect(100, 100, 200, 101);
        QTest::newRow("shift+up shrinks") << band << int(Qt::Key_Up) << true << QRect(100, 100, 200, 99);
        QTest::newRow("other key") << band << int(Qt::Key_A) << false << band;
        QTest::newRow("other key with shift") << band << int(Qt::Key_Return) << true << band;
        QTest::newRow("left at the left edge")
            << QRect(0, 5, 50, 50) << int(Qt::Key_Left) << false << QRect(0, 5, 50, 50);
        QTest::newRow("up at the top edge") << QRect(5, 0, 50, 50) << int(Qt::Key_Up) << false << QRect(5, 0, 50, 50);
        QTest::newRow("right at the right edge")
            << QRect(1870, 5, 50, 50) << int(Qt::Key_Right) << false << QRect(1870, 5, 50, 50);
        QTest::newRow("down at the bottom edge")
            << QRect(5, 1030, 50, 50) << int(Qt::Key_Down) << false << QRect(5, 1030, 50, 50);
        QTest::newRow("shift+right at the right edge")
            << QRect(1870, 5, 50, 50) << int(Qt::Key_Right) << true << QRect(1870, 5, 50, 50);
        QTest::newRow("shift+down at the bottom edge")
            << QRect(5, 1030, 50, 50) << int(Qt::Key_Down) << true << QRect(5, 1030, 50, 50);
        QTest::newRow("shift+left at one pixel")
            << QRect(5, 5, 1, 50) << int(Qt::Key_Left) << true << QRect(5, 5, 1, 50);
        QTest::newRow("shift+up at one pixel") << QRect(5, 5, 50, 1) << int(Qt::Key_Up) << true << QRect(5, 5, 50, 1);
        QTest::newRow("moved off screen by the label comes back")
            << QRect(-89, -39, 200, 100) << int(Qt::Key_Right) << false << QRect(0, 0, 200, 100);
    }

    void nudge()
    {
        QFETCH(QRect, band);
        QFETCH(int, key);
        QFETCH(bool, resize);
        QFETCH(QRect, rect);
        QCOMPARE(nudgedRect(band, key, resize, kFullHd), rect);
    }

    void devicePixels_data()
    {
        QTest::addColumn<QRect>("logical");
        QTest::addColumn<qreal>("ratio");
        QTest::addColumn<QRect>("device");
        QTest::newRow("ratio 1") << QRect(10, 20, 101, 51) << qreal(1) << QRect(10, 20, 101, 51);
        QTest::newRow("ratio 2") << QRect(10, 20, 101, 51) << qreal(2) << QRect(20, 40, 202, 102);
        QTest::newRow("ratio 1.5, halves round up") << QRect(10, 20, 101, 51) << qreal(1.5) << QRect(15, 30, 152, 77);
        QTest::newRow("ratio 1.5, odd origin") << QRect(11, 21, 100, 50) << qreal(1.5) << QRect(17, 32, 150, 75);
        QTest::newRow("ratio 1.25") << QRect(3, 3, 4, 4) << qreal(1.25) << QRect(4, 4, 5, 5);
        QTest::newRow("empty stays empty")
            << QRect(QPoint(300, 250), QPoint(99, 99)) << qreal(2) << QRect(QPoint(300, 250), QPoint(99, 99));
    }

    void devicePixels()
    {
        QFETCH(QRect, logical);
        QFETCH(qreal, ratio);
        QFETCH(QRect, device);
        QCOMPARE(toDevicePixels(logical, ratio), device);
    }

    // Neighbouring selections cover neighbouring device pixels, with no gap or overlap.
    void devicePixelsTile()
    {
        for (int x = 0; x < 40; ++x) {
            const QRect left = toDevicePixels(QRect(x, 0, 7, 1), 1.5);
            const QRect right = toDevicePixels(QRect(x + 7, 0, 5, 1), 1.5);
            QCOMPARE(left.right() + 1, right.left());
        }
    }
};

FB_TEST_MAIN(TestCaptureGeometry)
#include "tst_capturegeometry.moc"
