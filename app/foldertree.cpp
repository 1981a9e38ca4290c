#include "app/foldertree.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

bool removeFolderTree(const QString &path)
{
    QDir dir(path);
    if (!dir.exists(path))
        return true;
    const QFileInfoList entries = dir.entryInfoList(
        QDir::NoDotAndDotDot | QDir::System | QDir::Hidden | QDir::AllDirs | QDir::Files, QDir::DirsFirst);
    for (const QFileInfo &entry : entries) {
        const bool removed =
            entry.isDir() ? removeFolderTree(entry.absoluteFilePath()) : QFile::remove(entry.absoluteFilePath());
        if (!removed)
            return false;
    }
    return dir.rmdir(path);
}
