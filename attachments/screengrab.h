#pragma once

// The picture of a whole screen, taken the way the desktop lets programs take it: the
// window system's own grab on Windows and X11, and on Wayland (also for a program that
// runs through XWayland, whose X screen shows nothing of the Wayland windows) the
// desktop portal's Screenshot call, which the compositor answers.

#include <QList>
#include <QPixmap>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>

class QScreen;

namespace screengrab {

// Whether the screen can only be captured through the desktop portal: native Wayland
// clients, and X11 clients of XWayland, whose screens Qt names "XWAYLAND0", ...
bool needsDesktopPortal(const QString &platformName, const QString &screenName);

// The part of a portal picture that shows `screen`, in the picture's pixels. Portals
// answer with one output (wlroots) or the whole desktop (GNOME, KDE); a picture of
// neither size is taken whole. Empty when nothing of it shows the screen.
QRect areaOfScreen(const QSize &picture, const QRect &screen, const QRect &desktop, qreal devicePixelRatio);

// The screen to grab: the first whose geometry holds the pointer (edges included),
// else the window's own.
QScreen *screenUnderPointer(QScreen *windowScreen, const QPoint &pointer, const QList<QScreen *> &screens);

struct Result
{
    QPixmap picture; // null when the screen could not be captured
    bool viaDesktopPortal = false;
};

// The whole screen, in device pixels, with the screen's device-pixel ratio.
Result grabScreen(QScreen *screen);

} // namespace screengrab
