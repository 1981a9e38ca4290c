#include "attachments/screenshot.h"

#include "attachments/capturegeometry.h"
#include "attachments/rubberbandenhanced.h"
#include "attachments/screengrab.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QWindow>

using namespace CaptureGeometry;

ScreenShot::ScreenShot(bool enhanced)
    : QWidget(nullptr)
    , m_enhanced(enhanced)
    , m_activeZone(NoZone)
{
    if (enhanced) {
        m_band = new RubberBandEnhanced(QRubberBand::Rectangle, this);
        m_band->setToolTip(tr("LMB: Start a new selection\nRMB: Accept capture"));
    } else {
        m_band = new QRubberBand(QRubberBand::Rectangle, this);
    }
}

ScreenShot::~ScreenShot() = default;

QPixmap ScreenShot::capture(QScreen *screen)
{
    if (!screen)
        return QPixmap();
    m_screen = screen;
    const screengrab::Result grab = screengrab::grabScreen(screen);
    m_grabFailed = grab.picture.isNull() && grab.viaDesktopPortal;
    if (m_grabFailed)
        return QPixmap(); // a black overlay would only puzzle the user
    setBackground(grab.picture);
    setScreenGeometry(screen->geometry());
    // Place the window on the grabbed screen before it goes full screen there.
    if (!windowHandle())
        create();
    windowHandle()->setScreen(screen);

    setMouseTracking(true);
    showFullScreen();
    activateWindow();
    raise();
    setCursor(Qt::CrossCursor);
    exec();
    unsetCursor();
    setMouseTracking(false);
    hide();
    return m_result;
}

void ScreenShot::setScreenGeometry(const QRect &geometry)
{
    m_screenGeometry = geometry;
    if (RubberBandEnhanced *band = enhancedBand())
        band->setBounds(geometry);
    setGeometry(geometry);
}

void ScreenShot::exec()
{
    if (!m_ended)
        m_loop.exec();
}

RubberBandEnhanced *ScreenShot::enhancedBand() const
{
    return m_enhanced ? static_cast<RubberBandEnhanced *>(m_band) : nullptr;
}

void ScreenShot::paintEvent(QPaintEvent *)
{
    // The picture as it was grabbed: no dimming, no hint text.
    if (m_background.isNull())
        return;
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_background);
}

void ScreenShot::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        m_band->hide();
        m_selecting = false;
        end();
    } else if (m_enhanced && m_selecting && !m_band->isHidden()) {
        const bool resize = event->modifiers() & Qt::ShiftModifier;
        m_band->setGeometry(nudgedRect(m_band->geometry(), event->key(), resize, rect()));
    }
    QWidget::keyPressEvent(event);
}

void ScreenShot::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        m_pressPoint = event->pos();
        m_currentPoint = event->pos();
        bool restart = true;
        if (m_enhanced && !m_band->isHidden()) {
            if (m_band->geometry().contains(m_pressPoint)) {
                // Off the zones the band starts again at once. It is not hidden in
                // between: the press went to the band, and hiding the widget that took
                // the press would make Qt drop the moves of the drag that follows.
                m_activeZone = enhancedBand()->zone_at(m_pressPoint + m_screenGeometry.topLeft());
                restart = m_activeZone == NoZone;
            } else {
                m_band->hide();
            }
        }
        if (restart)
            startSelection();
    } else if (event->button() == Qt::RightButton) {
        // Only the enhanced mode accepts with the right button; without a selection,
        // and always in plain mode, the right button cancels.
        if (m_selecting) {
            m_band->hide();
            if (m_enhanced)
                keep(m_band->geometry());
        }
        m_selecting = false;
        end();
    }
}

void ScreenShot::startSelection()
{
    m_activeZone = NoZone;
    m_band->setGeometry(QRect(m_pressPoint, QPoint(m_pressPoint.x() - 2, m_pressPoint.y() - 2)));
    m_band->show();
    m_selecting = true;
}

void ScreenShot::mouseMoveEvent(QMouseEvent *event)
{
    const bool leftHeld = event->buttons() & Qt::LeftButton;
    if (!m_enhanced) {
        if (leftHeld && m_selecting) {
            m_currentPoint = event->pos();
            m_band->setGeometry(QRect(m_pressPoint, m_currentPoint).normalized());
        }
        return;
    }

    m_currentPoint = event->pos();
    if (!leftHeld) {
        if (m_selecting)
            m_activeZone = enhancedBand()->zone_at(event->pos() + m_screenGeometry.topLeft());
        return;
    }
    if (m_selecting)
        m_band->setGeometry(draggedRect(m_activeZone, m_band->geometry(), m_pressPoint, m_currentPoint));
}

void ScreenShot::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_enhanced) {
        event->ignore();
        return;
    }
    if (event->button() != Qt::LeftButton || !m_selecting)
        return;
    m_band->hide();
    m_selecting = false;
    if (m_pressPoint == m_currentPoint) {
        end();
        return;
    }
    keep(plainSelection(m_pressPoint, m_currentPoint));
    end();
}

void ScreenShot::keep(const QRect &selection)
{
    // The overlay works in logical pixels; the grabbed picture has device pixels.
    m_result = m_background.copy(toDevicePixels(selection, m_background.devicePixelRatio()));
}

void ScreenShot::end()
{
    m_ended = true;
    m_loop.quit();
}
