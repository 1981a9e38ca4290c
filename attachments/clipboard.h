#pragma once

class QPixmap;
class QWidget;

// Puts a picture on the system clipboard as a device-independent bitmap (Windows) or
// as an image (elsewhere), owned by the given window. Failures are silent: the
// screen-shot flow does not look at the result.
bool copy_pixmap_to_clipboard(const QPixmap &pixmap, QWidget *owner);
