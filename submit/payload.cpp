// The report body from the whole form as it stands.
#include "form/emailcheck.h"
#include "form/mainwindow.h"
#include "form/productareas.h"
#include "submit/reportbody.h"
#include "ui_mainwindow.h"

#include <QFile>

QHttpMultiPart *MainWindow::build_payload()
{
    // The area is read from the first selected row; without one there is nothing to
    // send. The form state keeps Send disabled then, so this only guards direct calls.
    const QList<QListWidgetItem *> selectedAreas = ui->list_Area->selectedItems();
    if (selectedAreas.isEmpty())
        return nullptr;

    ReportFields fields;
    fields.name = ui->line_Name->text();
    fields.email = ui->line_Email->text();
    fields.emailValidated = lookupValidated(hostInfo);
    fields.bugReport = reportKind == BugReport;
    fields.build = ui->line_Build->text();
    // The table entry, not the item text: the source-language name is what the server files by.
    fields.area = productAreaNames().value(ui->list_Area->row(selectedAreas.first()));
    fields.nda = ui->check_NDA->isChecked();
    if (ui->check_Include_System_Info->isChecked())
        fields.systemSummary = sysInfo; // none yet means no part
    fields.title = ui->combo_Title->currentText();
    fields.description = ui->edit_Description->toPlainText();

    for (int row = 0; row < ui->tree_Attachments->topLevelItemCount(); ++row) {
        const QTreeWidgetItem *item = ui->tree_Attachments->topLevelItem(row);
        // File rows carry their path in the text, image rows only in the data.
        QString path = item->text(1);
        if (!QFile::exists(path))
            path = item->data(1, Qt::UserRole).toString();
        if (QFile::exists(path))
            fields.attachmentPaths.append(path); // a file gone since it was added is left out without a word
    }
    return buildReportBody(fields);
}
