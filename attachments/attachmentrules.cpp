#include "attachments/attachmentrules.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegExp>

bool dragOffersFiles(bool hasUriList, const QList<QUrl> &urls)
{
    return hasUriList && !droppedFilePaths(urls).isEmpty();
}

QStringList droppedFilePaths(const QList<QUrl> &urls)
{
    QStringList paths;
    for (const QUrl &url : urls) {
        const QFileInfo info(url.toLocalFile());
        if (!info.isDir())
            paths.append(info.absoluteFilePath());
    }
    return paths;
}

QString imageEntryBaseName(const QString &givenName)
{
    QString name = givenName;
    name.replace(QRegExp(QStringLiteral("[&]")), QStringLiteral("and"));
    name.replace(QRegExp(QStringLiteral("[*?$! ]")), QStringLiteral("_"));
    return name;
}

QString freeImageEntryPath(const QDir &folder, const QString &baseName)
{
    const QString folderPath = folder.absolutePath();
    QString path = QDir::toNativeSeparators(QStringLiteral("%1/%2.png").arg(folderPath, baseName));
    for (int counter = 1; QFile::exists(path); ++counter)
        path = QDir::toNativeSeparators(
            QStringLiteral("%1/%2_%3.png").arg(folderPath, baseName, QString::number(counter)));
    return path;
}

QString previewToolTip(const QString &previewPath)
{
    return QStringLiteral("<html><img src='%1'/></html>").arg(previewPath);
}
