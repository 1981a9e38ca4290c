// Taking the picture: from the window system where it gives one, else from the desktop
// portal (D-Bus), which is why this sits beside the widgets rather than in the core.
#include "attachments/screengrab.h"

#include "attachments/imagelimits.h"
#ifdef FB_HAVE_DESKTOP_PORTAL
#include "attachments/desktopportal.h"
#endif

#include <QGuiApplication>
#include <QImage>
#include <QScreen>

namespace screengrab {

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
