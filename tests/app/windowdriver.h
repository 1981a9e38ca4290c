#pragma once

// Finds and closes the windows of another process as a user would: through xdotool
// and the window manager on X, through the Win32 calls on Windows. Window ids are
// opaque texts. Every wait lasts at most kEventWaitMs.

#include <QString>
#include <QStringList>

namespace windowdriver {

enum class Key { AltF4, Return };

// The first visible top-level window whose title contains name, once there is one;
// empty when none appears.
QString waitForWindow(const QString &name);
// Same, among the windows of one process.
QString waitForWindowOf(qint64 pid);

QString title(const QString &windowId);
QStringList visibleWindowsOf(qint64 pid);
QString activeWindow();

// Makes the window the active one, waits until the system says it is, then presses
// the key. False when the window never became active (no key was sent).
bool pressInWindow(const QString &windowId, Key key);

// What is known of a process whose window did not go: its windows, the active one and,
// where gdb is at hand, every thread's stack.
QString describeStillRunning(qint64 pid);

} // namespace windowdriver
