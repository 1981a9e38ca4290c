#pragma once

// Shared by the settings tests: where the program keeps its settings in the isolated
// test environment, and plain file access that does not go through the program.
#include "support/testenv.h"

#include <QDir>
#include <QFile>
#include <QSettings>

#include <algorithm>

namespace settingsfiles {

// The process's isolated environment and where the program keeps its settings there,
// for the window's test classes.
struct Folders
{
    TestEnvironment &env = TestEnvironment::instance();
    QString suite() const { return env.suiteFolder(); }
    QString newFile() const { return env.settingsFile(); }
    QString oldFile() const { return env.oldSettingsFile(); }
};

inline QString newFile()
{
    return TestEnvironment::instance().settingsFile();
}

inline QString oldFile()
{
    return TestEnvironment::instance().oldSettingsFile();
}

// No settings file of either kind, no thumbnails: every test starts from scratch.
inline void removeAll()
{
    QDir(TestEnvironment::instance().suiteFolder()).removeRecursively();
    QFile::remove(oldFile());
    QDir(TestEnvironment::instance().thumbnailFolder()).removeRecursively();
}

inline QByteArray bytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline bool writeBytes(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

// Text with the line ends Qt's INI files have on this system.
inline QByteArray iniLines(QByteArray text)
{
#ifdef Q_OS_WIN
    text.replace("\n", "\r\n");
#endif
    return text;
}

// The bytes of a settings file of one group whose keys were set in the order of lines
// ("key=value" each). Qt writes a group's keys sorted by name on Linux, and in the
// order they were set on Windows.
inline QByteArray iniFile(const QByteArray &group, QList<QByteArray> lines)
{
#ifndef Q_OS_WIN
    std::stable_sort(lines.begin(), lines.end(), [](const QByteArray &a, const QByteArray &b) {
        return a.left(a.indexOf('=')) < b.left(b.indexOf('='));
    });
#endif
    QByteArray text = "[" + group + "]\n";
    for (const QByteArray &line : lines)
        text += line + "\n";
    return iniLines(text);
}

// The "application" group written by a plain QSettings, as another program would.
inline void writeApplicationGroup(const QString &path, const QVariantMap &values)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSettings settings(path, QSettings::IniFormat);
    settings.beginGroup("application");
    for (auto it = values.cbegin(); it != values.cend(); ++it)
        settings.setValue(it.key(), it.value());
    settings.endGroup();
}

} // namespace settingsfiles
