#pragma once

#include "support/testenv.h"

#include "form/mainwindow.h"
#include "multipartrecord.h"
#include "support/httpreceiver.h"
#include "support/modalanswerer.h"
#include "support/tinyproxy.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <memory>

class QWidget;

// What a test types into the form before it sends.
struct ReportForm
{
    ReportKind kind = ReportKind::BugReport;
    QString name = QStringLiteral("Ann Lee");
    QString email = QStringLiteral("ann@example.com");
    int areaRow = 0; // "Animation"
    QString build = QStringLiteral("3126");
    bool nda = false;
    bool includeSystemInfo = true;
    QString title = QStringLiteral("Crash on save");
    QString description = QStringLiteral("It crashed.");
    QStringList files; // added as file rows, in order
    QString destination;
};

// Chooses the kind on the intro screen and fills every field the way a user leaves
// it. The address is set, not typed, so no DNS look-up starts.
void fillForm(MainWindow &window, const ReportForm &form);

// Everything the user entered, one "field=value" line each, to show that a send left
// the form as it was.
QStringList formSnapshot(const MainWindow &window);

// The screen as the user sees it: which state, what is shown and enabled.
QStringList screenSnapshot(const MainWindow &window);

// The screens a send passes through, as screenSnapshot shows them.
QStringList composeBeforeSendScreen();
QStringList sendingScreen();
// Back on the form after a failure: Start Over stays disabled, the bar stays visible.
QStringList composeAfterFailureScreen();

// Clicks Send with the mouse (the window's event filter sees the press too).
void clickSend(MainWindow &window);
// Clicks Cancel, which reads "Abort" while a report is being sent.
void clickCancel(MainWindow &window);

// Waits for the system-information worker's summary to reach the window, so that a
// summary the test sets afterwards is not overwritten. On this machine the summary is
// never empty, so its arrival shows in the stored text.
class SummaryArrival
{
public:
    explicit SummaryArrival(MainWindow &window)
        : m_window(window)
    {
    }
    bool wait(int timeoutMs = 15000);

private:
    MainWindow &m_window;
};

// Runs the application's own event loop (QCoreApplication::exec) so that a
// QCoreApplication::quit() from the program ends it just as it ends the real program.
// start runs first from inside the loop. The result is 0 when the program quit,
// kLoopDone when done() became true first, kLoopTimedOut after timeoutMs.
constexpr int kLoopDone = 7;
constexpr int kLoopTimedOut = 99;
int runApplicationLoop(const std::function<void()> &start, const std::function<bool()> &done, int timeoutMs = 30000);

// One send run to its end inside the application's event loop, with every box it
// showed answered "OK".
struct SendRun
{
    int loopResult = -1; // 0: the program quit; kLoopDone: back on the compose screen
    QList<ModalSnapshot> boxes;
};
// For a send that should succeed: the loop ends only when the program quits.
SendRun sendExpectingQuit(MainWindow &window);
// For a send that should fail: the loop ends when a box has been closed and the
// window is back on the compose screen.
SendRun sendExpectingFailure(MainWindow &window);
// The box of a failed send, with the reason in quotes after a line break.
void verifyFailureBox(const SendRun &run, const QString &reason);
void verifySuccessBox(const SendRun &run);

// A shown window whose summary has arrived, holding a complete bug report with two
// attachments written into folder (log.txt, and scene.bin of attachmentSize bytes).
// Null when the summary never came.
std::unique_ptr<MainWindow> openReportWindow(const QString &destination, const QString &folder,
                                             qint64 attachmentSize = 1000);

// Sends and expects the failure box with reason, the compose screen after a failure,
// the outcome Failed and a form exactly as before.
void verifyFailedSend(MainWindow &window, const QString &reason);

// Sends, expects the success box and the quit, and returns the request as the
// receiver recorded it.
RecordedRequest deliverReport(MainWindow &window, HttpReceiver &receiver);

// The request is a multipart POST to the receiver on port whose body is exactly the
// expected parts, framed by Qt's boundary; on Linux Python's parser reads the same parts
// from a copy written to scratchFile.
void verifyReportRequest(const QByteArray &raw, quint16 port, const QString &scratchFile,
                         const QList<QByteArray> &expectedParts);

// Fills the proxy group of the settings page.
void setProxyFields(MainWindow &window, bool checked, const QString &server, const QString &port,
                    const QString &user = QString(), const QString &password = QString());

// A loopback port that nothing listens on.
quint16 closedPort();

// The application proxy and the environment proxies a developer may have set would
// change where a test's request goes; tests start from a direct connection.
void clearProxyEnvironment();

// clearProxyEnvironment for as long as it lives: the variables it found come back when
// it ends, so that tests which run in the same program with the environment as it was
// still see it.
class ProxyEnvironmentCleared
{
public:
    ProxyEnvironmentCleared();
    ~ProxyEnvironmentCleared();
    ProxyEnvironmentCleared(const ProxyEnvironmentCleared &) = delete;
    ProxyEnvironmentCleared &operator=(const ProxyEnvironmentCleared &) = delete;

private:
    QList<QPair<QByteArray, QByteArray>> m_found; // name and value of each variable that was set
};

template <typename T>
T *child(const MainWindow &window, const char *objectName)
{
    return window.findChild<T *>(QString::fromLatin1(objectName));
}

// What every send test works with: a work folder of its own, the loopback receiver, a
// proxy when the test starts one, and the window. The tests derive from it and call
// beginTest() from init() and endTest() from cleanup().
class SubmitTestState
{
protected:
    std::unique_ptr<QTemporaryDir> work;
    std::unique_ptr<HttpReceiver> receiver;
    std::unique_ptr<TinyProxy> proxy;
    std::unique_ptr<MainWindow> window;

    QString path(const QString &name) const { return work->path() + "/" + name; }

    // A new receiver recording into the work folder.
    bool startReceiver(const HttpReceiver::Options &options = {});

    // Each test starts as on a first run: no settings, no thumbnails left, and a work
    // folder named after the test program.
    void beginTest(const QString &folderPrefix);

    // The window first (it holds the guard port and the attachment files), then the
    // peers and the folder; the application proxy back to none.
    void endTest();
};
