#include "app/storedsettings.h"

#include "app/titlehistory.h"
#include "attachments/screenshotflow.h"

#include <QFile>
#include <QSettings>

namespace {

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

QString text(const QSettings &settings, const QString &key)
{
    return settings.value(key, QString()).toString();
}

} // namespace

std::optional<StoredSettings> StoredSettings::read(QSettings &settings, const QPoint &fallbackPos,
                                                   const QSize &fallbackSize)
{
    if (!settings.childGroups().contains(kGroup))
        return std::nullopt;
    settings.beginGroup(kGroup);
    StoredSettings stored;
    QPoint pos = settings.value(kWindowPos, fallbackPos).toPoint();
    pos.setX(qMax(pos.x(), 0));
    pos.setY(qMax(pos.y(), 0));
    stored.windowPos = pos;
    stored.windowSize = settings.value(kWindowSize, fallbackSize).toSize();
    stored.snapshotDelay = text(settings, kSnapshotDelay);
    stored.enhancedCapture = settings.value(kEnhancedCapture, false).toBool();
    stored.rememberMe = settings.value(kRememberMe, false).toBool();
    if (stored.rememberMe) {
        stored.userName = text(settings, kUserName);
        stored.email = text(settings, kEmail);
    }
    stored.nda = settings.value(kNda, false).toBool();
    stored.httpDestination = text(settings, kHttpDestination);
    stored.httpProxy = settings.value(kHttpProxy, false).toBool();
    if (stored.httpProxy) {
        stored.proxyServer = text(settings, kProxyServer);
        stored.proxyPort = text(settings, kProxyPort);
        stored.proxyUserName = text(settings, kProxyUserName);
        stored.proxyPassword = text(settings, kProxyPassword);
    }
    stored.titleItems = settings.value(kTitleItems, QStringList()).toStringList();
    settings.endGroup();
    return stored;
}

void StoredSettings::write(QSettings &settings) const
{
    settings.clear();
    settings.beginGroup(kGroup);
    settings.setValue(kWindowPos, windowPos);
    settings.setValue(kWindowSize, windowSize);
    if (snapshotDelay != snapshotdelay::defaultText())
        settings.setValue(kSnapshotDelay, snapshotDelay);
    settings.setValue(kEnhancedCapture, enhancedCapture);
    settings.setValue(kRememberMe, rememberMe);
    if (rememberMe) {
        settings.setValue(kUserName, userName);
        settings.setValue(kEmail, email);
    }
    settings.setValue(kNda, nda);
    if (!httpDestination.isEmpty())
        settings.setValue(kHttpDestination, httpDestination);
    settings.setValue(kHttpProxy, httpProxy);
    if (httpProxy) {
        settings.setValue(kProxyServer, proxyServer);
        settings.setValue(kProxyPort, proxyPort);
        settings.setValue(kProxyUserName, proxyUserName);
        settings.setValue(kProxyPassword, proxyPassword);
    }
    settings.setValue(kTitleItems, titlehistory::stored(titleItems));
    settings.endGroup();
}

// The file holds the proxy password in plain text, so only its owner may read it.
// QSettings replaces the file by a temporary copy that inherits the permissions of the
// file it replaces (or the umask's for a new one): an owner-only file there beforehand
// keeps the password private while it is written, and the permissions are set again
// once the file stands.
void makeSettingsFileOwnerOnly(const QString &path, bool createIfMissing)
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

SettingsFileChoice chooseSettingsFile(bool suiteFolderExists, bool newFileExists, bool oldFileExists)
{
    using File = SettingsFileChoice::File;
    if (!suiteFolderExists)
        return {File::Old, false};
    if (newFileExists)
        return {File::New, oldFileExists};
    return {oldFileExists ? File::Old : File::New, false};
}
