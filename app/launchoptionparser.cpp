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

LaunchRequest launchRequest(const QList<LaunchOption> &options)
{
    using Action = LaunchRequest::Action;
    LaunchRequest request;
    for (const LaunchOption &option : options) {
        const QString &key = option.first;
        const QString &value = option.second;
        if (key == QLatin1String("mode")) {
            request.steps.append({Action::FixKind, QString()});
            if (value == QLatin1String("bug"))
                request.steps.append({Action::ShowBugReport, QString()});
            else if (value == QLatin1String("feature"))
                request.steps.append({Action::ShowFeatureRequest, QString()});
        } else if (key == QLatin1String("attach")) {
            request.steps.append({Action::Attach, value});
        } else if (key == QLatin1String("area")) {
            request.area = value;
        } else if (key == QLatin1String("lockarea")) {
            request.lockArea = true;
        }
    }
    return request;
}
