// The clipboard through QClipboard, for every system but Windows.
#include <QtGlobal>

#ifndef Q_OS_WIN

#include "attachments/clipboard.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>

bool read_image_from_clipboard(QImage &image, const QDir &scratchFolder)
{
    Q_UNUSED(scratchFolder)
    image = QGuiApplication::clipboard()->image();
    return !image.isNull();
}

bool copy_pixmap_to_clipboard(const QPixmap &pixmap, QWidget *owner)
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
