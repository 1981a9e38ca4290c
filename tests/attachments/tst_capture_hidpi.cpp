// Capture on a scaled display of 1920 x 1080 pixels: the overlay shows the grabbed
// screen pixel for pixel, and the picture kept is exactly the selected region in
// device pixels. On X the scale is Qt's own (QT_SCALE_FACTOR 2, 1.5 or 1.25 on Xvfb);
// on Windows it is the system's display scaling, as users set it (200, 150 or 125 %,
// FB_WINE_LOGPIXELS under Wine), which the program takes unrounded.
#include "attachments/screenshot.h"
#include "capturetesting.h"
#include "overlaywatcher.h"
#include "realinput.h"
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
    if (qFuzzyCompare(scale, qreal(1.25)))
        return QRect(14, 26, 125, 63); // 13.75 -> 14, 26.25 -> 26, 138.75 -> 139, 88.75 -> 89
    return QRect();
}

// The scale the test runs at: Qt's on X; on Windows the system's, in dots per inch
// over the 96 of 100 %.
qreal scaleOfTheRun()
{
#ifdef Q_OS_WIN
    return qEnvironmentVariable("FB_WINE_LOGPIXELS").toDouble() / 96;
#else
    return qEnvironmentVariable("QT_SCALE_FACTOR").toDouble();
#endif
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
        scale = scaleOfTheRun();
        QVERIFY2(expectedDeviceRect(scale).isValid(),
                 "run with QT_SCALE_FACTOR (X) or FB_WINE_LOGPIXELS (Windows) at 2, 1.5 or 1.25");
        QScreen *screen = QGuiApplication::primaryScreen();
        QCOMPARE(screen->devicePixelRatio(), scale);
        QCOMPARE(screen->geometry().size(), QSize(qRound(1920 / scale), qRound(1080 / scale)));
        const QString pattern = showPatternOnScreens();
        QVERIFY2(pattern.isEmpty(), qPrintable(pattern));
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

    // The same selections made with the real pointer, placed in the screen's own
    // pixels: the window system hands them back to the overlay as the same points.
    void realPointerKeepsTheSelectedDevicePixels_data() { keepsTheSelectedDevicePixels_data(); }

    void realPointerKeepsTheSelectedDevicePixels()
    {
        QFETCH(bool, enhanced);
        bool played = false;
        QRect band;
        OverlayWatcher watcher([&](ScreenShot *overlay) {
            const QPoint end = enhanced ? kSelection.bottomRight() : kSelection.bottomRight() + QPoint(1, 1);
            played = RealInput().moveTo(kSelection.topLeft()).press().moveTo(end).release().run();
            if (!enhanced)
                return;
            const auto releaseSeen = [overlay] {
                return overlay->rubberBand()->geometry() == kSelection
                       && QGuiApplication::mouseButtons() == Qt::NoButton;
            };
            whenTrue(overlay, releaseSeen, [&, overlay] {
                band = overlay->rubberBand()->geometry();
                played = played && RealInput().moveTo({300, 300}).click(Qt::RightButton).run();
            });
        });
        ScreenShot overlay(enhanced);
        const QPixmap picture = overlay.capture(QGuiApplication::primaryScreen());
        QVERIFY(watcher.fired());
        QVERIFY(!watcher.rescued);
        QVERIFY(played);
        if (enhanced)
            QCOMPARE(band, kSelection);
        QCOMPARE(patternMismatch(picture.toImage(), expectedDeviceRect(scale)), QString());
    }
};

FB_TEST_MAIN(TestCaptureHiDpi)
#include "tst_capture_hidpi.moc"
