// Sending the report: the body gathered from the form, the post, its progress and its
// outcome. The body's parts are made by submit/reportbody from plain values.
#include "form/emailcheck.h"
#include "form/mainwindow.h"
#include "form/productareas.h"
#include "submit/reportbody.h"
#include "submit/sendtarget.h"
#include "ui_mainwindow.h"

#include <QCoreApplication>
#include <QFile>
#include <QHttpMultiPart>
#include <QMessageBox>
#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QPointer>

#include <limits>

namespace {

// Byte counts beyond the bar's int range are clamped rather than wrapped into negatives.
int toBarRange(qint64 bytes)
{
    return int(qBound<qint64>(std::numeric_limits<int>::min(), bytes, std::numeric_limits<int>::max()));
}

// The files the rows name, in order: file rows carry their path in the text, image rows
// only in the data. A file gone since it was added is left out without a word.
QStringList attachmentPaths(const QTreeWidget &tree)
{
    QStringList paths;
    for (int row = 0; row < tree.topLevelItemCount(); ++row) {
        const QTreeWidgetItem *item = tree.topLevelItem(row);
        QString path = item->text(1);
        if (!QFile::exists(path))
            path = item->data(1, Qt::UserRole).toString();
        if (QFile::exists(path))
            paths.append(path);
    }
    return paths;
}

ProxyFields proxyFields(const Ui::MainWindow &ui)
{
    ProxyFields fields;
    fields.enabled = ui.group_Proxy_Settings->isChecked();
    fields.server = ui.line_Proxy_Server->text();
    fields.port = ui.line_Proxy_Port->text();
    fields.userName = ui.line_Proxy_User_Name->text();
    fields.password = ui.line_Proxy_Password->text();
    return fields;
}

} // namespace

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
    fields.emailValidated = emailcheck::validated(hostInfo);
    fields.bugReport = reportKind == ReportKind::BugReport;
    fields.build = ui->line_Build->text();
    // The table entry, not the item text: the source-language name is what the server files by.
    fields.area = productAreaNames().value(ui->list_Area->row(selectedAreas.first()));
    fields.nda = ui->check_NDA->isChecked();
    if (ui->check_Include_System_Info->isChecked())
        fields.systemSummary = sysInfo; // none yet means no part
    fields.title = ui->combo_Title->currentText();
    fields.description = ui->edit_Description->toPlainText();

    fields.attachmentPaths = attachmentPaths(*ui->tree_Attachments);
    return buildReportBody(fields);
}

void MainWindow::slot_submit()
{
    const SendTarget target =
        sendTarget(ui->line_HTTP_Destination->text(), ui->line_HTTP_Destination->placeholderText(), proxyFields(*ui));

    QHttpMultiPart *body = build_payload();
    if (!body)
        return; // an attachment could not be opened: nothing is sent and nothing is said

    const QNetworkRequest request(target.url); // the post supplies the content type with its boundary

    // One manager per send; earlier ones stay children of the window until it goes.
    network = new QNetworkAccessManager(this);
    if (target.setsProxy)
        network->setProxy(target.proxy);

    reply = network->post(request, body);
    body->setParent(reply); // the body and its open files live exactly as long as the reply

    progressFirst = true;
    sendOutcome = SendOutcome::InFlight;

    connect(reply, &QNetworkReply::uploadProgress, this, &MainWindow::slot_send_progress);
    connect(reply, &QNetworkReply::finished, this, &MainWindow::slot_send_complete);
    connect(reply, &QNetworkReply::errorOccurred, this, &MainWindow::slot_send_failed);

    // Busy until the first progress report tells the total.
    ui->progressBar->setMinimum(0);
    ui->progressBar->setMaximum(0);

    formState = FormState::Sending;
    slot_set_control_states();
}

void MainWindow::slot_send_progress(qint64 bytesSent, qint64 bytesTotal)
{
    if (progressFirst) {
        ui->progressBar->setMinimum(0);
        ui->progressBar->setMaximum(toBarRange(bytesTotal));
        progressFirst = false;
    }
    ui->progressBar->setValue(toBarRange(bytesSent));
}

void MainWindow::slot_send_complete()
{
    // The box below runs its own event loop; a deletion already scheduled by Abort may
    // be carried out in it, and the reply must not be touched afterwards then.
    const QPointer<QNetworkReply> finishedReply(reply);

    const bool transferFailed = reply && reply->error() != QNetworkReply::NoError;
    const sendoutcome::Finish finish = sendoutcome::afterFinish(sendOutcome, transferFailed);
    if (finish.box == sendoutcome::Box::Submitted) {
        QMessageBox::information(this, tr("Report Submitted"), tr("Your report has been successfully submitted!"),
                                 QMessageBox::Ok);
    } else if (finish.box == sendoutcome::Box::Failed) {
        QMessageBox::critical(this, tr("Submission Failed"),
                              tr("Your report could not be submitted at this time:\n\"%1\"").arg(reply->errorString()),
                              QMessageBox::Ok);
    }

    if (finishedReply)
        finishedReply->deleteLater(); // takes the body and the attachment files with it

    if (finish.next == sendoutcome::Next::Quit) {
        QCoreApplication::quit(); // a delivered report ends the program; nothing is reset
        return;
    }
    // Failed, or aborted with finished() still delivered: back to the form as it was.
    formState = FormState::Composing;
    slot_set_control_states();
}

void MainWindow::slot_send_failed(QNetworkReply::NetworkError code)
{
    Q_UNUSED(code)
    sendOutcome = sendoutcome::afterError(); // an error that arrives first is shown, after an Abort too
}
