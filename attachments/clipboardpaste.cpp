// Ctrl+V on the Attachments tab: an image from the clipboard becomes an attachment.
#include "attachments/clipboard.h"
#include "form/mainwindow.h"

#include <QInputDialog>
#include <QPixmap>

bool MainWindow::read_clipboard_image(QImage &image)
{
    return read_image_from_clipboard(image, *thumbDir);
}

void MainWindow::paste_clipboard_image()
{
    // The image is read before the dialog opens: nothing is held while the user types.
    QImage image;
    if (!read_clipboard_image(image))
        return;

    QString name;
    if (!image.isNull()) {
        bool accepted = false;
        name = QInputDialog::getText(this, tr("Name Image"), tr("Name:"), QLineEdit::Normal, QString(), &accepted);
        if (!accepted)
            name.clear();
    }
    if (name.isEmpty())
        return;

    add_attachment_item(name, QPixmap::fromImage(image));
    slot_set_control_states();
}
