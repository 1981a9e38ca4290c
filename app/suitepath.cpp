#include "app/suitepath.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
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
#ifdef Q_OS_WIN
        // %APPDATA% is the roaming profile folder where the suite keeps its settings.
        const QString base = qEnvironmentVariable("APPDATA");
#else
        const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
#endif
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
