// Sending a report: progress, success and quit, failures and aborts, and files that
// go missing or cannot be read. Each fault shows its exact box (or none), ends on its
// screen, and leaves every field and attachment as the user left them.
#include "multipartrecord.h"
#include "sendtests.h"
#include "submitfixture.h"

#include "form/mainwindow.h"
#include "support/httpreceiver.h"
#include "support/mainwindowprobe.h"
#include "support/modalanswerer.h"
#include "support/testenv.h"
#include "support/unreadablefile.h"

#include <QApplication>
#include <QHttpMultiPart>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <memory>

namespace {

// Aborted, but the answer was already in: finished() brings the form back. The intro
// screen hid the bar and nothing shows it again.
const QStringList kComposeAfterAbortScreen{"formState 1",
                                           "layout_selecting_buttons_2 hidden",
                                           "tabWidget shown",
                                           "progressBar hidden",
                                           "button_Start_Over shown disabled",
                                           "button_Send shown",
                                           "button_Cancel Cancel",
                                           "button_Send Send..."};

// The intro screen after an abort. Nothing on the way there renames Cancel or enables
// the tabs again, so Cancel still reads "Abort" and the hidden tabs stay disabled.
const QStringList kIntroAfterAbortScreen{"formState 0",
                                         "layout_selecting_buttons_2 shown",
                                         "tabWidget hidden disabled",
                                         "progressBar hidden",
                                         "button_Start_Over hidden disabled",
                                         "button_Send shown disabled",
                                         "button_Cancel Abort",
                                         "button_Send Send..."};

} // namespace

void SendTests::openWindow(const QString &destination, qint64 attachmentSize)
{
    window = openReportWindow(destination, path("files"), attachmentSize);
    QVERIFY(window);
}

void SendTests::failsWith(const QString &reason)
{
    verifyFailedSend(*window, reason);
}

QString SendTests::serverReplied(const QString &status) const
{
    return QStringLiteral("Error transferring %1 - server replied: %2").arg(receiver->url().toString(), status);
}

void SendTests::sendUntilTheBodyIsIn()
{
    QCOMPARE(
        runApplicationLoop([&] { clickSend(*window); }, [&] { return receiver->countEvents("request 1 body ") == 1; }),
        kLoopDone);
    QCOMPARE(screenSnapshot(*window), sendingScreen());
}

// Presses Abort the way a user's click arrives: from inside the running event loop.
// With holdFor, the GUI thread first waits for that receiver event without running
// the loop, so the server's answer is already queued when the click comes.
int SendTests::abortFromTheLoop(const QString &holdFor, QStringList &screenAtAbort, const std::function<bool()> &done)
{
    return runApplicationLoop(
        [&] {
            if (!holdFor.isEmpty()) {
                receiver->waitForEventBlocking(holdFor);
                QThread::msleep(500); // the network thread reads the answer and queues it
            }
            clickCancel(*window);
            screenAtAbort = screenSnapshot(*window);
            screenAtAbort << QStringLiteral("sendOutcome %1").arg(MainWindowProbe::sendOutcome(*window));
        },
        done);
}

void SendTests::successShowsTheBoxAndQuits()
{
    QVERIFY(startReceiver({}));
    openWindow(receiver->url().toString());
    const QStringList before = formSnapshot(*window);

    const SendRun run = sendExpectingQuit(*window);
    QCOMPARE(run.loopResult, 0); // QCoreApplication::quit() ended the loop
    verifySuccessBox(run);
    QVERIFY(receiver->hasEvent("request 1 answered 200"));
    // The program ends here: nothing is reset, the window still says Sending.
    QCOMPARE(MainWindowProbe::sendOutcome(*window), qint32(SendOutcome::InFlight));
    QCOMPARE(screenSnapshot(*window), sendingScreen());
    QCOMPARE(formSnapshot(*window), before);
}

void SendTests::progressIsBusyUntilTheFirstReport()
{
    QVERIFY(startReceiver({}));
    openWindow(receiver->url().toString(), 8 << 20);
    QProgressBar *bar = child<QProgressBar>(*window, "progressBar");
    bar->setRange(0, 100);
    bar->setValue(42);

    QStringList atClick;
    QList<QList<qint64>> reports; // bytesSent, bytesTotal, then the bar's min, max, value
    auto start = [&] {
        clickSend(*window);
        atClick << QStringLiteral("%1 %2").arg(bar->minimum()).arg(bar->maximum());
        QNetworkReply *reply = MainWindowProbe::reply(*window);
        // Connected after the window's own slot, so it sees the bar as that slot left it.
        QObject::connect(reply, &QNetworkReply::uploadProgress, [&](qint64 sent, qint64 total) {
            reports.append({sent, total, bar->minimum(), bar->maximum(), bar->value()});
        });
    };
    ModalAnswerer answerer;
    answerer.clickButton("OK");
    QCOMPARE(runApplicationLoop(start, [] { return false; }), 0);
    QCOMPARE(atClick, QStringList{"0 0"});

    QVERIFY(receiver->waitForEvent("request 1 answered 200"));
    const qint64 bodySize = parseRecordedRequest(receiver->request(1)).body.size();
    QVERIFY2(reports.size() >= 2, qPrintable(QString::number(reports.size())));
    QCOMPARE(reports.first().at(1), bodySize);
    bool reachedTheEnd = false;
    for (const QList<qint64> &report : reports) {
        QCOMPARE(report.at(2), qint64(0));
        QCOMPARE(report.at(3), bodySize); // the first total, kept to the end
        QCOMPARE(report.at(4), report.at(0));
        reachedTheEnd = reachedTheEnd || report.at(0) == bodySize;
    }
    QVERIFY(reachedTheEnd);
    // Qt closes an upload with a report of 0 of 0; the maximum stays as it was.
    QCOMPARE(reports.last(), QList<qint64>({0, 0, 0, bodySize, 0}));
}

void SendTests::progressTakesTheMaximumOnlyOnce()
{
    window.reset(new MainWindow);
    QProgressBar *bar = child<QProgressBar>(*window, "progressBar");
    QVERIFY(MainWindowProbe::progressFirst(*window));
    window->slot_send_progress(5, 10);
    QCOMPARE(QList<int>({bar->minimum(), bar->maximum(), bar->value()}), QList<int>({0, 10, 5}));
    QVERIFY(!MainWindowProbe::progressFirst(*window));
    window->slot_send_progress(7, 20);
    QCOMPARE(QList<int>({bar->minimum(), bar->maximum(), bar->value()}), QList<int>({0, 10, 7}));
}

void SendTests::progressBeyondTheBarsRangeIsClamped()
{
    window.reset(new MainWindow);
    QProgressBar *bar = child<QProgressBar>(*window, "progressBar");
    window->slot_send_progress(Q_INT64_C(3000000000), Q_INT64_C(5000000000));
    QCOMPARE(QList<int>({bar->minimum(), bar->maximum(), bar->value()}), QList<int>({0, 2147483647, 2147483647}));
}

void SendTests::connectionRefused()
{
    openWindow(QStringLiteral("http://127.0.0.1:%1/").arg(closedPort()));
    failsWith("Connection refused");
}

void SendTests::serverClosesInTheMiddleOfTheBody()
{
    HttpReceiver::Options options;
    options.cutAfter = 64 * 1024;
    QVERIFY(startReceiver(options));
    openWindow(receiver->url().toString(), 4 << 20);
    failsWith("Connection closed");
    QVERIFY(receiver->hasEvent("request 1 cut 65536"));
}

void SendTests::notFound()
{
    HttpReceiver::Options options;
    options.status = 404;
    QVERIFY(startReceiver(options));
    openWindow(receiver->url().toString());
    failsWith(serverReplied("Not Found"));
}

void SendTests::internalServerError()
{
    HttpReceiver::Options options;
    options.status = 500;
    QVERIFY(startReceiver(options));
    openWindow(receiver->url().toString());
    failsWith(serverReplied("Internal Server Error"));
}

// Abort while the server is still thinking: no box, the intro screen, the form kept.
void SendTests::abortBeforeTheAnswer()
{
    HttpReceiver::Options options;
    options.answerDelayMs = 60000;
    QVERIFY(startReceiver(options));
    openWindow(receiver->url().toString());
    const QStringList before = formSnapshot(*window);
    ModalAnswerer answerer;
    sendUntilTheBodyIsIn();
    const QPointer<QNetworkReply> reply = MainWindowProbe::reply(*window);
    QVERIFY(reply);

    QStringList atAbort;
    // The reply goes on the next pass of the loop, and the connection with it.
    QCOMPARE(abortFromTheLoop(QString(), atAbort,
                              [&] { return reply.isNull() && receiver->countEvents("request 1 peer-closed") == 1; }),
             kLoopDone);
    QCOMPARE(atAbort, kIntroAfterAbortScreen + QStringList{"sendOutcome 2"});
    QTest::qWait(200);
    QCOMPARE(answerer.seen().size(), 0);
    QCOMPARE(MainWindowProbe::sendOutcome(*window), qint32(SendOutcome::Aborted));
    QCOMPARE(screenSnapshot(*window), kIntroAfterAbortScreen);
    QCOMPARE(formSnapshot(*window), before); // the kind too
    QVERIFY(!receiver->hasEvent("request 1 answered 200"));
}

// The answer is already in when Abort is pressed, and finished() still arrives
// before the reply is gone. A success finds the abort mark: no box, back on the
// form. An error status raises the error signal first, which overrides the mark:
// the failure box shows.
void SendTests::abortAfterTheAnswerArrived_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("reason"); // of the failure box; empty: no box
    QTest::addColumn<int>("outcome");
    QTest::newRow("200") << 200 << QString() << int(SendOutcome::Aborted);
    QTest::newRow("500") << 500 << "Internal Server Error" << int(SendOutcome::Failed);
}
void SendTests::abortAfterTheAnswerArrived()
{
    QFETCH(int, status);
    QFETCH(QString, reason);
    QFETCH(int, outcome);
    HttpReceiver::Options options;
    options.status = status;
    options.answerDelayMs = 1000;
    QVERIFY(startReceiver(options));
    openWindow(receiver->url().toString());
    const QStringList before = formSnapshot(*window);
    ModalAnswerer answerer;
    if (!reason.isEmpty())
        answerer.clickButton("OK");
    sendUntilTheBodyIsIn();
    const QPointer<QNetworkReply> reply = MainWindowProbe::reply(*window);

    QStringList atAbort;
    QCOMPARE(abortFromTheLoop(QStringLiteral("request 1 answered %1").arg(status), atAbort,
                              [&] { return reply.isNull() && answerer.seen().size() == (reason.isEmpty() ? 0 : 1); }),
             kLoopDone);
    QCOMPARE(atAbort, kIntroAfterAbortScreen + QStringList{"sendOutcome 2"});
    SendRun run;
    run.boxes = answerer.seen();
    if (reason.isEmpty())
        QCOMPARE(run.boxes.size(), 0);
    else
        verifyFailureBox(run, serverReplied(reason));
    QCOMPARE(MainWindowProbe::sendOutcome(*window), qint32(outcome));
    QCOMPARE(screenSnapshot(*window), kComposeAfterAbortScreen);
    QCOMPARE(formSnapshot(*window), before);
}

// A file removed after it was added is left out; the report goes without it.
void SendTests::attachmentDeletedAfterItWasAdded()
{
    QVERIFY(startReceiver({}));
    openWindow(receiver->url().toString());
    const QStringList before = formSnapshot(*window);
    QVERIFY(QFile::remove(path("files/log.txt")));

    const SendRun run = sendExpectingQuit(*window);
    QCOMPARE(run.loopResult, 0);
    verifySuccessBox(run);
    QCOMPARE(formSnapshot(*window), before); // the row is still listed
    const RecordedRequest request = parseRecordedRequest(receiver->request(1));
    const QList<QByteArray> parts = multipartParts(request.body, multipartBoundary(request.header("Content-Type")));
    // identity, details, the summary (it arrived before the form was filled), title,
    // description, the file, the list
    QCOMPARE(parts.size(), 7);
    QVERIFY(!MainWindowProbe::sysInfo(*window).isEmpty());
    QCOMPARE(parts.at(2), fieldPart("sysinfo", MainWindowProbe::sysInfo(*window).toUtf8()));
    QCOMPARE(parts.at(5), filePart("scene.bin", QByteArray(1000, 'x')));
    QCOMPARE(parts.at(6), fieldPart("attachments", "[ \"scene.bin\" ]"));
}

#ifdef Q_OS_WIN
// On Windows the summary comes from the DirectX diagnostics provider, read through
// COM on the worker's thread: the four system fields, then each display.
void SendTests::summaryFromTheDiagnosticsProviderIsSent()
{
    QVERIFY(startReceiver({}));
    openWindow(receiver->url().toString());
    const SendRun run = sendExpectingQuit(*window);
    QCOMPARE(run.loopResult, 0);
    const RecordedRequest request = parseRecordedRequest(receiver->request(1));
    const QList<QByteArray> parts = multipartParts(request.body, multipartBoundary(request.header("Content-Type")));
    // identity, details, the summary, title, description, the two files, the list
    QCOMPARE(parts.size(), 8);
    const QString summary = MainWindowProbe::sysInfo(*window);
    QCOMPARE(parts.at(2), fieldPart("sysinfo", summary.toUtf8()));
    const QRegularExpression windowsFields(
        QStringLiteral("^\\{ \"DirectXVersion\" : \"[^\" ]*DirectX[^\" ]*\", \"PhysicalMemory\" : \"[0-9]+MB%20RAM\", "
                       "\"Processor\" : \"[^\" ]+\", \"OS\" : \"[^\" ]*Windows[^\" ]*\""
                       "(, \"Display\" : \"%5C%5C.%5CDISPLAY[0-9]+; [^\"]+\")+ \\}$"));
    QVERIFY2(windowsFields.match(summary).hasMatch(), qPrintable(summary));
}
#endif

// A file that is there but cannot be read: Send does nothing at all.
void SendTests::attachmentThatCannotBeOpened()
{
    QVERIFY(startReceiver({}));
    openWindow(receiver->url().toString());
    const QString locked = path("files/log.txt");
    UnreadableFile unreadable(locked);
    QVERIFY(unreadable.ok());
    QFile probe(locked);
    QVERIFY2(!probe.open(QIODevice::ReadOnly), "the locked file is still readable");
    const QStringList before = formSnapshot(*window);

    QCOMPARE(window->build_payload(), static_cast<QHttpMultiPart *>(nullptr));
    ModalAnswerer answerer;
    QCOMPARE(runApplicationLoop([&] { clickSend(*window); }, [] { return false; }, 1000), kLoopTimedOut);
    QCOMPARE(answerer.seen().size(), 0);
    QCOMPARE(MainWindowProbe::network(*window), static_cast<QNetworkAccessManager *>(nullptr));
    QCOMPARE(MainWindowProbe::reply(*window), static_cast<QNetworkReply *>(nullptr));
    QCOMPARE(MainWindowProbe::sendOutcome(*window), qint32(SendOutcome::Idle));
    QCOMPARE(screenSnapshot(*window), composeBeforeSendScreen());
    QCOMPARE(formSnapshot(*window), before);
    QCOMPARE(receiver->countEvents("request "), 0);
}
