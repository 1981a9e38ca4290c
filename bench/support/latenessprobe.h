#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>
#include <functional>

// A precise timer on the GUI thread. The longest gap between two of its ticks (or
// between start() and the first one) is how long the event loop was kept from a
// user's input or a repaint; the lateness is that gap less the interval.
class LatenessProbe
{
public:
    explicit LatenessProbe(int intervalMs)
        : m_intervalMs(intervalMs)
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.setInterval(intervalMs);
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            const qint64 now = m_clock.nsecsElapsed();
            m_worstGapNs = std::max(m_worstGapNs, now - m_last);
            m_last = now;
            if (m_onTick)
                m_onTick();
        });
    }

    // Called after each tick is measured; may stop the caller's event loop.
    void setOnTick(std::function<void()> onTick) { m_onTick = std::move(onTick); }

    void start()
    {
        m_worstGapNs = 0;
        m_last = 0;
        m_clock.start();
        m_timer.start();
    }
    void stop() { m_timer.stop(); }

    double elapsedMs() const { return m_clock.nsecsElapsed() / 1e6; }
    double worstGapMs() const { return m_worstGapNs / 1e6; }
    double worstLatenessMs() const { return std::max(0.0, worstGapMs() - m_intervalMs); }

private:
    int m_intervalMs;
    QTimer m_timer;
    QElapsedTimer m_clock;
    qint64 m_last = 0;
    qint64 m_worstGapNs = 0;
    std::function<void()> m_onTick;
};
