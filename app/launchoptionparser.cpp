#include "app/launchoptionparser.h"

#include <QRegExp>

namespace {

// Each pattern must match the whole text (exactMatch). "." takes any character and
// "\w" any letter, digit, mark or "_", Unicode included.
const char kUrlPattern[] = "kvfb://(.+)";
const char kUrlPartPattern[] = "(\\w+)(=(.+))?";
const char kArgumentPattern[] = "\\-\\-(\\w+)(=(.+))?";

QRegExp launchPattern(const char *pattern)
{
    return QRegExp(QString::fromLatin1(pattern), Qt::CaseSensitive, QRegExp::RegExp);
}

} // namespace

QList<LaunchOption> parseLaunchOptions(const QStringList &arguments)
{
    QList<LaunchOption> options;
    if (arguments.isEmpty())
        return options;

    QRegExp url = launchPattern(kUrlPattern);
    if (url.exactMatch(arguments.first())) {
        // A URL handler may add one closing "/"; only that one is dropped.
        QString parts = url.cap(1);
        if (parts.endsWith(QLatin1Char('/')))
            parts.chop(1);
        QRegExp part = launchPattern(kUrlPartPattern);
        for (const QString &text : parts.split(QLatin1Char(','))) {
            if (part.exactMatch(text))
                options.append(LaunchOption(part.cap(1), part.cap(3)));
        }
        return options;
    }

    QRegExp argument = launchPattern(kArgumentPattern);
    for (const QString &text : arguments) {
        if (argument.exactMatch(text) && !argument.cap(1).isEmpty())
            options.append(LaunchOption(argument.cap(1), argument.cap(3)));
    }
    return options;
}
