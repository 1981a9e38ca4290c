#pragma once

// Marks on the way to the first window, for finding where start-up time goes. Off
// unless asked for: QT_LOGGING_RULES="feedbackagent.startup.debug=true" prints
// "startup <ms since the clock started> <stage>" on standard error for each mark.
// Without it a mark costs one check of a flag.
#include <QLoggingCategory>

Q_DECLARE_LOGGING_CATEGORY(lcStartup)

namespace startuptrace {

// Starts the clock; the first thing main does.
void start();
void mark(const char *stage);
// Marks the first paint event of the widget (a top-level window), when tracing is on.
void markFirstPaint(QObject *window);

} // namespace startuptrace
