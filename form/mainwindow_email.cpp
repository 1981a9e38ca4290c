// E-mail address check: the pattern as the user types, then a DNS look-up of the domain.
// The rules are emailcheck's (form/emailcheck.h); here the form shows their outcome.
#include "form/emailcheck.h"
#include "form/mainwindow.h"
#include "ui_mainwindow.h"

namespace {

using emailcheck::Display;

void showEmailState(Ui::MainWindow *ui, Display state)
{
    QString fieldStyle;
    QString message;
    bool flagged = false;
    switch (state) {
    case Display::Empty:
        break;
    case Display::Validating:
        message = MainWindow::tr("(validating email...standby...)");
        break;
    case Display::Valid:
        fieldStyle = QStringLiteral("background-color: rgb(245, 255, 245);");
        break;
    case Display::BadlyFormed:
        fieldStyle = QStringLiteral("background-color: rgb(255, 245, 245);");
        message = MainWindow::tr("Your email address is incorrectly formatted.");
        flagged = true;
        break;
    case Display::DomainNotFound:
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

void MainWindow::slot_email_edited(const QString &text)
{
    const emailcheck::AfterEdit next = emailcheck::afterEdit({emailValid, lookupPending}, emailRegExp.exactMatch(text));
    if (next.ignored)
        return;
    emailValid = next.state.emailValid;
    slot_set_control_states();
    if (next.startTimer)
        emailTimer.start(); // restarts a running timer
}

void MainWindow::slot_validate_email_domain()
{
    emailTimer.stop();
    hostInfo.setError(QHostInfo::UnknownError);

    const QString address = ui->line_Email->text();
    const bool wellFormed = !address.isEmpty() && emailRegExp.exactMatch(address);
    const emailcheck::AfterTimer next =
        emailcheck::afterTimer({emailValid, lookupPending}, address.isEmpty(), wellFormed);
    showEmailState(ui, next.display);
    emailValid = next.state.emailValid;
    lookupPending = next.state.lookupPending;
    if (next.startLookup)
        QHostInfo::lookupHost(emailRegExp.cap(2), this, SLOT(slot_lookup_complete(QHostInfo)));
    slot_set_control_states();
}

void MainWindow::slot_lookup_complete(QHostInfo info)
{
    hostInfo = info;
    ui->label_Invalid_Email->setText(QString());
    const emailcheck::AfterLookup next = emailcheck::afterLookup({emailValid, lookupPending}, info);
    showEmailState(ui, next.display);
    emailValid = next.state.emailValid;
    lookupPending = next.state.lookupPending;
    slot_set_control_states();
}
