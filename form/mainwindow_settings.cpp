// Settings kept between runs, and the window geometry that they record. The file's
// rules are StoredSettings' (app/storedsettings.h); here the form is read and set.
#include "app/storedsettings.h"
#include "app/titlehistory.h"
#include "attachments/screenshotflow.h"
#include "form/mainwindow.h"
#include "ui_mainwindow.h"

#include <QFile>
#include <QGuiApplication>
#include <QMoveEvent>
#include <QResizeEvent>
#include <QScreen>
#include <QSettings>

namespace {

const int kDefaultWidth = 720;
const int kDefaultHeight = 470;

// The widgets' values, in the order the file lists them; the identity and proxy fields
// are set only when their switch is on, as the file keeps them only then.
void applyToForm(const StoredSettings &stored, Ui::MainWindow *ui)
{
    if (!stored.snapshotDelay.isEmpty() && stored.snapshotDelay != snapshotdelay::defaultText())
        ui->line_Snapshot_Delay->setText(stored.snapshotDelay);
    ui->check_EnhancedCapture->setChecked(stored.enhancedCapture);

    ui->check_Remember_My_Info->setChecked(stored.rememberMe);
    if (ui->check_Remember_My_Info->isChecked()) {
        ui->line_Name->setText(stored.userName);
        ui->line_Email->setText(stored.email);
    }
    ui->check_NDA->setChecked(stored.nda);

    // Set even when absent: an empty field shows the default destination as placeholder.
    ui->line_HTTP_Destination->setText(stored.httpDestination);
    ui->group_Proxy_Settings->setChecked(stored.httpProxy);
    if (ui->group_Proxy_Settings->isChecked()) {
        ui->line_Proxy_Server->setText(stored.proxyServer);
        ui->line_Proxy_Port->setText(stored.proxyPort);
        ui->line_Proxy_User_Name->setText(stored.proxyUserName);
        ui->line_Proxy_Password->setText(stored.proxyPassword);
    }

    // The combo box keeps at most titlehistory::kLength items and drops the rest.
    ui->combo_Title->addItems(stored.titleItems);
    ui->combo_Title->clearEditText(); // no title preselected
}

StoredSettings gatherFromForm(Ui::MainWindow *ui)
{
    StoredSettings stored;
    stored.snapshotDelay = ui->line_Snapshot_Delay->text();
    stored.enhancedCapture = ui->check_EnhancedCapture->isChecked();
    stored.rememberMe = ui->check_Remember_My_Info->isChecked();
    stored.userName = ui->line_Name->text();
    stored.email = ui->line_Email->text();
    stored.nda = ui->check_NDA->isChecked();
    stored.httpDestination = ui->line_HTTP_Destination->text();
    stored.httpProxy = ui->group_Proxy_Settings->isChecked();
    stored.proxyServer = ui->line_Proxy_Server->text();
    stored.proxyPort = ui->line_Proxy_Port->text();
    stored.proxyUserName = ui->line_Proxy_User_Name->text();
    stored.proxyPassword = ui->line_Proxy_Password->text();
    for (int i = 0; i < ui->combo_Title->count(); ++i)
        stored.titleItems.append(ui->combo_Title->itemText(i));
    return stored;
}

} // namespace

void MainWindow::loadSettings()
{
    // What a later save writes when there is no file to read.
    savedSize = QSize(kDefaultWidth, kDefaultHeight);
    const QScreen *screen = QGuiApplication::primaryScreen();
    const QRect screenRect = screen ? screen->geometry() : QRect();
    savedPos = QPoint((screenRect.width() - kDefaultWidth) / 2, (screenRect.height() - kDefaultHeight) / 2);

    ui->combo_Title->setMaxCount(titlehistory::kLength);

    if (!QFile::exists(configPath))
        return;

    QSettings settings(configPath, QSettings::IniFormat);
    const std::optional<StoredSettings> stored =
        StoredSettings::read(settings, savedPos, QSize(kDefaultWidth, kDefaultHeight));
    if (!stored)
        return;
    savedPos = stored->windowPos;
    savedSize = stored->windowSize;
    setGeometry(savedPos.x(), savedPos.y(), savedSize.width(), savedSize.height());
    applyToForm(*stored, ui);
    if (!ui->line_Email->text().isEmpty())
        slot_validate_email_domain(); // a remembered address is checked at once
}

void MainWindow::saveSettings()
{
    makeSettingsFileOwnerOnly(configPath, true);
    {
        QSettings settings(configPath, QSettings::IniFormat);
        StoredSettings stored = gatherFromForm(ui);
        stored.windowPos = savedPos;
        stored.windowSize = savedSize;
        stored.write(settings);
    } // written here, as the settings object goes
    makeSettingsFileOwnerOnly(configPath, false);
}

void MainWindow::moveEvent(QMoveEvent *event)
{
    if (geometryPinned) {
        // While the screen-shot flow has pinned it, the window snaps back at once.
        setGeometry(savedPos.x(), savedPos.y(), savedSize.width(), savedSize.height());
        event->ignore();
        return;
    }
    // A window that the system places at the origin keeps the saved position.
    if (event->pos() != QPoint(0, 0) && event->pos() != savedPos) {
        savedPos = event->pos();
        settingsModified = true;
    }
    QMainWindow::moveEvent(event);
}

void MainWindow::resizeEvent(QResizeEvent *event)
{
    if (event->size() != savedSize) {
        savedSize = event->size();
        settingsModified = true;
    }
    QMainWindow::resizeEvent(event);
}
