#include "attachments/screengrab.h"

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

} // namespace screengrab
