#include "attachments/screengrab.h"

#include "attachments/imagelimits.h"
#ifdef FB_HAVE_DESKTOP_PORTAL
#include "attachments/desktopportal.h"
#endif

#include <QGuiApplication>
#include <QImage>
#include <QScreen>

namespace screengrab {

bool needsDesktopPortal(const QString &platformName, const QString &screenName)
{
    return platformName == QLatin1String("wayland")
           || (platformName == QLatin1String("xcb") && screenName.startsWith(QLatin1String("XWAYLAND")));
}

QRect areaOfScreen(const QSize &picture, const QRect &screen, const QRect &desktop, qreal devicePixelRatio)
{
    const auto devicePixels = [devicePixelRatio](const QSize &size) {
        return QSize(qRound(size.width() * devicePixelRatio), qRound(size.height() * devicePixelRatio));
    };
    if (picture.isEmpty())
        return QRect();
    const QRect whole(QPoint(0, 0), picture);
    if (picture == devicePixels(screen.size()) || picture != devicePixels(desktop.size()))
        return whole;
    const QPoint offset = screen.topLeft() - desktop.topLeft();
    const QRect area(QPoint(qRound(offset.x() * devicePixelRatio), qRound(offset.y() * devicePixelRatio)),
                     devicePixels(screen.size()));
    return area.intersected(whole);
}

QScreen *screenUnderPointer(QScreen *windowScreen, const QPoint &pointer, const QList<QScreen *> &screens)
{
    for (QScreen *candidate : screens) {
        if (candidate->geometry().contains(pointer))
            return candidate;
    }
    return windowScreen;
}

Result grabScreen(QScreen *screen)
{
    Result result;
    if (!screen)
        return result;
    if (!needsDesktopPortal(QGuiApplication::platformName(), screen->name())) {
        result.picture = screen->grabWindow(0, 0, 0, -1, -1);
        return result;
    }
    result.viaDesktopPortal = true;
#ifdef FB_HAVE_DESKTOP_PORTAL
    const QImage shot = desktopportal::takeScreenshot(imagelimits::kMaxPixels);
    const QRect area =
        areaOfScreen(shot.size(), screen->geometry(), screen->virtualGeometry(), screen->devicePixelRatio());
    if (shot.isNull() || area.isEmpty())
        return result;
    result.picture = QPixmap::fromImage(shot.copy(area));
    result.picture.setDevicePixelRatio(screen->devicePixelRatio());
#endif
    return result;
}

} // namespace screengrab
