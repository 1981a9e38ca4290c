// Screen states, completeness rules and the small navigation slots of MainWindow.
#include "form/completeness.h"
#include "form/mainwindow.h"
#include "form/reporttab.h"
#include "ui_mainwindow.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QLineEdit>
#include <QUrl>

namespace {

const char kMissingFieldStyle[] = "border: 1px solid rgb(200, 150, 150)";

// Setting a non-empty style sheet again, even the same one, makes Qt re-polish the
// widget: hundreds of microseconds for each flagged field on every keystroke.
void setFieldStyle(QWidget *field, const QString &style)
{
    if (field->styleSheet() != style)
        field->setStyleSheet(style);
}

} // namespace

void MainWindow::slot_set_control_states()
{
    switch (formState) {
    case Choosing:
        ui->layout_banner_bug_2->hide();
        ui->layout_banner_feature_2->hide();
        ui->tabWidget->hide();
        ui->progressBar->hide();
        ui->button_Start_Over->hide();
        ui->layout_banner_main_2->show();
        ui->layout_selecting_buttons_2->show();
        ui->label_Intro_Line_1->show();
        ui->label_Intro_Line_2->show();
        ui->button_Send->setText(tr("Send..."));
        ui->button_Send->setToolTip(tr("Select a feedback type to submit a report"));
        ui->button_Send->setEnabled(false);
        break;

    case Composing: {
        ui->layout_banner_main_2->hide();
        ui->layout_selecting_buttons_2->hide();
        ui->label_Intro_Line_1->hide();
        ui->label_Intro_Line_2->hide();
        const bool bug = reportKind == BugReport;
        ui->layout_banner_bug_2->setVisible(bug);
        ui->layout_banner_feature_2->setVisible(!bug);
        ui->tabWidget->show();
        ui->button_Start_Over->show(); // shown only: a send disables it for good
        ui->button_Cancel->setText(tr("Cancel"));

        ui->tabWidget->setEnabled(true);
        applyCompleteness(completeness::evaluate(formFacts(), bug));
        break;
    }

    case Sending:
        ui->progressBar->show();
        ui->button_Cancel->setText(tr("Abort"));
        ui->button_Start_Over->setEnabled(false);
        ui->button_Send->setEnabled(false);
        ui->button_Send->setToolTip(tr("Submitting the report..."));
        ui->tabWidget->setEnabled(false);
        break;

    default:
        break;
    }
}

completeness::FormFacts MainWindow::formFacts() const
{
    completeness::FormFacts facts;
    facts.nameFilled = !ui->line_Name->text().isEmpty();
    facts.emailFilled = !ui->line_Email->text().isEmpty();
    facts.areaChosen = !ui->list_Area->selectedItems().isEmpty();
    facts.buildFilled = !ui->line_Build->text().isEmpty();
    facts.titleFilled = !ui->combo_Title->lineEdit()->text().isEmpty();
    facts.descriptionFilled = !ui->edit_Description->toPlainText().isEmpty();
    facts.hasAttachments = ui->tree_Attachments->topLevelItemCount() > 0;
    return facts;
}

void MainWindow::applyCompleteness(const completeness::Verdict &verdict)
{
    ui->button_Send->setEnabled(verdict.sendEnabled());

    const std::pair<completeness::Field, QWidget *> fields[] = {
        {completeness::NameField, ui->line_Name},
        {completeness::EmailField, ui->line_Email},
        {completeness::AreaField, ui->list_Area},
        {completeness::BuildField, ui->line_Build},
        {completeness::TitleField, ui->combo_Title},
        {completeness::DescriptionField, ui->edit_Description},
        {completeness::AttachmentsField, ui->tree_Attachments},
    };
    for (const auto &[field, widget] : fields) {
        if (verdict.flagged & field)
            setFieldStyle(widget, QLatin1String(kMissingFieldStyle));
        else if (verdict.cleared & field)
            setFieldStyle(widget, QString());
    }

    switch (verdict.hint) {
    case completeness::SendHint::Unchanged:
        break;
    case completeness::SendHint::CompleteIdentity:
        ui->button_Send->setToolTip(tr("Please complete the <b>Identity</b> tab."));
        break;
    case completeness::SendHint::CompleteDetails:
        ui->button_Send->setToolTip(tr("Please complete the <b>Details</b> tab."));
        break;
    case completeness::SendHint::CompleteDescription:
        ui->button_Send->setToolTip(tr("Please complete the <b>Description</b> tab."));
        break;
    case completeness::SendHint::AddAttachments:
        ui->button_Send->setToolTip(tr("Please add <b>Attachments</b> to submit the report."));
        break;
    case completeness::SendHint::Submit:
        ui->button_Send->setToolTip(tr("Submit the report"));
        break;
    }
    if (verdict.done != verdict.total)
        ui->button_Send->setText(tr("Completed %1/%2").arg(verdict.done).arg(verdict.total));
    else
        ui->button_Send->setText(tr("Send..."));
}

void MainWindow::jumpToMissingTab()
{
    if (const auto tab = completeness::firstMissingTab(formFacts(), reportKind == BugReport))
        ui->tabWidget->setCurrentIndex(tabIndex(*tab));
}

void MainWindow::showReportKindTexts(ReportKind kind)
{
    formState = Composing;
    reportKind = kind;
    if (kind == BugReport) {
        ui->label_Intro_1->setText(tr("Please take a moment to review how to collect and submit a good bug report."));
        ui->label_Intro_2->setText(
            tr("The following tips help make a good report that will aid developers in recreating your issue:"));
        ui->label_Intro_3->setText(tr("1) Ensure only the content needed to recreate the issue is attached"));
        ui->label_Intro_4->setText(tr("2) Lower any settings in Scenes that are not critical to showing the issue"));
        ui->label_Intro_5->setText(
            tr("3) Provide detailed steps the developer can follow in order to recreate the issue"));
        ui->label_Title->setText(tr("Please provide a short title for the bug/issue (70 characters max):"));
        ui->label_Description->setText(tr("Please provide a description of the bug/issue:"));
    } else {
        ui->label_Intro_1->setText(
            tr("Please take a moment to review how to collect and submit a good feature/flow request."));
        ui->label_Intro_2->setText(
            tr("The following tips help make a good report that will aid developers in recreating your request:"));
        ui->label_Intro_3->setText(tr("1) Explain what it is you are trying to do that is causing difficulty"));
        ui->label_Intro_4->setText(
            tr("2) Are there more general workflows that could make your request better for all?"));
        ui->label_Intro_5->setText(tr("3) Are there examples of good workflows that you may have seen elsewhere?"));
        ui->label_Title->setText(tr("Please provide a short title for the feature request (70 characters max):"));
        ui->label_Description->setText(tr("Please provide a description of the feature request:"));
    }
    slot_set_control_states();
}

void MainWindow::slot_show_bug_report()
{
    showReportKindTexts(BugReport);
}

void MainWindow::slot_show_feature_request()
{
    showReportKindTexts(FeatureRequest);
}

void MainWindow::slot_start_over()
{
    formState = Choosing;
    reportKind = None;
    ui->line_Email->setStyleSheet(QString()); // the verdict's icon and message stay
    slot_reset_report();
    slot_set_control_states();
}

void MainWindow::slot_reset_report()
{
    ui->tabWidget->setCurrentIndex(tabIndex(ReportTab::Introduction));
    if (!ui->check_Remember_My_Info->isChecked()) {
        ui->line_Name->clear();
        ui->line_Email->clear();
    }
    ui->list_Area->clearSelection();
    ui->combo_Title->clearEditText(); // the history entries stay
    ui->edit_Description->clear();
    while (ui->tree_Attachments->topLevelItemCount() > 0)
        delete ui->tree_Attachments->takeTopLevelItem(0);
}

void MainWindow::slot_cancel()
{
    if (formState != Sending) {
        QCoreApplication::quit();
        return;
    }
    sendOutcome = Aborted;
    if (reply) {
        // Not abort(): destroying the reply ends the transfer without raising an error signal.
        reply->ignoreSslErrors();
        reply->deleteLater();
    }
    formState = Choosing;
    slot_set_control_states();
}

void MainWindow::slot_play_video(const QString &link)
{
    QDesktopServices::openUrl(QUrl(link, QUrl::TolerantMode));
}

void MainWindow::slot_tab_changed(int index)
{
    switch (static_cast<ReportTab>(index)) {
    case ReportTab::Identity:
        ui->line_Name->setFocus();
        break;
    case ReportTab::Details:
        ui->list_Area->setFocus();
        break;
    case ReportTab::Description:
        ui->combo_Title->setFocus();
        break;
    case ReportTab::Attachments:
        ui->button_Attach_File->setFocus();
        break;
    case ReportTab::Settings:
        ui->group_Proxy_Settings->setFocus();
        break;
    case ReportTab::Introduction:
        break;
    }
}

void MainWindow::slot_validate_delay()
{
    // 2 is the floor and the default, yet 3 is the smallest value kept as typed.
    const int seconds = ui->line_Snapshot_Delay->text().toInt();
    if (seconds < 3)
        ui->line_Snapshot_Delay->setText(QStringLiteral("2"));
    else if (seconds > 60)
        ui->line_Snapshot_Delay->setText(QStringLiteral("60"));
    settingsModified = settingsModified || ui->line_Snapshot_Delay->text() != QLatin1String("2");
}

void MainWindow::slot_set_modified()
{
    settingsModified = true;
}

void MainWindow::slot_set_title_text(int index)
{
    const QString text = ui->combo_Title->itemText(index);
    if (!text.isEmpty())
        ui->combo_Title->setCurrentText(text);
}

void MainWindow::slot_update_title_list()
{
    const QString text = ui->combo_Title->currentText();
    if (text.isEmpty())
        return;
    for (int i = 0; i < ui->combo_Title->count(); ++i) {
        if (ui->combo_Title->itemText(i) == text)
            return;
    }
    ui->combo_Title->insertItem(0, text);
    ui->combo_Title->lineEdit()->setText(text);
    settingsModified = true;
}

void MainWindow::slot_eat_enter() {}

void MainWindow::slot_enable_edit_settings()
{
    // One way: the lock widgets are gone for the life of the window.
    ui->label_Settings->deleteLater();
    ui->check_Settings->deleteLater();
    ui->label_SettingsPad->deleteLater();
    ui->frame_Settings->setVisible(true);
    // The box that had the keyboard focus is going; a keyboard user goes on in the first
    // field the unlock shows rather than at the top of the window.
    if (ui->check_Settings->hasFocus())
        ui->line_HTTP_Destination->setFocus(Qt::OtherFocusReason);
}
