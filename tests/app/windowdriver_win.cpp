#include "windowdriver.h"

#include "support/testenv.h"
#include "support/winkeys.h"

#include <QtTest>

#include <windows.h>

namespace windowdriver {
namespace {

QString idOf(HWND window)
{
    return QString::number(quintptr(window));
}

HWND windowOf(const QString &id)
{
    return reinterpret_cast<HWND>(quintptr(id.toULongLong()));
}

QString titleOf(HWND window)
{
    wchar_t text[512] = {};
    const int length = GetWindowTextW(window, text, int(sizeof(text) / sizeof(text[0])));
    return QString::fromWCharArray(text, length);
}

// The visible top-level windows, in the system's order (topmost first).
QList<HWND> visibleTopLevelWindows()
{
    QList<HWND> windows;
    EnumWindows(
        [](HWND window, LPARAM list) -> BOOL {
            if (IsWindowVisible(window))
                reinterpret_cast<QList<HWND> *>(list)->append(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&windows));
    return windows;
}

template <typename Match>
QString waitForFirst(Match matches)
{
    QString id;
    const bool found = QTest::qWaitFor(
        [&] {
            for (HWND window : visibleTopLevelWindows()) {
                if (matches(window)) {
                    id = idOf(window);
                    return true;
                }
            }
            return false;
        },
        kEventWaitMs);
    return found ? id : QString();
}

qint64 processOf(HWND window)
{
    DWORD pid = 0;
    GetWindowThreadProcessId(window, &pid);
    return qint64(pid);
}

} // namespace

QString waitForWindow(const QString &name)
{
    return waitForFirst([&](HWND window) { return titleOf(window).contains(name); });
}

QString waitForWindowOf(qint64 pid)
{
    return waitForFirst([&](HWND window) { return processOf(window) == pid; });
}

QString title(const QString &windowId)
{
    return titleOf(windowOf(windowId));
}

QStringList visibleWindowsOf(qint64 pid)
{
    QStringList ids;
    for (HWND window : visibleTopLevelWindows()) {
        if (processOf(window) == pid)
            ids << idOf(window);
    }
    return ids;
}

QString activeWindow()
{
    return idOf(GetForegroundWindow());
}

bool pressInWindow(const QString &windowId, Key key)
{
    HWND window = windowOf(windowId);
    const bool active = QTest::qWaitFor(
        [&] {
            if (GetForegroundWindow() == window)
                return true;
            SetForegroundWindow(window);
            return false;
        },
        kEventWaitMs);
    if (!active)
        return false;
    return key == Key::AltF4 ? pressKeyChord({VK_MENU, VK_F4}) : pressKeyChord({VK_RETURN});
}

QString describeStillRunning(qint64 pid)
{
    QString report = "its visible windows:";
    for (const QString &id : visibleWindowsOf(pid))
        report += " " + id + " \"" + title(id) + "\"";
    report += "\nactive window: " + activeWindow() + " \"" + title(activeWindow()) + "\"";
    return report;
}

} // namespace windowdriver
