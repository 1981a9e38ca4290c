#include "attachments/rubberbandenhanced.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QTextOption>

using namespace CaptureGeometry;

RubberBandEnhanced::RubberBandEnhanced(Shape shape, QWidget *parent)
    : QRubberBand(shape, parent)
{
    // QRubberBand lets the mouse through; this band must be the widget under the
    // pointer so that its zone cursors and its tool tip show. The presses and moves
    // it ignores still reach the overlay, hover moves included: Qt drops a move with
    // no button held at a widget that does not track the mouse, so the band tracks it.
    setAttribute(Qt::WA_TransparentForMouseEvents, false);
    setMouseTracking(true);
}

int RubberBandEnhanced::zone_at(const QPoint &globalPoint)
{
    const QPoint point = mapFromGlobal(globalPoint);
    int index = NoZone;
    bool changed = false;
    for (int zone = 0; zone < kZoneCount; ++zone) {
        const bool inside = m_zones[zone].rect.contains(point);
        if (inside != m_zones[zone].hovered) {
            m_zones[zone].hovered = inside;
            changed = true;
        }
        if (inside)
            index = zone;
    }
    if (!changed)
        return index;
    setCursor(zoneCursor(index));
    repaint();
    return index;
}

void RubberBandEnhanced::paintEvent(QPaintEvent *event)
{
    QRubberBand::paintEvent(event);

    const QRect band = event->rect();
    const QString text = sizeLabelText(band.size());
    QPainter painter(this);
    const ZoneLayout layout = zoneLayout(m_bounds, band, painter.fontMetrics().boundingRect(text));
    if (!layout.handles)
        return;

    painter.save();
    painter.setPen(QPen(Qt::black));
    for (int zone : kHandlePaintOrder) {
        if (!layout.present[zone])
            continue;
        m_zones[zone].rect = layout.zones[zone];
        paintZone(painter, zone);
    }
    if (layout.present[SizeLabel]) {
        const int margin = handleMetrics(m_bounds.size()).margin;
        m_zones[SizeLabel].rect = layout.zones[SizeLabel];
        paintZone(painter, SizeLabel);
        painter.setPen(m_zones[SizeLabel].hovered ? Qt::black : Qt::white);
        painter.drawText(QRectF(m_zones[SizeLabel].rect.adjusted(margin, margin, -margin, -margin)), text,
                         QTextOption());
    }
    painter.restore();
}

void RubberBandEnhanced::paintZone(QPainter &painter, int zone)
{
    const QBrush brush(m_zones[zone].hovered ? Qt::cyan : Qt::darkCyan, Qt::SolidPattern);
    painter.fillRect(m_zones[zone].rect, brush);
    painter.setBrush(brush);
    painter.drawRect(m_zones[zone].rect);
}

void RubberBandEnhanced::mousePressEvent(QMouseEvent *event)
{
    QWidget::mousePressEvent(event);
}

void RubberBandEnhanced::mouseReleaseEvent(QMouseEvent *event)
{
    QWidget::mouseReleaseEvent(event);
}
