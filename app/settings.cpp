// Settings kept between runs, and the window geometry that they record.
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
const int kTitleHistoryLength = 5;
const QString kDefaultDelay = QStringLiteral("2"); // also the delay field's placeholder

const QString kGroup = QStringLiteral("application");
const QString kWindowPos = QStringLiteral("window_pos");
const QString kWindowSize = QStringLiteral("window_size");
const QString kSnapshotDelay = QStringLiteral("snapshot_delay");
const QString kEnhancedCapture = QStringLiteral("enhanced_capture");
const QString kRememberMe = QStringLiteral("remember_me");
const QString kUserName = QStringLiteral("user_name");
const QString kEmail = QStringLiteral("email");
const QString kNda = QStringLiteral("nda");
const QString kHttpDestination = QStringLiteral("http_destination");
const QString kHttpProxy = QStringLiteral("http_proxy");
const QString kProxyServer = QStringLiteral("http_proxy_server");
const QString kProxyPort = QStringLiteral("http_proxy_port");
const QString kProxyUserName = QStringLiteral("http_proxy_username");
const QString kProxyPassword = QStringLiteral("http_proxy_password");
const QString kTitleItems = QStringLiteral("title_items");

struct TextKey
{
    QString key;
    QLineEdit *field;
};

// Kept only while "Remember My Information" is checked.
QList<TextKey> identityKeys(Ui::MainWindow *ui)
{
    return {{kUserName, ui->line_Name}, {kEmail, ui->line_Email}};
}

// Kept only while the proxy group is checked.
QList<TextKey> proxyKeys(Ui::MainWindow *ui)
{
    return {{kProxyServer, ui->line_Proxy_Server},
            {kProxyPort, ui->line_Proxy_Port},
            {kProxyUserName, ui->line_Proxy_User_Name},
            {kProxyPassword, ui->line_Proxy_Password}};
}

void readTexts(const QSettings &settings, const QList<TextKey> &keys)
{
    for (const TextKey &entry : keys)
        entry.field->setText(settings.value(entry.key, QString()).toString());
}

void writeTexts(QSettings &settings, const QList<TextKey> &keys)
{
    for (const TextKey &entry : keys)
        settings.setValue(entry.key, entry.field->text());
}

// Everything of the "application" group after the window geometry, in file order.
void readFormSettings(const QSettings &settings, Ui::MainWindow *ui)
{
    const QString delay = settings.value(kSnapshotDelay, QString()).toString();
    if (!delay.isEmpty() && delay != kDefaultDelay)
        ui->line_Snapshot_Delay->setText(delay);
    ui->check_EnhancedCapture->setChecked(settings.value(kEnhancedCapture, false).toBool());

    ui->check_Remember_My_Info->setChecked(settings.value(kRememberMe, false).toBool());
    if (ui->check_Remember_My_Info->isChecked())
        readTexts(settings, identityKeys(ui));
    ui->check_NDA->setChecked(settings.value(kNda, false).toBool());

    // Set even when absent: an empty field shows the default destination as placeholder.
    ui->line_HTTP_Destination->setText(settings.value(kHttpDestination, QString()).toString());
    ui->group_Proxy_Settings->setChecked(settings.value(kHttpProxy, false).toBool());
    if (ui->group_Proxy_Settings->isChecked())
        readTexts(settings, proxyKeys(ui));

    // The combo box keeps at most five items and drops the rest.
    ui->combo_Title->addItems(settings.value(kTitleItems, QStringList()).toStringList());
    ui->combo_Title->clearEditText(); // no title preselected
}

void writeFormSettings(QSettings &settings, Ui::MainWindow *ui)
{
    if (ui->line_Snapshot_Delay->text() != kDefaultDelay)
        settings.setValue(kSnapshotDelay, ui->line_Snapshot_Delay->text());
    settings.setValue(kEnhancedCapture, ui->check_EnhancedCapture->isChecked());

    settings.setValue(kRememberMe, ui->check_Remember_My_Info->isChecked());
    if (ui->check_Remember_My_Info->isChecked())
        writeTexts(settings, identityKeys(ui));
    settings.setValue(kNda, ui->check_NDA->isChecked());

    if (!ui->line_HTTP_Destination->text().isEmpty())
        settings.setValue(kHttpDestination, ui->line_HTTP_Destination->text());
    settings.setValue(kHttpProxy, ui->group_Proxy_Settings->isChecked());
    if (ui->group_Proxy_Settings->isChecked())
        writeTexts(settings, proxyKeys(ui)); // the password too, as typed

    // Newest first, each title once.
    QStringList titles;
    for (int i = 0; i < ui->combo_Title->count(); ++i) {
        const QString title = ui->combo_Title->itemText(i);
        if (!titles.contains(title, Qt::CaseSensitive))
            titles.append(title);
    }
    settings.setValue(kTitleItems, titles);
}

// The file holds the proxy password in plain text, so only its owner may read it.
// QSettings replaces the file by a temporary copy that inherits the permissions of the
// file it replaces (or the umask's for a new one): an owner-only file there beforehand
// keeps the password private while it is written, and the permissions are set again
// once the file stands.
void makeOwnerOnly(const QString &path, bool createIfMissing)
{
#ifndef Q_OS_WIN
    QFile file(path);
    if (!file.exists()) {
        if (!createIfMissing || !file.open(QIODevice::WriteOnly))
            return;
        file.close();
    }
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
#else
    Q_UNUSED(path)
    Q_UNUSED(createIfMissing)
#endif
}

} // namespace

void MainWindow::loadSettings()
{
    // What a later save writes when there is no file to read.
    savedSize = QSize(kDefaultWidth, kDefaultHeight);
    const QScreen *screen = QGuiApplication::primaryScreen();
    const QRect screenRect = screen ? screen->geometry() : QRect();
    savedPos = QPoint((screenRect.width() - kDefaultWidth) / 2, (screenRect.height() - kDefaultHeight) / 2);

    ui->combo_Title->setMaxCount(kTitleHistoryLength);

    if (!QFile::exists(configPath))
        return;

    QSettings settings(configPath, QSettings::IniFormat);
    const QStringList groups = settings.childGroups();
    for (const QString &group : groups) {
        settings.beginGroup(group);
        if (group == kGroup) {
            // A window left partly off the left or top edge comes back to 0 on that axis.
            QPoint pos = settings.value(kWindowPos, savedPos).toPoint();
            pos.setX(qMax(pos.x(), 0));
            pos.setY(qMax(pos.y(), 0));
            savedPos = pos;
            savedSize = settings.value(kWindowSize, QSize(kDefaultWidth, kDefaultHeight)).toSize();
            setGeometry(savedPos.x(), savedPos.y(), savedSize.width(), savedSize.height());

            readFormSettings(settings, ui);
            if (!ui->line_Email->text().isEmpty())
                slot_validate_email_domain(); // a remembered address is checked at once
        }
        settings.endGroup();
    }
}

void MainWindow::saveSettings()
{
    makeOwnerOnly(configPath, true);
    {
        QSettings settings(configPath, QSettings::IniFormat);
        settings.clear(); // keys not written this time disappear from the file
        settings.beginGroup(kGroup);
        settings.setValue(kWindowPos, savedPos);
        settings.setValue(kWindowSize, savedSize);
        writeFormSettings(settings, ui);
        settings.endGroup();
    } // written here, as the settings object goes
    makeOwnerOnly(configPath, false);
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
