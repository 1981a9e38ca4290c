#pragma once

#include <QEventLoop>
#include <QPixmap>
#include <QPoint>
#include <QRect>
#include <QWidget>

class QRubberBand;
class QScreen;
class RubberBandEnhanced;

// The full-screen overlay on which the user picks the part of a grabbed screen to
// keep. Plain mode: drag with the left button, release to accept. Enhanced mode: a
// band with grab zones and a size label, accepted with the right button, nudged
// with the arrow keys. Escape cancels in both modes.
class ScreenShot : public QWidget
{
    Q_OBJECT

public:
    explicit ScreenShot(bool enhanced);
    ~ScreenShot() override;

    // Grabs the screen, shows the overlay full screen on it and returns when the user
    // accepts or cancels: the selected part of the picture, or a null pixmap.
    QPixmap capture(QScreen *screen);

    // The steps capture() takes, for callers that bring their own picture.
    void setBackground(const QPixmap &picture) { m_background = picture; }
    // The band sizes its handles from this geometry, and the overlay takes it.
    void setScreenGeometry(const QRect &geometry);
    void exec();

    bool isEnhanced() const { return m_enhanced; }
    QRubberBand *rubberBand() const { return m_band; }
    QPixmap background() const { return m_background; }
    QPixmap result() const { return m_result; }
    int activeZone() const { return m_activeZone; }
    bool isSelecting() const { return m_selecting; }
    // True once the user accepted or cancelled.
    bool hasEnded() const { return m_ended; }
    // True when capture() got no picture because the desktop's screen-shot service
    // (Wayland's portal) did not give one; the overlay was then not shown.
    bool grabFailed() const { return m_grabFailed; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    RubberBandEnhanced *enhancedBand() const;
    void startSelection();
    void keep(const QRect &selection);
    void end();

    bool m_enhanced;
    QRubberBand *m_band = nullptr;
    int m_activeZone;
    QPixmap m_background;
    QPixmap m_result;
    QPoint m_pressPoint;
    QPoint m_currentPoint;
    bool m_selecting = false;
    bool m_ended = false;
    bool m_grabFailed = false;
    QEventLoop m_loop;
    QScreen *m_screen = nullptr;
    QRect m_screenGeometry;
};
