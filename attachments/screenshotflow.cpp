#include "attachments/screenshotflow.h"

#include <QString>
#include <QtGlobal>

int screenShotDelayMs(const QString &delayText)
{
    const qint64 milliseconds = qint64(delayText.toInt()) * 1000;
    if (milliseconds == 0)
        return 2000;
    // A timer with a negative timeout never fires, which would leave the window
    // minimised for good.
    return int(qBound(qint64(0), milliseconds, qint64(60000)));
}
