// The attachment list: file dialog, drag and drop, image entries with previews.
// The tree itself is the store: column 1 holds the path that the payload sends.
#include "attachments/ask.h"
#include "form/mainwindow.h"
#include "form/reporttab.h"
#include "ui_mainwindow.h"

#include <QBuffer>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QImageReader>
#include <QMimeData>
#include <QUuid>

namespace {

const int kPreviewLimit = 512;

QString previewToolTip(const QString &previewPath)
{
    return QStringLiteral("<html><img src='%1'/></html>").arg(previewPath);
}

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
constexpr qint64 kJpegInMemoryLimit = 64 * 1024 * 1024;

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

} // namespace

QTreeWidgetItem *MainWindow::add_attachment_item(const QString &name_or_path, const QPixmap &pixmap)
{
    if (!pixmap.isNull()) {
        QString name = name_or_path;
        name.replace(QRegExp(QStringLiteral("[&]")), QStringLiteral("and"));
        name.replace(QRegExp(QStringLiteral("[*?$! ]")), QStringLiteral("_"));

        const QImage image = pixmap.toImage();
        const QString folder = thumbDir->absolutePath();
        QString path = QDir::toNativeSeparators(QStringLiteral("%1/%2.png").arg(folder, name));
        for (int counter = 1; QFile::exists(path); ++counter)
            path = QDir::toNativeSeparators(
                QStringLiteral("%1/%2_%3.png").arg(folder, name, QString::number(counter)));
        image.save(path); // a failed save is not detected: the row points at a missing file

        QTreeWidgetItem *item = new QTreeWidgetItem(ui->tree_Attachments);
        item->setIcon(0, QIcon(QStringLiteral(":/images/Image.png")));
        item->setIcon(1, QIcon(pixmap));
        item->setData(1, Qt::UserRole, path);

        // Small pictures are their own preview.
        QString preview = path;
        if (image.width() > kPreviewLimit || image.height() > kPreviewLimit) {
            preview = uuidPngPath(*thumbDir);
            savePreview(image.scaled(kPreviewLimit, kPreviewLimit, Qt::KeepAspectRatio, Qt::SmoothTransformation),
                        preview);
        }
        item->setToolTip(1, previewToolTip(preview));
        return item;
    }

    const QFileInfo info(name_or_path);
    QTreeWidgetItem *item = new QTreeWidgetItem(ui->tree_Attachments);
    item->setText(1, QDir::toNativeSeparators(info.absoluteFilePath()));

    if (QImageReader::imageFormat(info.absoluteFilePath()).isEmpty()) {
        item->setIcon(0, QIcon(QStringLiteral(":/images/File.png")));
        return item;
    }
    QImage image = readForPreview(info.absoluteFilePath());
    if (image.isNull())
        return item;

    item->setIcon(0, QIcon(QStringLiteral(":/images/Image.png")));
    // Fast scaling here, unlike image entries: this preview is only a tool tip.
    if (image.width() > kPreviewLimit || image.height() > kPreviewLimit)
        image = image.scaled(kPreviewLimit, kPreviewLimit, Qt::KeepAspectRatio, Qt::FastTransformation);
    const QString copy = uuidPngPath(*thumbDir);
    const QString preview = savePreview(image, copy) ? copy : info.absoluteFilePath();
    item->setToolTip(1, previewToolTip(preview));
    item->setData(1, Qt::UserRole, info.absoluteFilePath());
    return item;
}

void MainWindow::slot_add_attachment()
{
    const QStringList paths =
        QFileDialog::getOpenFileNames(this, tr("Select File..."), QString(), tr("All Files (*.*)"));
    if (paths.isEmpty())
        return;
    for (const QString &path : paths) {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly)) {
            add_attachment_item(QDir::toNativeSeparators(path), QPixmap());
        } else {
            Ask ask(this, tr("File Access Failure"), appIcon);
            ask.warning(tr("Failed to access file."), QStringList{tr("OK")});
        }
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
    if (!event->mimeData()->hasFormat(QStringLiteral("text/uri-list"))) {
        event->ignore();
        return;
    }
    int files = 0;
    for (const QUrl &url : event->mimeData()->urls()) {
        if (!QFileInfo(url.toLocalFile()).isDir())
            ++files;
    }
    if (files >= 1)
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent *event)
{
    for (const QUrl &url : event->mimeData()->urls()) {
        const QFileInfo info(url.toLocalFile());
        if (info.isDir())
            continue;
        QFile file(info.absoluteFilePath());
        if (file.open(QIODevice::ReadOnly)) {
            add_attachment_item(info.absoluteFilePath(), QPixmap());
            ui->tabWidget->setCurrentIndex(tabIndex(ReportTab::Attachments));
        } else {
            Ask ask(this, tr("File Access Failure"), appIcon);
            ask.warning(tr("Failed to access file."), QStringList{tr("OK")});
        }
    }
    event->acceptProposedAction();
    slot_set_control_states();
}
