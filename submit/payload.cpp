// The report body: one multipart form built from the whole form as it stands.
#include "form/emailcheck.h"
#include "form/mainwindow.h"
#include "form/productareas.h"
#include "submit/attachmentfile.h"
#include "submit/reportjson.h"
#include "ui_mainwindow.h"

#include <QFile>
#include <QFileInfo>
#include <QHttpMultiPart>
#include <QNetworkRequest>

namespace {

QHttpPart formField(const char *disposition, const QByteArray &body)
{
    QHttpPart part;
    part.setHeader(QNetworkRequest::ContentDispositionHeader, QString::fromLatin1(disposition));
    part.setBody(body);
    return part;
}

} // namespace

QHttpMultiPart *MainWindow::build_payload()
{
    // The area is read from the first selected row; without one there is nothing to
    // send. The form state keeps Send disabled then, so this only guards direct calls.
    const QList<QListWidgetItem *> selectedAreas = ui->list_Area->selectedItems();
    if (selectedAreas.isEmpty())
        return nullptr;
    // The table entry, not the item text: the source-language name is what the server files by.
    const QString area = productAreaNames().value(ui->list_Area->row(selectedAreas.first()));

    QHttpMultiPart *multiPart = new QHttpMultiPart(QHttpMultiPart::FormDataType);

    multiPart->append(formField("form-data; name=\"identity\"",
                                identityJson(ui->line_Name->text(), ui->line_Email->text(),
                                             lookupValidated(hostInfo))));
    multiPart->append(formField("form-data; name=\"details\"",
                                detailsJson(reportKind == BugReport, ui->line_Build->text(), area,
                                            ui->check_NDA->isChecked())));
    // No summary yet (or none allowed) means no part at all, never an empty one.
    if (ui->check_Include_System_Info->isChecked() && !sysInfo.isEmpty())
        multiPart->append(formField("form-data; name=\"sysinfo\"", sysInfo.toUtf8()));
    multiPart->append(formField("form-data; name=\"title\"", withCrLf(ui->combo_Title->currentText()).toUtf8()));
    multiPart->append(
        formField("form-data; name=\"description\"", withCrLf(ui->edit_Description->toPlainText()).toUtf8()));

    QStringList fileNames;
    for (int row = 0; row < ui->tree_Attachments->topLevelItemCount(); ++row) {
        const QTreeWidgetItem *item = ui->tree_Attachments->topLevelItem(row);
        // File rows carry their path in the text, image rows only in the data.
        QString path = item->text(1);
        if (!QFile::exists(path))
            path = item->data(1, Qt::UserRole).toString();
        if (!QFile::exists(path))
            continue; // gone since it was added: left out without a word

        const QString fileName = QFileInfo(path).fileName();
        fileNames.append(fileName);

        QHttpPart part;
        part.setHeader(QNetworkRequest::ContentDispositionHeader, fileFieldDisposition(fileName));
        part.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/octet-stream"));

        AttachmentFile *file = new AttachmentFile(path);
        if (!file->openForSending()) {
            delete file;
            multiPart->deleteLater();
            return nullptr;
        }
        // Streamed while the request goes out; closed and freed with the multipart.
        part.setBodyDevice(file);
        file->setParent(multiPart);
        multiPart->append(part);
    }

    if (!fileNames.isEmpty())
        multiPart->append(formField("form-data; name=\"attachments\"", attachmentNameList(fileNames)));

    return multiPart;
}
