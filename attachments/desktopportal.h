#pragma once

// The desktop portal's Screenshot call (org.freedesktop.portal.Screenshot), through
// which Wayland compositors give programs a picture of the screen. Linux only.

#include <QImage>
#include <QtGlobal>

namespace desktopportal {

// Asks the portal for a picture of the screen, without its interactive dialog, and
// waits for the answer in a nested event loop (the user may have to allow it first).
// A null image when no portal answers, the user refuses, the wait runs out, or the
// picture it names cannot be read or holds more than maxPixels pixels.
QImage takeScreenshot(qint64 maxPixels, int timeoutMs = 60000);

} // namespace desktopportal
