// Start-up and shut-down of the real executable on a real X server (Xvfb + openbox).
#include "support/appprocess.h"
#include "support/testenv.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTcpServer>
#include <QtTest>

namespace {

const QString kTitle = QString::fromUtf8("Korvane 3D\u00AE Feedback Agent\u2122  Build 3126 (Win64) 21-Jun-2019");

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

// Window id of the first visible window whose name matches, waiting for it to map.
QString waitForWindow(const QString &name)
{
    QString id;
    const bool found = QTest::qWaitFor(
        [&] {
            id = QString::fromLatin1(run("xdotool", {"search", "--onlyvisible", "--name", name}).split('\n').value(0));
            return !id.isEmpty();
        },
        kEventWaitMs);
    return found ? id : QString();
}

// Keys go to the active window, so they are sent only once the window manager reports
// this window active; on a loaded machine that can take a while after it is mapped.
bool closeWithKeyboard(const QString &windowId, const QString &keys)
{
    const bool active = QTest::qWaitFor(
        [&] {
            if (run("xdotool", {"getactivewindow"}) == windowId.toLatin1())
                return true;
            run("xdotool", {"windowactivate", windowId});
            return false;
        },
        kEventWaitMs);
    if (active)
        run("xdotool", {"key", "--clearmodifiers", keys});
    return active;
}

// What a program that did not end after its window was closed is doing: its output,
// its windows, the active window, and (where gdb is installed) every thread's stack.
QByteArray stillRunningReport(AppProcess &app)
{
    const QString pid = QString::number(app.pid());
    QByteArray report = "the program did not end; its output:\n" + app.output();
    report += "\nits visible windows: " + run("xdotool", {"search", "--onlyvisible", "--pid", pid});
    report += "\nactive window: " + run("xdotool", {"getactivewindow"});
    if (!QStandardPaths::findExecutable("gdb").isEmpty())
        report += "\n" + run("gdb", {"-p", pid, "-batch", "-ex", "thread apply all bt"}, kEventWaitMs);
    return report;
}

} // namespace

class TestExecutable : public QObject
{
    Q_OBJECT

private:
    TestEnvironment &env = TestEnvironment::instance();

private slots:
    void init()
    {
        QDir(env.thumbnailFolder()).removeRecursively();
        QDir(env.suiteFolder()).removeRecursively();
        QFile::remove(env.home() + "/.fbagent");
    }

    void runsShowsTheWindowAndCleansUp()
    {
        AppProcess app;
        app.start();
        QVERIFY2(app.waitUntilGuardTaken(kEventWaitMs), app.output().constData());
        const QString id = waitForWindow("Feedback Agent");
        QVERIFY(!id.isEmpty());
        QVERIFY(QFileInfo(env.thumbnailFolder()).isDir());
        QCOMPARE(QString::fromUtf8(run("xdotool", {"getwindowname", id})), kTitle);

        // Files the program never made go with the folder too.
        QVERIFY(QDir().mkpath(env.thumbnailFolder() + "/sub"));
        QVERIFY(!writeTestFile(env.thumbnailFolder() + "/.hidden").isEmpty());
        QVERIFY(!writeTestFile(env.thumbnailFolder() + "/sub/picture.png").isEmpty());

        QVERIFY(closeWithKeyboard(id, "alt+F4"));
        if (!app.waitForFinished(kEventWaitMs))
            QFAIL(stillRunningReport(app).constData());
        QCOMPARE(app.exitStatus(), QProcess::NormalExit);
        QCOMPARE(app.exitCode(), 0);
        QVERIFY(!QFileInfo::exists(env.thumbnailFolder()));
        QVERIFY(!AppProcess::portInUse(23709));
    }

    void anyListenerOnThePortBlocksTheStart()
    {
        QTcpServer other;
        QVERIFY(other.listen(QHostAddress::Any, 23709));
        AppProcess app;
        app.start();
        const QString id = waitForWindow("Feedback Agent");
        QVERIFY2(!id.isEmpty(), app.output().constData());

        // The box carries the full title (its text and icon are checked in-process by
        // the start-up test, which records the box through Qt itself).
        QCOMPARE(QString::fromUtf8(run("xdotool", {"getwindowname", id})), kTitle);
        // No main window exists behind it: the only window of the process is the box.
        const QByteArray windows = run("xdotool", {"search", "--onlyvisible", "--pid", QString::number(app.pid())});
        QCOMPARE(windows.split('\n').size(), 1);

        QVERIFY(closeWithKeyboard(id, "Return"));
        if (!app.waitForFinished(kEventWaitMs))
            QFAIL(stillRunningReport(app).constData());
        QCOMPARE(app.exitStatus(), QProcess::NormalExit);
        QCOMPARE(app.exitCode(), 0);
        // It stopped before building anything.
        QVERIFY(!QFileInfo::exists(env.thumbnailFolder()));
        QVERIFY(!QFileInfo::exists(env.suiteFolder()));
    }

    void secondInstanceExitsAndTheFirstRunsOn()
    {
        AppProcess first;
        first.start();
        QVERIFY(first.waitUntilGuardTaken(kEventWaitMs));
        const QString firstWindow = waitForWindow("Feedback Agent");
        QVERIFY(!firstWindow.isEmpty());

        AppProcess second;
        second.start();
        QString boxId;
        const bool boxShown = QTest::qWaitFor(
            [&] {
                const QList<QByteArray> ids = run("xdotool", {"search", "--onlyvisible", "--pid",
                                                               QString::number(second.pid())})
                                                  .split('\n');
                boxId = QString::fromLatin1(ids.value(0));
                return !boxId.isEmpty();
            },
            kEventWaitMs);
        QVERIFY(boxShown);
        QCOMPARE(QString::fromUtf8(run("xdotool", {"getwindowname", boxId})), kTitle);
        QVERIFY(closeWithKeyboard(boxId, "Return"));
        QVERIFY(second.waitForFinished(kEventWaitMs));
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(first.process().state(), QProcess::Running);
        QVERIFY(QFileInfo(env.thumbnailFolder()).isDir()); // the first one's folder is untouched

        QVERIFY(closeWithKeyboard(firstWindow, "alt+F4"));
        if (!first.waitForFinished(kEventWaitMs))
            QFAIL(stillRunningReport(first).constData());
        QCOMPARE(first.exitCode(), 0);
    }

    void oldSettingsFileIsDroppedOnceTheNewOneExists()
    {
        QVERIFY(QDir().mkpath(env.suiteFolder()));
        QVERIFY(!writeTestFile(env.suiteFolder() + "/feedbackagent.cfg", "[application]\n").isEmpty());
        QVERIFY(!writeTestFile(env.home() + "/.fbagent", "[application]\n").isEmpty());
        AppProcess app;
        app.start();
        QVERIFY(app.waitUntilGuardTaken(kEventWaitMs));
        const QString id = waitForWindow("Feedback Agent");
        QVERIFY(!id.isEmpty());
        QVERIFY(!QFile::exists(env.home() + "/.fbagent"));
        QVERIFY(closeWithKeyboard(id, "alt+F4"));
        if (!app.waitForFinished(kEventWaitMs))
            QFAIL(stillRunningReport(app).constData());
        QVERIFY(QFile::exists(env.suiteFolder() + "/feedbackagent.cfg"));
    }

    void onlyTheOldSettingsFileIsKept()
    {
        QVERIFY(!writeTestFile(env.home() + "/.fbagent", "[application]\n").isEmpty());
        AppProcess app;
        app.start();
        QVERIFY(app.waitUntilGuardTaken(kEventWaitMs));
        const QString id = waitForWindow("Feedback Agent");
        QVERIFY(closeWithKeyboard(id, "alt+F4"));
        if (!app.waitForFinished(kEventWaitMs))
            QFAIL(stillRunningReport(app).constData());
        QVERIFY(QFile::exists(env.home() + "/.fbagent"));
        QVERIFY(!QFile::exists(env.suiteFolder() + "/feedbackagent.cfg"));
        QVERIFY(QFileInfo(env.suiteFolder()).isDir());
    }
};

FB_TEST_MAIN(TestExecutable)
#include "tst_executable.moc"
