// The attachment list of the window: the file dialog, drag and drop, pasted images and
// screen shots. The tree itself is the store: column 1 holds the path the payload sends.
// The rules that need no widget are in attachments/.
#include "attachments/ask.h"
#include "attachments/attachmentrules.h"
#include "attachments/clipboard.h"
#include "attachments/preview.h"
#include "attachments/screenshot.h"
#include "attachments/screengrab.h"
#include "attachments/screenshotflow.h"
#include "form/mainwindow.h"
#include "form/reporttab.h"
#include "ui_mainwindow.h"

#include <QCursor>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImageReader>
#include <QInputDialog>
#include <QMimeData>
#include <QPixmap>
#include <QScreen>
#include <QTimer>
#include <QWindow>

bool MainWindow::canOpenOrWarn(const QString &path)
{
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        return true;
    Ask ask(this, tr("File Access Failure"), appIcon);
    ask.warning(tr("Failed to access file."), QStringList{tr("OK")});
    return false;
}

QString MainWindow::askAttachmentName(const QString &title)
{
    bool accepted = false;
    const QString name = QInputDialog::getText(this, title, tr("Name:"), QLineEdit::Normal, QString(), &accepted);
    return accepted ? name : QString();
}

QTreeWidgetItem *MainWindow::add_attachment_item(const QString &name_or_path, const QPixmap &pixmap)
{
    QTreeWidgetItem *item = new QTreeWidgetItem(ui->tree_Attachments);
    if (!pixmap.isNull()) {
        const ImageEntryFiles files = saveImageEntry(*thumbDir, name_or_path, pixmap.toImage());
        item->setIcon(0, QIcon(QStringLiteral(":/images/Image.png")));
        item->setIcon(1, QIcon(pixmap));
        item->setData(1, Qt::UserRole, files.path);
        item->setToolTip(1, previewToolTip(files.preview));
        return item;
    }

    const QString path = QFileInfo(name_or_path).absoluteFilePath();
    item->setText(1, QDir::toNativeSeparators(path));
    if (QImageReader::imageFormat(path).isEmpty()) {
        item->setIcon(0, QIcon(QStringLiteral(":/images/File.png")));
        return item;
    }
    const QString preview = filePreview(*thumbDir, path);
    if (preview.isEmpty())
        return item; // a picture Qt cannot read: a row with neither icon nor preview
    item->setIcon(0, QIcon(QStringLiteral(":/images/Image.png")));
    item->setToolTip(1, previewToolTip(preview));
    item->setData(1, Qt::UserRole, path);
    return item;
}

void MainWindow::slot_add_attachment()
{
    const QStringList paths =
        QFileDialog::getOpenFileNames(this, tr("Select File..."), QString(), tr("All Files (*.*)"));
    if (paths.isEmpty())
        return;
    for (const QString &path : paths) {
        if (canOpenOrWarn(path))
            add_attachment_item(QDir::toNativeSeparators(path), QPixmap());
    }
    slot_set_control_states();
}

void MainWindow::slot_remove_attachment()
{
    const QList<QTreeWidgetItem *> selected = ui->tree_Attachments->selectedItems();
    for (QTreeWidgetItem *item : selected)
        delete ui->tree_Attachments->takeTopLevelItem(ui->tree_Attachments->indexOfTopLevelItem(item));
    slot_set_control_states();
}

void MainWindow::slot_clear_attachments()
{
    while (ui->tree_Attachments->topLevelItemCount() != 0)
        delete ui->tree_Attachments->takeTopLevelItem(0);
    slot_set_control_states();
}

void MainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    const bool hasUriList = event->mimeData()->hasFormat(QStringLiteral("text/uri-list"));
    if (!hasUriList) {
        event->ignore();
        return;
    }
    if (dragOffersFiles(hasUriList, event->mimeData()->urls()))
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent *event)
{
    for (const QString &path : droppedFilePaths(event->mimeData()->urls())) {
        if (canOpenOrWarn(path)) {
            add_attachment_item(path, QPixmap());
            ui->tabWidget->setCurrentIndex(tabIndex(ReportTab::Attachments));
        }
    }
    event->acceptProposedAction();
    slot_set_control_states();
}

bool MainWindow::read_clipboard_image(QImage &image)
{
    return readImageFromClipboard(image, *thumbDir);
}

void MainWindow::paste_clipboard_image()
{
    // The image is read before the dialog opens: nothing is held while the user types.
    QImage image;
    if (!read_clipboard_image(image))
        return;

    const QString name = image.isNull() ? QString() : askAttachmentName(tr("Name Image"));
    if (name.isEmpty())
        return;

    add_attachment_item(name, QPixmap::fromImage(image));
    slot_set_control_states();
}

void MainWindow::slot_process_screen_shot()
{
    geometryPinned = true;
    minimiseWait.begin();
    showMinimized();
    QTimer::singleShot(screenShotDelayMs(ui->line_Snapshot_Delay->text()), this, SLOT(slot_screen_shot()));
}

void MainWindow::slot_screen_shot()
{
    const MinimiseWait::Step step = minimiseWait.check(isMinimized(), windowHandle() && windowHandle()->isExposed());
    if (step == MinimiseWait::Step::Withdraw)
        hide(); // nothing iconified the window: off the screen all the same
    if (step != MinimiseWait::Step::Grab) {
        QTimer::singleShot(100, this, SLOT(slot_screen_shot()));
        return;
    }
    minimiseWait.end();

    QScreen *screen = screengrab::screenUnderPointer(windowHandle() ? windowHandle()->screen() : nullptr,
                                                     QCursor::pos(), QGuiApplication::screens());
    ScreenShot overlay(ui->check_EnhancedCapture->isChecked());
    const QPixmap picture = overlay.capture(screen);

    const QString name = picture.isNull() ? QString() : askAttachmentName(tr("Name Screen Shot"));
    if (!name.isEmpty()) {
        add_attachment_item(name, picture);
        copyPixmapToClipboard(picture, this);
        ui->tabWidget->setCurrentIndex(tabIndex(ReportTab::Attachments));
    }

    showNormal();
    activateWindow();
    raise();
    geometryPinned = false;
    slot_set_control_states();

    // Told on the restored window, where the user looks next.
    if (overlay.grabFailed()) {
        Ask ask(this, tr("Screen Shot Failure"), appIcon);
        ask.warning(tr("No picture of the screen could be taken: the desktop's screen-shot service did not "
                       "answer or did not allow it."),
                    QStringList{tr("OK")});
    }
}
