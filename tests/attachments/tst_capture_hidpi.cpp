// Capture on a scaled display (QT_SCALE_FACTOR 2 or 1.5 on a 1920 x 1080 Xvfb): the
// overlay shows the grabbed screen pixel for pixel, and the picture kept is exactly
// the selected region in device pixels.
#include "attachments/screenshot.h"
#include "capturetesting.h"
#include "overlaywatcher.h"
#include "support/testenv.h"

#include <QApplication>
#include <QRubberBand>
#include <QScreen>
#include <QtTest>

using namespace CaptureTesting;

namespace {

const QRect kDeviceScreen(0, 0, 1920, 1080);

// The overlay selection used by every test, in logical pixels, and the device
// pixels it covers at each scale (edges rounded half away from zero).
const QRect kSelection(11, 21, 100, 50);

QRect expectedDeviceRect(qreal scale)
{
    if (qFuzzyCompare(scale, qreal(2)))
        return QRect(22, 42, 200, 100);
    if (qFuzzyCompare(scale, qreal(1.5)))
        return QRect(17, 32, 150, 75); // 16.5 -> 17, 31.5 -> 32, 166.5 -> 167, 106.5 -> 107
    return QRect();
}

} // namespace

class TestCaptureHiDpi : public QObject
{
    Q_OBJECT

private:
    qreal scale = 0;

private slots:
    void initTestCase()
    {
        scale = qEnvironmentVariable("QT_SCALE_FACTOR").toDouble();
        QVERIFY2(expectedDeviceRect(scale).isValid(), "run with QT_SCALE_FACTOR 2 or 1.5");
        QScreen *screen = QGuiApplication::primaryScreen();
        QCOMPARE(screen->devicePixelRatio(), scale);
        QCOMPARE(screen->geometry().size(), QSize(qRound(1920 / scale), qRound(1080 / scale)));
        QVERIFY(paintRootPattern());
        QCursor::setPos(screen->geometry().bottomRight());
    }

    void keepsTheSelectedDevicePixels_data()
    {
        QTest::addColumn<bool>("enhanced");
        QTest::newRow("plain") << false;
        QTest::newRow("enhanced") << true;
    }

    void keepsTheSelectedDevicePixels()
    {
        QFETCH(bool, enhanced);
        QImage onScreen;
        QRect band;
        OverlayWatcher watcher([&](ScreenShot *overlay) {
            // What the screen shows with the overlay up, before any selection.
            onScreen = overlay->windowHandle()->screen()->grabWindow(0).toImage();
            press(overlay, kSelection.topLeft());
            if (enhanced) {
                drag(overlay, kSelection.bottomRight());
                release(overlay, kSelection.bottomRight());
                band = overlay->rubberBand()->geometry();
                press(overlay, QPoint(300, 300), Qt::RightButton);
            } else {
                const QPoint end = kSelection.bottomRight() + QPoint(1, 1);
                drag(overlay, end);
                release(overlay, end);
            }
        });
        ScreenShot overlay(enhanced);
        const QPixmap picture = overlay.capture(QGuiApplication::primaryScreen());
        QVERIFY(watcher.fired());
        QVERIFY(!watcher.rescued);
        if (enhanced)
            QCOMPARE(band, kSelection);

        QCOMPARE(watcher.background.devicePixelRatio(), scale);
        QCOMPARE(patternMismatch(watcher.background.toImage(), kDeviceScreen), QString());
        QCOMPARE(patternMismatch(onScreen, kDeviceScreen), QString());
        QCOMPARE(patternMismatch(picture.toImage(), expectedDeviceRect(scale)), QString());
    }

    // The whole-picture rule of the plain mode keeps every device pixel.
    void upperLeftDragKeepsTheWholeScreen()
    {
        OverlayWatcher watcher([](ScreenShot *overlay) {
            press(overlay, QPoint(200, 150));
            drag(overlay, QPoint(100, 100));
            release(overlay, QPoint(100, 100));
        });
        ScreenShot overlay(false);
        const QPixmap picture = overlay.capture(QGuiApplication::primaryScreen());
        QVERIFY(watcher.fired());
        QCOMPARE(patternMismatch(picture.toImage(), kDeviceScreen), QString());
    }
};

FB_TEST_MAIN(TestCaptureHiDpi)
#include "tst_capture_hidpi.moc"
