#pragma once

class QDir;
class QImage;
class QPixmap;
class QWidget;

// Puts a picture on the system clipboard as a device-independent bitmap (Windows) or
// as an image (elsewhere), owned by the given window. Failures are silent: the
// screen-shot flow does not look at the result.
bool copyPixmapToClipboard(const QPixmap &pixmap, QWidget *owner);

// Reads the picture on the system clipboard into image; true when one was loaded.
// On Windows the bitmap takes a detour through a temporary BMP file in scratchFolder,
// which is removed again; elsewhere the folder is not used.
bool readImageFromClipboard(QImage &image, const QDir &scratchFolder);
