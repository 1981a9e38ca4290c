#include "attachments/clipboardbmp.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QUuid>

QString temporaryBmpPath(const QDir &folder)
{
    return QDir::toNativeSeparators(
        QStringLiteral("%1/%2.bmp").arg(folder.absolutePath(), QUuid::createUuid().toString()));
}

bool loadBmpThroughFile(const std::vector<unsigned char> &bmpFile, const QDir &folder, QImage &image)
{
    const QString path = temporaryBmpPath(folder);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(reinterpret_cast<const char *>(bmpFile.data()), qint64(bmpFile.size()));
    file.close();
    const bool loaded = image.load(path);
    QFile::remove(path);
    return loaded;
}
