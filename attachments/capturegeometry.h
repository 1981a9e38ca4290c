#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>

#include <array>

// The arithmetic of the capture overlay, free of widgets so that every rule can be
// checked on its own: handle sizes, the grab zones and the size label of the
// enhanced band, the rectangles a drag or a key produces, and the mapping of a
// selection onto the grabbed picture.
namespace CaptureGeometry {

// Grab zones of the enhanced band; the index order is also the hit-test order.
enum Zone : int {
    TopLeft = 0,
    Top = 1,
    TopRight = 2,
    Right = 3,
    BottomRight = 4,
    Bottom = 5,
    BottomLeft = 6,
    Left = 7,
    SizeLabel = 8,
    NoZone = 9,
};
constexpr int kZoneCount = 9;

// The eight handles are painted in this order; the size label comes last.
constexpr std::array<int, 8> kHandlePaintOrder{TopLeft, Left, BottomLeft, Bottom, BottomRight, Right, TopRight, Top};

// Handle sizes follow the screen: hx = width/192, hy = height/120, margin = width/640.
struct HandleMetrics
{
    int hx = 0;
    int hy = 0;
    int margin = 0;
};
HandleMetrics handleMetrics(const QSize &bounds);

// The zones a band of a given rectangle shows. A zone that is not present keeps the
// rectangle it had before; when `handles` is false nothing beyond the band is drawn.
struct ZoneLayout
{
    bool handles = false;
    std::array<bool, kZoneCount> present{};
    std::array<QRect, kZoneCount> zones{};
};

// bounds: the screen the band lives on; band: the band's rectangle; textBounds: the
// font's bounding rectangle of sizeLabelText(band size).
ZoneLayout zoneLayout(const QRect &bounds, const QRect &band, const QRect &textBounds);
QString sizeLabelText(const QSize &size);
Qt::CursorShape zoneCursor(int zone);

// Plain mode: the rectangle kept on release, from the press point to one pixel short
// of the release point, not normalised. A drag towards the upper left (or along one
// axis only) is empty, and an empty rectangle copies the whole picture.
QRect plainSelection(const QPoint &press, const QPoint &current);

// Enhanced mode: the band's new rectangle while the left button drags `zone`.
QRect draggedRect(int zone, const QRect &band, const QPoint &press, const QPoint &pointer);

// Enhanced mode keyboard: an arrow moves the band by one pixel, Shift+arrow moves its
// right or bottom edge; the result stays inside `area`. Other keys change nothing.
QRect nudgedRect(const QRect &band, int key, bool resize, const QRect &area);

// A selection in overlay (logical) coordinates as device pixels of a picture grabbed
// at `devicePixelRatio`; both edges are rounded, so neighbouring selections tile.
// An empty selection stays as it is: it still stands for the whole picture.
QRect toDevicePixels(const QRect &logical, qreal devicePixelRatio);

} // namespace CaptureGeometry
