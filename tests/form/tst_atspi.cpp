// The running program as a screen reader such as Orca meets it: through AT-SPI, on a
// private session bus with its own accessibility bus and registry. A small python3
// script (atspi_inputs.py) walks the program's tree with pyatspi, presses the Bug Report
// button and the Identity tab through their actions and lists the controls it finds.
#include "app/windowdriver.h"
#include "support/appprocess.h"
#include "support/testenv.h"

#include <QApplication>
#include <QProcess>
#include <QtTest>

namespace {

// Every control of the form: role, name and states, in the order of the tree. Item views
// report themselves showing even on a hidden page (Qt gives them no invisible state), and
// the title combo box holds its unnamed list and line edit.
const QStringList kIntroScreen = {
    "intro|push button|Bug Report (Crashes / Issues)|focusable,enabled,showing",
    "intro|push button|Feature Request (Features / Workflow)|focusable,enabled,showing",
    "intro|text|Your name:|focusable,enabled",
    "intro|text|Email address:|focusable,enabled",
    "intro|check box|Remember My Information|focusable,enabled",
    "intro|list|Area:|enabled,showing",
    "intro|text|Build:|focusable,enabled",
    "intro|check box|Include My System Information|focusable,enabled",
    "intro|combo box|Please provide a short title of the bug/issue  (70 characters max):|focusable,enabled",
    "intro|list||enabled,showing",
    "intro|text||focusable,enabled",
    "intro|text|Please provide a description of the bug/issue:|focusable,enabled",
    "intro|push button|Attach File(s)...|focusable,enabled",
    "intro|push button|Remove Selected|focusable,enabled",
    "intro|push button|Clear All|focusable,enabled",
    "intro|tree|Attachments|enabled,showing",
    "intro|check box|Privatize content (NDA)|focusable,enabled",
    "intro|check box|Enhanced capture|focusable,enabled",
    "intro|push button|Take Screen Shot...|focusable,enabled",
    "intro|text|Delay:|focusable,enabled",
    "intro|check box|I understand.  Let me modify the settings.|focusable,enabled",
    "intro|text|HTTP destination:|focusable,enabled",
    "intro|check box|HTTP Proxy Settings|focusable,enabled",
    "intro|text|Server:|focusable",
    "intro|text|Port:|focusable",
    "intro|text|User name:|focusable",
    "intro|password text|Password:|focusable",
    "intro|page tab list|Introduction|focusable,enabled",
    "intro|page tab|Introduction|focusable,enabled",
    "intro|page tab|Step 1: Identity|focusable,enabled",
    "intro|page tab|Step 2: Details|focusable,enabled",
    "intro|page tab|Step 3: Description|focusable,enabled",
    "intro|page tab|Step 4: Attachments|focusable,enabled",
    "intro|page tab|Feedback Agent Settings|focusable,enabled",
    // The tab bar's scroll arrows are there for the mouse; the keyboard does not stop on them.
    "intro|push button|Scroll Left|enabled",
    "intro|push button|Scroll Right|enabled",
    "intro|push button|Cancel|focusable,enabled,showing",
    "intro|push button|Start Over|focusable,enabled",
    "intro|push button|Send...|focusable,showing",
    "intro|progress bar|Upload progress|enabled",
};

// What is showing once a bug report is begun and the Identity tab is chosen.
const QStringList kIdentityTab = {
    "identity|text|Your name:|focusable,enabled,showing",
    "identity|text|Email address:|focusable,enabled,showing",
    "identity|check box|Remember My Information|focusable,enabled,showing",
    "identity|list|Area:|enabled,showing",
    "identity|list||enabled,showing",
    "identity|tree|Attachments|enabled,showing",
    "identity|page tab list|Step 1: Identity|focusable,enabled,showing",
    "identity|page tab|Introduction|focusable,enabled,showing",
    "identity|page tab|Step 1: Identity|focusable,enabled,showing",
    "identity|page tab|Step 2: Details|focusable,enabled,showing",
    "identity|page tab|Step 3: Description|focusable,enabled,showing",
    "identity|page tab|Step 4: Attachments|focusable,enabled,showing",
    "identity|page tab|Feedback Agent Settings|focusable,enabled,showing",
    "identity|push button|Scroll Left|showing",
    "identity|push button|Scroll Right|enabled,showing",
    "identity|push button|Cancel|focusable,enabled,showing",
    "identity|push button|Start Over|focusable,enabled,showing",
    "identity|push button|Completed 1/7|focusable,showing",
};

// A helper process that is ended with the test, whatever happens.
struct Helper
{
    QProcess process;
    ~Helper()
    {
        if (process.state() != QProcess::NotRunning) {
            process.terminate();
            if (!process.waitForFinished(5000)) {
                process.kill();
                process.waitForFinished(5000);
            }
        }
    }
};

} // namespace

class TestAtSpi : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestEnvironment::instance().forgetSettings(); }

    void screenReaderFindsEveryControl()
    {
        // A session bus of the test's own: nothing of the machine's session is touched.
        Helper sessionBus;
        sessionBus.process.start("dbus-daemon", {"--session", "--nofork", "--print-address=1"});
        QVERIFY2(sessionBus.process.waitForStarted(kEventWaitMs), "dbus-daemon did not start");
        QVERIFY(QTest::qWaitFor([&] { return sessionBus.process.canReadLine(); }, kEventWaitMs));
        const QString address = QString::fromUtf8(sessionBus.process.readLine().trimmed());
        QVERIFY(address.startsWith("unix:"));
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("DBUS_SESSION_BUS_ADDRESS", address);

        AppProcess app;
        app.environment() = env;
        app.environment().insert("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
        app.start();
        QVERIFY2(app.waitUntilGuardTaken(kEventWaitMs), app.output().constData());
        const QString window = windowdriver::waitForWindowOf(app.pid());
        QVERIFY2(!window.isEmpty(), app.output().constData());

        // The accessibility bus starts once the window is up. Started before the program,
        // it was never joined here ("Not connected to D-Bus server"); started after, it
        // is joined every time.
        Helper busLauncher;
        busLauncher.process.setProcessEnvironment(env);
        busLauncher.process.start("/usr/libexec/at-spi-bus-launcher", {"--launch-immediately"});
        QVERIFY2(busLauncher.process.waitForStarted(kEventWaitMs), "at-spi-bus-launcher did not start");

        Helper reader;
        reader.process.setProcessEnvironment(env);
        // Debian's own python3, which has the pyatspi bindings.
        reader.process.start("/usr/bin/python3",
                             {QStringLiteral(FB_TESTS_DIR "/form/atspi_inputs.py"), QString::number(app.pid())});
        QVERIFY(QTest::qWaitFor([&] { return reader.process.state() == QProcess::NotRunning; }, 2 * kEventWaitMs));
        const QByteArray errors = reader.process.readAllStandardError();
        QVERIFY2(reader.process.exitStatus() == QProcess::NormalExit && reader.process.exitCode() == 0,
                 errors.constData());

        const QStringList found =
            QString::fromUtf8(reader.process.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
        const QStringList expected = kIntroScreen + kIdentityTab;
        for (int i = 0; i < qMin(found.size(), expected.size()); ++i)
            QCOMPARE(found.at(i), expected.at(i));
        QCOMPARE(found.size(), expected.size());

        QVERIFY(windowdriver::pressInWindow(window, windowdriver::Key::AltF4));
        QVERIFY2(app.waitForFinished(kEventWaitMs), app.output().constData());
        QCOMPARE(app.exitCode(), 0);
    }
};

FB_TEST_MAIN(TestAtSpi)
#include "tst_atspi.moc"
