#include "attachments/screenshotflow.h"

#include <QString>

namespace snapshotdelay {

QString defaultText()
{
    return QString::number(kDefaultSeconds);
}

QString clamped(const QString &text)
{
    const int seconds = text.toInt();
    if (seconds <= kDefaultSeconds)
        return defaultText();
    if (seconds > kCeilingSeconds)
        return QString::number(kCeilingSeconds);
    return text;
}

} // namespace snapshotdelay

int screenShotDelayMs(const QString &delayText)
{
    const qint64 milliseconds = qint64(delayText.toInt()) * 1000;
    if (milliseconds == 0)
        return snapshotdelay::kDefaultSeconds * 1000;
    // A timer with a negative timeout never fires, which would leave the window
    // minimised for good.
    return int(qBound(qint64(0), milliseconds, qint64(snapshotdelay::kCeilingSeconds) * 1000));
}

MinimiseWait::Step MinimiseWait::next(bool minimised, bool exposed, bool flowMinimised, bool withdrawn,
                                      qint64 sinceFirstCheckMs)
{
    // A withdrawn window is as minimised as the desktop lets it be: Wayland has no
    // minimised state to report, and X11 window managers that do not iconify reset it.
    if ((minimised || withdrawn) && !exposed)
        return Step::Grab;
    if (!flowMinimised || withdrawn || sinceFirstCheckMs < kWindowManagerGraceMs)
        return Step::CheckAgain;
    return Step::Withdraw;
}

void MinimiseWait::begin()
{
    m_flowMinimised = true;
    m_withdrawn = false;
    m_sinceFirstCheck.invalidate();
}

MinimiseWait::Step MinimiseWait::check(bool minimised, bool exposed)
{
    if (!m_sinceFirstCheck.isValid())
        m_sinceFirstCheck.start();
    const Step step = next(minimised, exposed, m_flowMinimised, m_withdrawn, m_sinceFirstCheck.elapsed());
    if (step == Step::Withdraw)
        m_withdrawn = true;
    return step;
}

void MinimiseWait::end()
{
    m_flowMinimised = false;
    m_withdrawn = false;
    m_sinceFirstCheck.invalidate();
}
