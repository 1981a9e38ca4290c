#include "windowdriver.h"

#include "support/testenv.h"

#include <QProcess>
#include <QStandardPaths>
#include <QtTest>

namespace windowdriver {
namespace {

QByteArray run(const QString &program, const QStringList &arguments, int timeoutMs = 20000)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished();
    }
    return process.readAllStandardOutput().trimmed();
}

QString waitForFirst(const QStringList &searchArguments)
{
    QString id;
    const bool found = QTest::qWaitFor(
        [&] {
            id = QString::fromLatin1(run("xdotool", searchArguments).split('\n').value(0));
            return !id.isEmpty();
        },
        kEventWaitMs);
    return found ? id : QString();
}

} // namespace

QString waitForWindow(const QString &name)
{
    return waitForFirst({"search", "--onlyvisible", "--name", name});
}

QString waitForWindowOf(qint64 pid)
{
    return waitForFirst({"search", "--onlyvisible", "--pid", QString::number(pid)});
}

QString title(const QString &windowId)
{
    return QString::fromUtf8(run("xdotool", {"getwindowname", windowId}));
}

QStringList visibleWindowsOf(qint64 pid)
{
    const QString found =
        QString::fromLatin1(run("xdotool", {"search", "--onlyvisible", "--pid", QString::number(pid)}));
    return found.split('\n', Qt::SkipEmptyParts);
}

QString activeWindow()
{
    return QString::fromLatin1(run("xdotool", {"getactivewindow"}));
}

// Keys go to the active window, so they are sent only once the window manager reports
// this window active; on a loaded machine that can take a while after it is mapped.
bool pressInWindow(const QString &windowId, Key key)
{
    const bool active = QTest::qWaitFor(
        [&] {
            if (activeWindow() == windowId)
                return true;
            run("xdotool", {"windowactivate", windowId});
            return false;
        },
        kEventWaitMs);
    if (active)
        run("xdotool", {"key", "--clearmodifiers", key == Key::AltF4 ? "alt+F4" : "Return"});
    return active;
}

QString describeStillRunning(qint64 pid)
{
    QString report = "its visible windows: " + visibleWindowsOf(pid).join(' ');
    report += "\nactive window: " + activeWindow();
    if (!QStandardPaths::findExecutable("gdb").isEmpty())
        report += "\n"
                  + QString::fromUtf8(
                      run("gdb", {"-p", QString::number(pid), "-batch", "-ex", "thread apply all bt"}, kEventWaitMs));
    return report;
}

} // namespace windowdriver
