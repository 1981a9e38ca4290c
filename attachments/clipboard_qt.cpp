// The clipboard through QClipboard, for every system but Windows.
#include <QtGlobal>

#ifndef Q_OS_WIN

#include "attachments/clipboard.h"
#include "attachments/imagelimits.h"

#include <QBuffer>
#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QImageReader>
#include <QMimeData>
#include <QPixmap>

namespace {

// Decodes a picture another program offered, unless its header claims more pixels than
// the bound or says nothing of its size: Qt 5 itself would allocate whatever it claims.
QImage decodeWithinBound(const QByteArray &encoded)
{
    QBuffer buffer;
    buffer.setData(encoded);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    const QSize size = reader.size(); // read from the header; nothing is decoded yet
    if (!size.isValid() || !imagelimits::withinPixelBound(size.width(), size.height()))
        return QImage();
    return reader.read();
}

} // namespace

bool readImageFromClipboard(QImage &image, const QDir &scratchFolder)
{
    Q_UNUSED(scratchFolder)
    image = QImage();
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    if (!data || !data->hasImage())
        return false;
    // Asked for bytes rather than for an image, Qt picks the same offered format that
    // QClipboard::image() would decode, but leaves the decoding to us.
    const QByteArray encoded = data->data(QStringLiteral("application/x-qt-image"));
    if (!encoded.isEmpty())
        image = decodeWithinBound(encoded);
    else // a picture this process put there holds no bytes: it is an image already
        image = qvariant_cast<QImage>(data->imageData());
    return !image.isNull();
}

bool copyPixmapToClipboard(const QPixmap &pixmap, QWidget *owner)
{
    Q_UNUSED(owner) // X11 and Wayland make the application the owner
    // Like the Windows copy, a picture that cannot be copied still empties the clipboard.
    if (pixmap.isNull()) {
        QGuiApplication::clipboard()->clear();
        return false;
    }
    QGuiApplication::clipboard()->setPixmap(pixmap);
    return true;
}

#endif
