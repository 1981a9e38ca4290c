#pragma once

// The settings file's contents as values: what is kept between runs, in the form it is
// stored. read() and write() hold the file's rules (keys, defaults, what is written
// only when, what a save drops); the window only gathers its fields into this and
// applies it back. The file itself is INI text through QSettings.
#include <QPoint>
#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

class QSettings;

struct StoredSettings
{
    // The snapshot delay that the field shows by default and the file leaves out.
    static const QString kDefaultSnapshotDelay;

    QPoint windowPos;
    QSize windowSize;
    QString snapshotDelay; // as typed; empty when the file has none
    bool enhancedCapture = false;
    bool rememberMe = false;
    QString userName; // kept only with rememberMe
    QString email; // kept only with rememberMe
    bool nda = false;
    QString httpDestination; // empty: the default destination
    bool httpProxy = false;
    QString proxyServer; // the four proxy texts are kept only with httpProxy
    QString proxyPort;
    QString proxyUserName;
    QString proxyPassword; // in plain text, as typed
    QStringList titleItems; // newest first

    // The "application" group of an open settings object, or nothing when the file
    // has none. A missing position or size reads as the given fallback; a position
    // off the left or top edge comes back to 0 on that axis.
    static std::optional<StoredSettings> read(QSettings &settings, const QPoint &fallbackPos,
                                              const QSize &fallbackSize);

    // Replaces everything in the settings object by these values: keys not written
    // this time disappear. The default delay, an empty destination, the identity
    // without rememberMe and the proxy texts without httpProxy are left out; each
    // title is written once.
    void write(QSettings &settings) const;
};

// The file holds the proxy password in plain text, so only its owner may read it. Call
// it before a save, creating the file if it is missing, and again after it.
void makeSettingsFileOwnerOnly(const QString &path, bool createIfMissing);
