#pragma once

// Waits, from a timer, for the capture overlay to be up full screen, records what it
// showed and then plays the user's part on it. The overlay runs its own event loop
// inside the flow, so the test can only act on it from such a timer.

#include "attachments/screenshot.h"

#include "support/testenv.h"

#include <QApplication>
#include <QCursor>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <functional>
#include <memory>

class OverlayWatcher
{
public:
    using Action = std::function<void(ScreenShot *overlay)>;

    explicit OverlayWatcher(Action action)
        : m_action(std::move(action))
    {
        m_timer.setInterval(20);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { poll(); });
        m_timer.start();
    }

    bool fired() const { return m_fired; }
    // True when the overlay was still up twenty seconds after it first showed.
    bool rescued = false;

    // What the overlay was like when it came up.
    QRect geometry;
    QPoint origin; // its top-left corner in global coordinates
    QScreen *screen = nullptr;
    QPixmap background;
    bool fullScreen = false;
    bool mouseTracking = false;
    Qt::CursorShape cursor = Qt::ArrowCursor;

    static ScreenShot *findOverlay()
    {
        const auto widgets = QApplication::topLevelWidgets();
        for (QWidget *widget : widgets) {
            if (ScreenShot *overlay = qobject_cast<ScreenShot *>(widget))
                return overlay;
        }
        return nullptr;
    }

private:
    void poll()
    {
        ScreenShot *overlay = findOverlay();
        if (!overlay || !overlay->isVisible() || !overlay->windowHandle())
            return;
        if (!m_armed) {
            // Should the overlay never settle, or the user's part fail to end the
            // capture, end it, so that the test fails instead of waiting in the
            // overlay's loop for ever.
            m_armed = true;
            QPointer<ScreenShot> guarded(overlay);
            QTimer::singleShot(kEventWaitMs, overlay, [this, guarded] {
                if (guarded && !guarded->hasEnded()) {
                    rescued = true;
                    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
                    QApplication::sendEvent(guarded, &escape);
                }
            });
        }
        if (!overlay->windowHandle()->isExposed())
            return;
        const QRect screenGeometry = overlay->windowHandle()->screen()->geometry();
        // Wait until the window manager has put it in place, as the user sees it.
        if (overlay->mapToGlobal(QPoint(0, 0)) != screenGeometry.topLeft() || overlay->size() != screenGeometry.size())
            return;
        // Keys go to the focused window: wait for the window manager's focus too.
        if (!overlay->isActiveWindow() || ++m_settled < 3)
            return;
        m_timer.stop();
        m_fired = true;
        geometry = overlay->geometry();
        origin = overlay->mapToGlobal(QPoint(0, 0));
        screen = overlay->windowHandle()->screen();
        background = overlay->background();
        fullScreen = overlay->windowState() & Qt::WindowFullScreen;
        mouseTracking = overlay->hasMouseTracking();
        cursor = overlay->cursor().shape();
        if (m_action)
            m_action(overlay);
    }

    Action m_action;
    QTimer m_timer;
    bool m_fired = false;
    bool m_armed = false;
    int m_settled = 0;
};

// Calls `then` once `condition` holds, or once kEventWaitMs have passed without it:
// inside the overlay's own event loop a test can only wait from a timer.
inline void whenTrue(QObject *context, const std::function<bool()> &condition, const std::function<void()> &then)
{
    auto *timer = new QTimer(context);
    const auto clock = std::make_shared<QElapsedTimer>();
    clock->start();
    timer->setInterval(20);
    QObject::connect(timer, &QTimer::timeout, context, [timer, clock, condition, then] {
        if (!condition() && !clock->hasExpired(kEventWaitMs))
            return;
        timer->stop();
        timer->deleteLater();
        then();
    });
    timer->start();
}
