#include "attachments/clipboardbmp.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QUuid>

QString temporary_bmp_path(const QDir &folder)
{
    return QDir::toNativeSeparators(
        QStringLiteral("%1/%2.bmp").arg(folder.absolutePath(), QUuid::createUuid().toString()));
}

bool load_bmp_through_file(const std::vector<unsigned char> &bmpFile, const QDir &folder, QImage &image)
{
    const QString path = temporary_bmp_path(folder);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(reinterpret_cast<const char *>(bmpFile.data()), qint64(bmpFile.size()));
    file.close();
    const bool loaded = image.load(path);
    QFile::remove(path);
    return loaded;
}
