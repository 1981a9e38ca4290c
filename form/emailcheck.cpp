// E-mail address check: the pattern as the user types, then a DNS look-up of the domain.
#include "form/emailcheck.h"
#include "form/mainwindow.h"
#include "ui_mainwindow.h"

namespace {

enum class EmailDisplay { Empty, Validating, Valid, BadlyFormed, DomainNotFound };

void showEmailState(Ui::MainWindow *ui, EmailDisplay state)
{
    QString fieldStyle;
    QString message;
    bool flagged = false;
    switch (state) {
    case EmailDisplay::Empty:
        break;
    case EmailDisplay::Validating:
        message = MainWindow::tr("(validating email...standby...)");
        break;
    case EmailDisplay::Valid:
        fieldStyle = QStringLiteral("background-color: rgb(245, 255, 245);");
        break;
    case EmailDisplay::BadlyFormed:
        fieldStyle = QStringLiteral("background-color: rgb(255, 245, 245);");
        message = MainWindow::tr("Your email address is incorrectly formatted.");
        flagged = true;
        break;
    case EmailDisplay::DomainNotFound:
        fieldStyle = QStringLiteral("background-color: rgb(255, 245, 245);");
        message = MainWindow::tr(
            "Your email address could not be validated.  Please verify that the domain was entered correctly.");
        flagged = true;
        break;
    }

    ui->line_Email->setStyleSheet(fieldStyle);
    ui->label_Invalid_Email_Icon->setPixmap(flagged ? QPixmap(QStringLiteral(":/images/Flagged.png"))
                                                          .scaled(16, 16, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                                                    : QPixmap());
    ui->label_Invalid_Email->setText(message);
    ui->label_Invalid_Email->setStyleSheet(flagged ? QStringLiteral("color: rgb(255, 0, 0);") : QString());
}

} // namespace

bool lookupValidated(const QHostInfo &info)
{
    return info.lookupId() != -1 && info.error() == QHostInfo::NoError;
}

void MainWindow::slot_email_edited(const QString &text)
{
    // While an answer is outstanding, edits neither reset the verdict nor restart the timer.
    if (lookupPending)
        return;
    emailValid = false;
    slot_set_control_states();
    if (emailRegExp.exactMatch(text))
        emailTimer.start(); // restarts a running timer
}

void MainWindow::slot_validate_email_domain()
{
    emailTimer.stop();
    hostInfo.setError(QHostInfo::UnknownError);

    const QString address = ui->line_Email->text();
    if (address.isEmpty()) {
        showEmailState(ui, EmailDisplay::Empty);
    } else if (emailRegExp.exactMatch(address)) {
        const QString domain = emailRegExp.cap(2);
        showEmailState(ui, EmailDisplay::Validating);
        lookupPending = true;
        QHostInfo::lookupHost(domain, this, SLOT(slot_lookup_complete(QHostInfo)));
    } else {
        showEmailState(ui, EmailDisplay::BadlyFormed);
        emailValid = false;
    }
    slot_set_control_states();
}

void MainWindow::slot_lookup_complete(QHostInfo info)
{
    hostInfo = info;
    ui->label_Invalid_Email->setText(QString());
    const bool found = info.error() == QHostInfo::NoError && !info.addresses().isEmpty();
    showEmailState(ui, found ? EmailDisplay::Valid : EmailDisplay::DomainNotFound);
    emailValid = found;
    lookupPending = false;
    slot_set_control_states();
}
