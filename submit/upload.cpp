// Posting the report, its progress and its outcome.
#include "form/mainwindow.h"

void MainWindow::slot_submit()
{
}

void MainWindow::slot_send_progress(qint64 bytesSent, qint64 bytesTotal)
{
    Q_UNUSED(bytesSent)
    Q_UNUSED(bytesTotal)
}

void MainWindow::slot_send_complete()
{
}

void MainWindow::slot_send_failed(QNetworkReply::NetworkError code)
{
    Q_UNUSED(code)
    sendOutcome = Failed;
}
