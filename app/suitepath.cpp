#include "app/suitepath.h"

#include "app/settingsbase.h"

#include <QDir>
#include <QFileInfo>
#include <QString>

#include <string>

namespace {

QString withoutTrailingSeparator(QString path)
{
    while (path.size() > 1 && (path.endsWith(QLatin1Char('/')) || path.endsWith(QLatin1Char('\\'))))
        path.chop(1);
    return path;
}

QString suiteFolder(int kind)
{
    switch (kind) {
    case SuiteSettingsFolder: {
        const QString base = userSettingsBase();
        if (base.isEmpty())
            return QString();
        return QDir::toNativeSeparators(withoutTrailingSeparator(base) + QLatin1String("/Korvane"));
    }
    case SuiteTempFolder: {
        // No folder at all rather than one that is not there: callers treat an empty
        // answer as "nowhere to write". Some Qt builds hand back TMPDIR unchecked.
        const QString temp = withoutTrailingSeparator(QDir::tempPath());
        if (temp.isEmpty() || !QFileInfo(temp).isDir())
            return QString();
        return QDir::toNativeSeparators(temp);
    }
    default:
        return QString();
    }
}

} // namespace

const char *SuitePath(int kind)
{
    thread_local std::string buffer;
    buffer = suiteFolder(kind).toUtf8().toStdString();
    return buffer.c_str();
}
