// The attachment list: file dialog, drag and drop, image entries with previews.
#include "form/mainwindow.h"
#include "ui_mainwindow.h"

#include <QDragEnterEvent>
#include <QDropEvent>

QTreeWidgetItem *MainWindow::add_attachment_item(const QString &name_or_path, const QPixmap &pixmap)
{
    Q_UNUSED(name_or_path)
    Q_UNUSED(pixmap)
    return nullptr;
}

void MainWindow::slot_add_attachment()
{
}

void MainWindow::slot_remove_attachment()
{
}

void MainWindow::slot_clear_attachments()
{
}

void MainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    event->ignore();
}

void MainWindow::dropEvent(QDropEvent *event)
{
    event->ignore();
}
