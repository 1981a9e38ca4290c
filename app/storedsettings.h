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
    QPoint windowPos;
    QSize windowSize;
    QString snapshotDelay; // as typed; empty when the file has none, left out when the default
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
    QStringList titleItems; // newest first (app/titlehistory.h)

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

// Which settings file a start uses: the suite folder's file once it exists (the old
// one in the home folder is then dropped, not merged); before that the old file while
// there is one; and the old file's place when the suite folder could not be made.
struct SettingsFileChoice
{
    enum class File { New, Old } file;
    bool dropOldFile = false;
};
SettingsFileChoice chooseSettingsFile(bool suiteFolderExists, bool newFileExists, bool oldFileExists);
