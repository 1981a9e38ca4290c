#include "attachments/capturegeometry.h"

#include <QtMath>

namespace CaptureGeometry {

HandleMetrics handleMetrics(const QSize &bounds)
{
    // Truncated products with these exact constants rather than integer divisions, so
    // that the handles keep the sizes they have always had on every screen width.
    HandleMetrics metrics;
    metrics.hx = int(bounds.width() * 0.005208333333333333);
    metrics.hy = int(bounds.height() * 0.008333333333333333);
    metrics.margin = int(bounds.width() * 0.0015625);
    return metrics;
}

ZoneLayout zoneLayout(const QRect &bounds, const QRect &band, const QRect &textBounds)
{
    ZoneLayout layout;
    const HandleMetrics k = handleMetrics(bounds.size());
    const int x1 = band.left();
    const int y1 = band.top();
    const int x2 = band.right();
    const int y2 = band.bottom();
    const int w = band.width();
    const int h = band.height();
    if (w <= 2 * k.hx || h <= 2 * k.hy)
        return layout;
    layout.handles = true;

    const int halfX = k.hx / 2;
    const int halfY = k.hy / 2;
    const auto place = [&layout](int zone, const QRect &rect) {
        layout.present[zone] = true;
        layout.zones[zone] = rect;
    };
    const bool tallEnough = h > 3 * k.hy;
    const bool wideEnough = w > 3 * k.hx;

    place(TopLeft, QRect(x1, y1, k.hx, k.hy));
    // The left handle is centred with the horizontal half size; users know it there.
    if (tallEnough)
        place(Left, QRect(x1, y1 + h / 2 - halfX, k.hx, k.hy));
    place(BottomLeft, QRect(x1, y2 - k.hy + 1, k.hx, k.hy));
    if (wideEnough)
        place(Bottom, QRect(x1 + w / 2 - halfX, y2 - k.hy + 1, k.hx, k.hy));
    place(BottomRight, QRect(x2 - k.hx + 1, y2 - k.hy + 1, k.hx, k.hy));
    if (tallEnough)
        place(Right, QRect(x2 - k.hx + 1, y1 + h / 2 - halfY, k.hx, k.hy));
    place(TopRight, QRect(x2 - k.hx + 1, y1, k.hx, k.hy));
    if (wideEnough)
        place(Top, QRect(x1 + w / 2 - halfX, y1, k.hx, k.hy));

    const int tw = textBounds.right() - textBounds.left();
    const int th = textBounds.bottom() - textBounds.top();
    if (w > 2 * k.hx + 1 + tw && h > 2 * k.hy + 1 + th) {
        const int left = x1 + w / 2 - (tw + 1) / 2 - k.margin;
        const int top = y1 + h / 2 - (th + 1) / 2 - k.margin;
        place(SizeLabel, QRect(QPoint(left, top), QPoint(left + 2 * k.margin + tw, top + 2 * k.margin + th)));
    }
    return layout;
}

QString sizeLabelText(const QSize &size)
{
    return QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
}

Qt::CursorShape zoneCursor(int zone)
{
    switch (zone) {
    case TopLeft:
    case BottomRight:
        return Qt::SizeFDiagCursor;
    case Top:
    case Bottom:
        return Qt::SizeVerCursor;
    case TopRight:
    case BottomLeft:
        return Qt::SizeBDiagCursor;
    case Right:
    case Left:
        return Qt::SizeHorCursor;
    case SizeLabel:
        return Qt::SizeAllCursor;
    default:
        return Qt::CrossCursor;
    }
}

QRect plainSelection(const QPoint &press, const QPoint &current)
{
    return QRect(press, QPoint(current.x() - 1, current.y() - 1));
}

QRect draggedRect(int zone, const QRect &band, const QPoint &press, const QPoint &pointer)
{
    QRect r = band;
    switch (zone) {
    case TopLeft:
        r.setTopLeft(pointer);
        break;
    case Top:
        r.setTop(pointer.y());
        break;
    case TopRight:
        r.setTop(pointer.y());
        r.setRight(pointer.x());
        break;
    case Right:
        r.setRight(pointer.x());
        break;
    case BottomRight:
        r.setBottomRight(pointer);
        break;
    case Bottom:
        r.setBottom(pointer.y());
        break;
    case BottomLeft:
        r.setLeft(pointer.x());
        r.setBottom(pointer.y());
        break;
    case Left:
        r.setLeft(pointer.x());
        break;
    case SizeLabel:
        r.translate(pointer - band.center());
        break;
    default:
        r = QRect(press, pointer);
        break;
    }
    return r.normalized();
}

QRect nudgedRect(const QRect &band, int key, bool resize, const QRect &area)
{
    int dx = 0;
    int dy = 0;
    switch (key) {
    case Qt::Key_Left:
        dx = -1;
        break;
    case Qt::Key_Right:
        dx = 1;
        break;
    case Qt::Key_Up:
        dy = -1;
        break;
    case Qt::Key_Down:
        dy = 1;
        break;
    default:
        return band;
    }

    QRect r = band;
    if (resize) {
        // The top-left corner stays; the band never shrinks below one pixel.
        r.setRight(qBound(r.left(), r.right() + dx, qMax(r.left(), area.right())));
        r.setBottom(qBound(r.top(), r.bottom() + dy, qMax(r.top(), area.bottom())));
        return r;
    }
    r.translate(dx, dy);
    if (r.width() <= area.width())
        r.moveLeft(qBound(area.left(), r.left(), area.right() - r.width() + 1));
    if (r.height() <= area.height())
        r.moveTop(qBound(area.top(), r.top(), area.bottom() - r.height() + 1));
    return r;
}

QRect toDevicePixels(const QRect &logical, qreal devicePixelRatio)
{
    if (logical.isEmpty() || qFuzzyCompare(devicePixelRatio, qreal(1)))
        return logical;
    const int left = qRound(logical.x() * devicePixelRatio);
    const int top = qRound(logical.y() * devicePixelRatio);
    const int right = qRound((logical.x() + logical.width()) * devicePixelRatio);
    const int bottom = qRound((logical.y() + logical.height()) * devicePixelRatio);
    return QRect(left, top, right - left, bottom - top);
}

} // namespace CaptureGeometry
