#pragma once

#include "attachments/capturegeometry.h"

#include <QRect>
#include <QRubberBand>

#include <array>

// The selection rectangle of the enhanced capture: eight handles to resize it and a
// size label in the middle that moves it. The band only paints and hit-tests its
// zones; the overlay that owns it does all the mouse handling.
class RubberBandEnhanced : public QRubberBand
{
    Q_OBJECT

public:
    RubberBandEnhanced(Shape shape, QWidget *parent);

    // The screen the band lives on; the handle sizes follow it.
    void setBounds(const QRect &bounds) { m_bounds = bounds; }
    QRect bounds() const { return m_bounds; }

    // Index of the zone under a global point (the highest that contains it), or
    // CaptureGeometry::NoZone. Updates the hovered flags; when one of them changed it
    // also sets the cursor for the zone and repaints the band.
    int zone_at(const QPoint &globalPoint);

    // A zone's rectangle as last painted, in the band's coordinates; null until then.
    QRect zoneRect(int zone) const { return m_zones.at(zone).rect; }
    bool zoneHovered(int zone) const { return m_zones.at(zone).hovered; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    struct GrabZone
    {
        QRect rect;
        bool hovered = false;
    };
    void paintZone(QPainter &painter, int zone);

    std::array<GrabZone, CaptureGeometry::kZoneCount> m_zones{};
    QRect m_bounds;
};
