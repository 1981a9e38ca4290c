// Start-up and shut-down of the real executable in a real window system (Xvfb with
// openbox, or Windows), its windows found and closed as a user would.
#include "support/appprocess.h"
#include "support/testenv.h"
#include "windowdriver.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTcpServer>
#include <QtTest>

namespace {

const QString kTitle = QString::fromUtf8("Korvane 3D\u00AE Feedback Agent\u2122  Build 3126 (Win64) 21-Jun-2019");

// What a program that did not end after its window was closed is doing.
QByteArray stillRunningReport(AppProcess &app)
{
    return "the program did not end; its output:\n" + app.output() + "\n"
           + windowdriver::describeStillRunning(app.pid()).toUtf8();
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
        const QString id = windowdriver::waitForWindow("Feedback Agent");
        QVERIFY(!id.isEmpty());
        QVERIFY(QFileInfo(env.thumbnailFolder()).isDir());
        QCOMPARE(windowdriver::title(id), kTitle);

        // Files the program never made go with the folder too.
        QVERIFY(QDir().mkpath(env.thumbnailFolder() + "/sub"));
        QVERIFY(!writeTestFile(env.thumbnailFolder() + "/.hidden").isEmpty());
        QVERIFY(!writeTestFile(env.thumbnailFolder() + "/sub/picture.png").isEmpty());

        QVERIFY(windowdriver::pressInWindow(id, windowdriver::Key::AltF4));
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
        const QString id = windowdriver::waitForWindow("Feedback Agent");
        QVERIFY2(!id.isEmpty(), app.output().constData());

        // The box carries the full title (its text and icon are checked in-process by
        // the start-up test, which records the box through Qt itself).
        QCOMPARE(windowdriver::title(id), kTitle);
        // No main window exists behind it: the only window of the process is the box.
        QCOMPARE(windowdriver::visibleWindowsOf(app.pid()), QStringList{id});

        QVERIFY(windowdriver::pressInWindow(id, windowdriver::Key::Return));
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
        const QString firstWindow = windowdriver::waitForWindow("Feedback Agent");
        QVERIFY(!firstWindow.isEmpty());

        AppProcess second;
        second.start();
        const QString boxId = windowdriver::waitForWindowOf(second.pid());
        QVERIFY(!boxId.isEmpty());
        QCOMPARE(windowdriver::title(boxId), kTitle);
        QVERIFY(windowdriver::pressInWindow(boxId, windowdriver::Key::Return));
        QVERIFY(second.waitForFinished(kEventWaitMs));
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(first.process().state(), QProcess::Running);
        QVERIFY(QFileInfo(env.thumbnailFolder()).isDir()); // the first one's folder is untouched

        QVERIFY(windowdriver::pressInWindow(firstWindow, windowdriver::Key::AltF4));
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
        const QString id = windowdriver::waitForWindow("Feedback Agent");
        QVERIFY(!id.isEmpty());
        QVERIFY(!QFile::exists(env.home() + "/.fbagent"));
        QVERIFY(windowdriver::pressInWindow(id, windowdriver::Key::AltF4));
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
        const QString id = windowdriver::waitForWindow("Feedback Agent");
        QVERIFY(windowdriver::pressInWindow(id, windowdriver::Key::AltF4));
        if (!app.waitForFinished(kEventWaitMs))
            QFAIL(stillRunningReport(app).constData());
        QVERIFY(QFile::exists(env.home() + "/.fbagent"));
        QVERIFY(!QFile::exists(env.suiteFolder() + "/feedbackagent.cfg"));
        QVERIFY(QFileInfo(env.suiteFolder()).isDir());
    }
};

FB_TEST_MAIN(TestExecutable)
#include "tst_executable.moc"
