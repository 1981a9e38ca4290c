#include "app/titlehistory.h"

namespace titlehistory {

bool joins(const QStringList &history, const QString &title)
{
    return !title.isEmpty() && !history.contains(title, Qt::CaseSensitive);
}

QStringList stored(const QStringList &history)
{
    QStringList titles;
    for (const QString &title : history) {
        if (!titles.contains(title, Qt::CaseSensitive))
            titles.append(title);
    }
    return titles;
}

} // namespace titlehistory
