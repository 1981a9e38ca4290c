#include "app/startuptrace.h"

#include <QElapsedTimer>
#include <QEvent>

Q_LOGGING_CATEGORY(lcStartup, "feedbackagent.startup", QtWarningMsg)

namespace {

QElapsedTimer &startupClock()
{
    static QElapsedTimer timer;
    return timer;
}

// A child of the window it watches, so that it goes with the window if no paint ever comes.
class FirstPaintWatch : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            startuptrace::mark("first paint");
            watched->removeEventFilter(this);
            deleteLater();
        }
        return false;
    }
};

} // namespace

namespace startuptrace {

void start()
{
    startupClock().start();
}

void mark(const char *stage)
{
    if (lcStartup().isDebugEnabled() && startupClock().isValid())
        qCDebug(lcStartup).noquote() << "startup" << QString::number(startupClock().nsecsElapsed() / 1e6, 'f', 2)
                                     << stage;
}

void markFirstPaint(QObject *window)
{
    if (lcStartup().isDebugEnabled())
        window->installEventFilter(new FirstPaintWatch(window));
}

} // namespace startuptrace
