#include "attachments/preview.h"

#include "attachments/attachmentrules.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QUuid>

namespace {

// Files up to this size are decoded from memory (see readForPreview).
constexpr qint64 kJpegInMemoryLimit = 64 * 1024 * 1024;

} // namespace

QString uuidPngPath(const QDir &folder)
{
    return QDir::toNativeSeparators(
        QStringLiteral("%1/%2.png").arg(folder.absolutePath(), QUuid::createUuid().toString()));
}

// Previews are written with zlib's fastest level (Qt maps a PNG quality of 80 to it): for
// a photograph's preview that is a sixth of the default level's time, and PNG stays
// lossless, so only the file is larger.
bool savePreview(const QImage &image, const QString &path)
{
    return image.save(path, "PNG", 80);
}

// A JPEG is decoded straight at preview size, which spares decoding every pixel of a
// camera picture only to throw most of them away. The preview gets the size the
// scaling below would give it; a size that would round to nothing is left alone.
// A JPEG of ordinary size is decoded from memory: Qt's reader then hands libjpeg the
// whole file at once instead of 4 KiB at a time, which keeps its entropy decoder on
// its fast path (about an eighth less time for a camera picture). A larger file is
// read as it lies, so a huge one cannot make the program hold all of it.
QImage readForPreview(const QString &path)
{
    QImageReader reader(path);
    if (reader.format() != "jpeg")
        return reader.read();
    const QSize full = reader.size();

    QByteArray bytes;
    QBuffer buffer(&bytes);
    QFile file(path);
    if (file.size() <= kJpegInMemoryLimit && file.open(QIODevice::ReadOnly)) {
        bytes = file.readAll();
        if (bytes.size() == file.size() && buffer.open(QIODevice::ReadOnly)) {
            reader.setDevice(&buffer);
            reader.setFormat("jpeg");
        }
    }
    if (full.width() > kPreviewLimit || full.height() > kPreviewLimit) {
        const QSize preview = full.scaled(kPreviewLimit, kPreviewLimit, Qt::KeepAspectRatio);
        if (!preview.isEmpty())
            reader.setScaledSize(preview);
    }
    return reader.read();
}

ImageEntryFiles saveImageEntry(const QDir &folder, const QString &givenName, const QImage &image)
{
    ImageEntryFiles files;
    files.path = freeImageEntryPath(folder, imageEntryBaseName(givenName));
    image.save(files.path);
    files.preview = files.path;
    if (image.width() > kPreviewLimit || image.height() > kPreviewLimit) {
        files.preview = uuidPngPath(folder);
        savePreview(image.scaled(kPreviewLimit, kPreviewLimit, Qt::KeepAspectRatio, Qt::SmoothTransformation),
                    files.preview);
    }
    return files;
}

QString filePreview(const QDir &folder, const QString &path)
{
    QImage image = readForPreview(path);
    if (image.isNull())
        return QString();
    if (image.width() > kPreviewLimit || image.height() > kPreviewLimit)
        image = image.scaled(kPreviewLimit, kPreviewLimit, Qt::KeepAspectRatio, Qt::FastTransformation);
    const QString copy = uuidPngPath(folder);
    return savePreview(image, copy) ? copy : path;
}
