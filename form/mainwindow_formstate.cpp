// Screen states, completeness rules and the small navigation slots of MainWindow.
#include "app/titlehistory.h"
#include "attachments/screenshotflow.h"
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

// Where the keyboard goes when a tab is shown; none on the Introduction.
QWidget *firstFieldOf(const Ui::MainWindow &ui, ReportTab tab)
{
    switch (tab) {
    case ReportTab::Identity:
        return ui.line_Name;
    case ReportTab::Details:
        return ui.list_Area;
    case ReportTab::Description:
        return ui.combo_Title;
    case ReportTab::Attachments:
        return ui.button_Attach_File;
    case ReportTab::Settings:
        return ui.group_Proxy_Settings;
    case ReportTab::Introduction:
        break;
    }
    return nullptr;
}

// The Send button's tool tip for what the report still needs.
QString sendHintText(completeness::SendHint hint)
{
    switch (hint) {
    case completeness::SendHint::CompleteIdentity:
        return MainWindow::tr("Please complete the <b>Identity</b> tab.");
    case completeness::SendHint::CompleteDetails:
        return MainWindow::tr("Please complete the <b>Details</b> tab.");
    case completeness::SendHint::CompleteDescription:
        return MainWindow::tr("Please complete the <b>Description</b> tab.");
    case completeness::SendHint::AddAttachments:
        return MainWindow::tr("Please add <b>Attachments</b> to submit the report.");
    case completeness::SendHint::Submit:
        return MainWindow::tr("Submit the report");
    case completeness::SendHint::Unchanged:
        break;
    }
    return QString();
}

// The compose screen's texts for the kind of report.
struct KindTexts
{
    QString intro[5];
    QString title;
    QString description;
};

KindTexts kindTexts(bool bugReport)
{
    if (bugReport)
        return {{MainWindow::tr("Please take a moment to review how to collect and submit a good bug report."),
                 MainWindow::tr(
                     "The following tips help make a good report that will aid developers in recreating your issue:"),
                 MainWindow::tr("1) Ensure only the content needed to recreate the issue is attached"),
                 MainWindow::tr("2) Lower any settings in Scenes that are not critical to showing the issue"),
                 MainWindow::tr("3) Provide detailed steps the developer can follow in order to recreate the issue")},
                MainWindow::tr("Please provide a short title for the bug/issue (70 characters max):"),
                MainWindow::tr("Please provide a description of the bug/issue:")};
    return {{MainWindow::tr("Please take a moment to review how to collect and submit a good feature/flow request."),
             MainWindow::tr(
                 "The following tips help make a good report that will aid developers in recreating your request:"),
             MainWindow::tr("1) Explain what it is you are trying to do that is causing difficulty"),
             MainWindow::tr("2) Are there more general workflows that could make your request better for all?"),
             MainWindow::tr("3) Are there examples of good workflows that you may have seen elsewhere?")},
            MainWindow::tr("Please provide a short title for the feature request (70 characters max):"),
            MainWindow::tr("Please provide a description of the feature request:")};
}

} // namespace

void MainWindow::slot_set_control_states()
{
    switch (formState) {
    case FormState::Choosing:
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

    case FormState::Composing: {
        ui->layout_banner_main_2->hide();
        ui->layout_selecting_buttons_2->hide();
        ui->label_Intro_Line_1->hide();
        ui->label_Intro_Line_2->hide();
        const bool bug = reportKind == ReportKind::BugReport;
        ui->layout_banner_bug_2->setVisible(bug);
        ui->layout_banner_feature_2->setVisible(!bug);
        ui->tabWidget->show();
        ui->button_Start_Over->show(); // shown only: a send disables it for good
        ui->button_Cancel->setText(tr("Cancel"));

        ui->tabWidget->setEnabled(true);
        applyCompleteness(completeness::evaluate(formFacts(), bug));
        break;
    }

    case FormState::Sending:
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

    if (verdict.hint != completeness::SendHint::Unchanged)
        ui->button_Send->setToolTip(sendHintText(verdict.hint));
    if (verdict.done != verdict.total)
        ui->button_Send->setText(tr("Completed %1/%2").arg(verdict.done).arg(verdict.total));
    else
        ui->button_Send->setText(tr("Send..."));
}

void MainWindow::jumpToMissingTab()
{
    if (const auto tab = completeness::firstMissingTab(formFacts(), reportKind == ReportKind::BugReport))
        ui->tabWidget->setCurrentIndex(tabIndex(*tab));
}

void MainWindow::showReportKindTexts(ReportKind kind)
{
    formState = FormState::Composing;
    reportKind = kind;
    const KindTexts texts = kindTexts(kind == ReportKind::BugReport);
    ui->label_Intro_1->setText(texts.intro[0]);
    ui->label_Intro_2->setText(texts.intro[1]);
    ui->label_Intro_3->setText(texts.intro[2]);
    ui->label_Intro_4->setText(texts.intro[3]);
    ui->label_Intro_5->setText(texts.intro[4]);
    ui->label_Title->setText(texts.title);
    ui->label_Description->setText(texts.description);
    slot_set_control_states();
}

void MainWindow::slot_show_bug_report()
{
    showReportKindTexts(ReportKind::BugReport);
}

void MainWindow::slot_show_feature_request()
{
    showReportKindTexts(ReportKind::FeatureRequest);
}

void MainWindow::slot_start_over()
{
    formState = FormState::Choosing;
    reportKind = ReportKind::None;
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
    if (formState != FormState::Sending) {
        QCoreApplication::quit();
        return;
    }
    sendOutcome = sendoutcome::afterAbort();
    if (reply) {
        // Not abort(): destroying the reply ends the transfer without raising an error signal.
        reply->ignoreSslErrors();
        reply->deleteLater();
    }
    formState = FormState::Choosing;
    slot_set_control_states();
}

void MainWindow::slot_play_video(const QString &link)
{
    QDesktopServices::openUrl(QUrl(link, QUrl::TolerantMode));
}

void MainWindow::slot_tab_changed(int index)
{
    if (QWidget *field = firstFieldOf(*ui, static_cast<ReportTab>(index)))
        field->setFocus();
}

void MainWindow::slot_validate_delay()
{
    const QString typed = ui->line_Snapshot_Delay->text();
    const QString kept = snapshotdelay::clamped(typed);
    if (kept != typed)
        ui->line_Snapshot_Delay->setText(kept);
    settingsModified = settingsModified || kept != snapshotdelay::defaultText();
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
    QStringList history;
    for (int i = 0; i < ui->combo_Title->count(); ++i)
        history << ui->combo_Title->itemText(i);
    if (!titlehistory::joins(history, text))
        return;
    // The box's own limit (titlehistory::kLength) drops the oldest.
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
