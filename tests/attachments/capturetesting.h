#pragma once

// Helpers shared by the capture tests: a picture whose every pixel tells where it
// was, and mouse and key events delivered straight to the overlay. Real input through
// the window system is RealInput's (realinput.h).

#include "support/testenv.h"

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QProcess>
#include <QScreen>
#include <QTest>
#include <QWidget>
#include <QWindow>

namespace CaptureTesting {

// The colour of screen pixel (x, y) in the test pattern: unique for x and y below 4096.
inline QRgb patternPixel(int x, int y)
{
    return qRgb(x & 0xff, y & 0xff, ((x >> 8) & 0xf) << 4 | ((y >> 8) & 0xf));
}

// The pattern as it appears on the part `area` of the screen.
inline QImage patternImage(const QRect &area)
{
    QImage image(area.size(), QImage::Format_RGB32);
    for (int y = 0; y < area.height(); ++y) {
        QRgb *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < area.width(); ++x)
            line[x] = patternPixel(area.x() + x, area.y() + y);
    }
    return image;
}

// Where a picture differs from the pattern of the area it should show, or an empty
// string when it shows exactly that area.
inline QString patternMismatch(const QImage &picture, const QRect &area)
{
    if (picture.size() != area.size())
        return QStringLiteral("size %1x%2, expected %3x%4")
            .arg(picture.width())
            .arg(picture.height())
            .arg(area.width())
            .arg(area.height());
    const QImage rgb = picture.convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < area.height(); ++y) {
        for (int x = 0; x < area.width(); ++x) {
            const QRgb expected = patternPixel(area.x() + x, area.y() + y);
            if ((rgb.pixel(x, y) & 0xffffff) != (expected & 0xffffff))
                return QStringLiteral("pixel (%1, %2) is %3, expected %4")
                    .arg(x)
                    .arg(y)
                    .arg(rgb.pixel(x, y) & 0xffffff, 6, 16, QChar('0'))
                    .arg(expected & 0xffffff, 6, 16, QChar('0'));
        }
    }
    return QString();
}

inline void sendMouse(QWidget *widget, QEvent::Type type, const QPoint &pos, Qt::MouseButton button,
                      Qt::MouseButtons buttons)
{
    QMouseEvent event(type, pos, widget->mapToGlobal(pos), button, buttons, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

inline void press(QWidget *widget, const QPoint &pos, Qt::MouseButton button = Qt::LeftButton)
{
    sendMouse(widget, QEvent::MouseButtonPress, pos, button, button);
}

inline void release(QWidget *widget, const QPoint &pos, Qt::MouseButton button = Qt::LeftButton)
{
    sendMouse(widget, QEvent::MouseButtonRelease, pos, button, Qt::NoButton);
}

// A move with the left button held (drag) or with no button (hover).
inline void drag(QWidget *widget, const QPoint &pos)
{
    sendMouse(widget, QEvent::MouseMove, pos, Qt::NoButton, Qt::LeftButton);
}

inline void hover(QWidget *widget, const QPoint &pos)
{
    sendMouse(widget, QEvent::MouseMove, pos, Qt::NoButton, Qt::NoButton);
}

// Press, drag and release with the left button.
inline void leftDrag(QWidget *widget, const QPoint &from, const QPoint &to)
{
    press(widget, from);
    drag(widget, to);
    release(widget, to);
}

// Sends a key press; returns whether some handler accepted it.
inline bool key(QWidget *widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QKeyEvent event(QEvent::KeyPress, key, modifiers);
    QApplication::sendEvent(widget, &event);
    return event.isAccepted();
}

#ifdef FB_ROOT_PATTERN_EXE
// Paints the test pattern on the whole X root window (all screens of the display).
inline bool paintRootPattern()
{
    return QProcess::execute(QStringLiteral(FB_ROOT_PATTERN_EXE), QStringList()) == 0;
}
#endif

// Where a screen, grabbed as the program grabs it, differs from the test pattern, or
// an empty string when every screen shows it in every one of its own pixels.
inline QString screensPatternMismatch()
{
    const auto screens = QGuiApplication::screens();
    for (QScreen *screen : screens) {
        const QImage grabbed = screen->grabWindow(0).toImage();
        const QSize devicePixels = screen->geometry().size() * screen->devicePixelRatio();
        if (grabbed.size() != devicePixels)
            return QStringLiteral("screen %1 was grabbed at %2x%3, not in its %4x%5 pixels")
                .arg(screen->name())
                .arg(grabbed.width())
                .arg(grabbed.height())
                .arg(devicePixels.width())
                .arg(devicePixels.height());
        const QString mismatch = patternMismatch(grabbed, QRect(screen->geometry().topLeft(), devicePixels));
        if (!mismatch.isEmpty())
            return screen->name() + QStringLiteral(": ") + mismatch;
    }
    return QString();
}

// Makes every screen show the test pattern, for the tests that grab the real screen;
// an empty string once it does. On X it is painted on the root here. Under Wine the
// X root is out of a Windows program's reach: the test's wrapper painted it before
// Wine started (run-on-root-pattern.sh, run-wine-on-two-monitors.sh), and here it is
// only looked for.
inline QString showPatternOnScreens()
{
#ifdef FB_ROOT_PATTERN_EXE
    if (!paintRootPattern())
        return QStringLiteral("the root pattern could not be painted");
    return QString();
#else
    return screensPatternMismatch();
#endif
}

// Whether a window manager really iconifies: a minimised window must leave the
// screen. Without one the screen-shot flow waits for ever, so the flow test checks
// this first and stops at once with a clear reason instead of timing out.
inline QString windowManagerMinimiseProblem()
{
    QWidget probe;
    probe.resize(200, 100);
    probe.show();
    if (!QTest::qWaitForWindowExposed(&probe, kEventWaitMs))
        return QStringLiteral("a plain window was never exposed");
    probe.showMinimized();
    if (!QTest::qWaitFor([&] { return !probe.windowHandle()->isExposed(); }, kEventWaitMs))
        return QStringLiteral("a minimised window stayed on the screen: no window manager iconified it");
    return QString();
}

// The picture in the BMP file that the Windows clipboard reader (fb_clipboardbmpreader)
// wrote, after checking it is a bitmap of 24 bits per pixel, as the program puts it
// on the clipboard. On a failed check the picture stays null.
inline void pictureOfClipboardBmp(const QString &path, QImage &picture)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    QVERIFY(bytes.size() > 54);
    QCOMPARE(bytes.left(2), QByteArray("BM"));
    QCOMPARE(quint8(bytes.at(28)) | quint8(bytes.at(29)) << 8, 24);
    picture = QImage::fromData(bytes, "BMP");
}

} // namespace CaptureTesting
