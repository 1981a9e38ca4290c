#include "attachments/screenshotflow.h"

#include <QString>

int screenShotDelayMs(const QString &delayText)
{
    const qint64 milliseconds = qint64(delayText.toInt()) * 1000;
    if (milliseconds == 0)
        return 2000;
    // A timer with a negative timeout never fires, which would leave the window
    // minimised for good.
    return int(qBound(qint64(0), milliseconds, qint64(60000)));
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
