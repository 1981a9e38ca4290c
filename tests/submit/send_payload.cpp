// The report body as it arrives at a real HTTP receiver: every part, every header and
// every byte, read back by our own framing check and by Python's email package.
#include "expectedtexts.h"
#include "multipartrecord.h"
#include "sendtests.h"
#include "submitfixture.h"

#include "form/mainwindow.h"
#include "support/httpreceiver.h"
#include "support/mainwindowprobe.h"
#include "support/modalanswerer.h"
#include "support/testenv.h"

#include <QApplication>
#include <QHttpMultiPart>
#include <QImage>
#include <QListWidget>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

// A file name with a quote in it, and how the report names it. Windows allows no
// double quote in a file name, so a single one stands in there.
#ifdef Q_OS_WIN
const char kQuotedFileName[] = "q'uote.txt";
const char kQuotedFileNameSent[] = "q%27uote.txt";
#else
const char kQuotedFileName[] = "q\"uote.txt";
const char kQuotedFileNameSent[] = "q%22uote.txt";
#endif

// The parts of the default form (see ReportForm) before its files.
const QList<QByteArray> kDefaultFields{fieldPart("identity", kAnnIdentity),
                                       fieldPart("details", expectedDetails("bug", "3126", "Animation", "false")),
                                       fieldPart("title", "Crash on save"), fieldPart("description", "It crashed.")};

QByteArray allByteValues()
{
    QByteArray bytes;
    for (int i = 0; i < 256; ++i)
        bytes.append(char(i));
    return bytes;
}

QByteArray fileContent(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing " + path.toUtf8() + ">");
}

QPixmap drawnPixmap(const QColor &color)
{
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(color);
    QPainter painter(&image);
    painter.drawLine(0, 0, 39, 29);
    return QPixmap::fromImage(image);
}

} // namespace

// The default form, sent to the receiver.
ReportForm SendTests::form() const
{
    ReportForm form;
    form.destination = receiver->url().toString();
    return form;
}

void SendTests::checkRequest(const QByteArray &raw, const QList<QByteArray> &expectedParts)
{
    verifyReportRequest(raw, receiver->port(), path("request.bin"), expectedParts);
}

// Sends with the Send button; the receiver answers 200, the success box is closed
// and the program quits, as it does for a user. Then the request is checked.
void SendTests::sendAndCheck(const QList<QByteArray> &expectedParts)
{
    QVERIFY(child<QPushButton>(*window, "button_Send")->isEnabled());
    const SendRun run = sendExpectingQuit(*window);
    QCOMPARE(run.loopResult, 0);
    verifySuccessBox(run);
    QVERIFY(receiver->waitForEvent("request 1 answered 200"));
    checkRequest(receiver->request(1), expectedParts);
}

void SendTests::initPayload()
{
    beginTest(QStringLiteral("payload"));
    QVERIFY(startReceiver());
    // Each test sets its own summary, so the worker's must have come first.
    window.reset(new MainWindow);
    SummaryArrival summary(*window);
    window->show();
    QVERIFY(summary.wait());
}

void SendTests::bugReport()
{
    window->slot_sysinfo("{ \"OS\" : \"Debian%2012\", \"Display\" : \"%5C%5C.%5CDISPLAY1\" }");
    ReportForm report = form();
    report.description = "Open a scene.\nSave it.";
    report.files = QStringList{writeTestFile(path("logs/log.txt"), "first line\nsecond line\n"),
                               writeTestFile(path("data 1.bin"), allByteValues())};
    fillForm(*window, report);
    sendAndCheck({
        fieldPart("identity", kAnnIdentity),
        fieldPart("details", expectedDetails("bug", "3126", "Animation", "false")),
        fieldPart("sysinfo", "{ \"OS\" : \"Debian%2012\", \"Display\" : \"%5C%5C.%5CDISPLAY1\" }"),
        fieldPart("title", "Crash on save"),
        fieldPart("description", "Open a scene.\r\nSave it."),
        filePart("log.txt", "first line\nsecond line\n"), // file contents go as they are
        filePart("data%201.bin", allByteValues()),
        fieldPart("attachments", "[ \"log.txt\", \"data%201.bin\" ]"),
    });
}

void SendTests::featureRequestWithoutAttachmentsEndsWithTheDescription()
{
    window->slot_sysinfo("{ \"OS\" : \"Debian%2012\" }");
    ReportForm report = form();
    report.kind = ReportKind::FeatureRequest;
    report.areaRow = 45; // "Other", the last row
    report.nda = true;
    report.includeSystemInfo = false; // a summary is there, but not allowed
    report.title = "Batch export";
    report.description = "Export every scene at once.";
    fillForm(*window, report);
    sendAndCheck({
        fieldPart("identity", kAnnIdentity),
        fieldPart("details", expectedDetails("feature", "3126", "Other", "true")),
        fieldPart("title", "Batch export"),
        fieldPart("description", "Export every scene at once."),
    });
}

void SendTests::spacesQuotesNonAsciiAndLineBreaks()
{
    window->slot_sysinfo(QString::fromUtf8("{ \"Processor\" : \"Intel%28R%29\" }"));
    ReportForm report = form();
    report.name = QString::fromUtf8("José Ñ \"Q\" \\ x\r\ny");
    report.email = QString::fromUtf8("a b\"c\"@d.com\r\n");
    report.areaRow = 6; // "Crashes / Hangs"
    report.build = "12";
    // The line edit keeps a CR LF as typed; the sent title gets CR CR LF.
    report.title = QString::fromUtf8("Ünïcode \"quoted\" a\r\nb");
    // The editor keeps lines, not line ends: CR LF and LF both come back as LF.
    report.description = QString::fromUtf8("a\nb\r\nç \"d\"\n");
    report.files = QStringList{writeTestFile(path(QString::fromUtf8("résumé 1.txt")), "r\r\n"),
                               writeTestFile(path(kQuotedFileName), QByteArray("nul\0byte", 8))};
    fillForm(*window, report);
    sendAndCheck({
        fieldPart("identity", "{ \"product\" : \"Korvane3D\", \"name\" : "
                              "\"Jos%C3%A9%20%C3%91%20%22Q%22%20%5C%20x%0D%0Ay\", \"email\" : "
                              "\"a%20b%22c%22%40d.com%0D%0A\", \"validated\" : \"false\" }"),
        fieldPart("details", expectedDetails("bug", "12", "Crashes%20%2F%20Hangs", "false")),
        fieldPart("sysinfo", "{ \"Processor\" : \"Intel%28R%29\" }"),
        fieldPart("title", "\xC3\x9Cn\xC3\xAF"
                           "code \"quoted\" a\r\r\nb"),
        fieldPart("description", "a\r\nb\r\n\xC3\xA7 \"d\"\r\n"),
        filePart("r%C3%A9sum%C3%A9%201.txt", "r\r\n"),
        filePart(kQuotedFileNameSent, QByteArray("nul\0byte", 8)),
        fieldPart("attachments", "[ \"r%C3%A9sum%C3%A9%201.txt\", \"" + QByteArray(kQuotedFileNameSent) + "\" ]"),
    });
}

void SendTests::twoFilesWithTheSameName()
{
    ReportForm report = form();
    report.includeSystemInfo = false;
    report.files =
        QStringList{writeTestFile(path("one/data.txt"), "first"), writeTestFile(path("two/data.txt"), "second")};
    fillForm(*window, report);
    sendAndCheck(kDefaultFields
                 + QList<QByteArray>{
                     filePart("data.txt", "first"),
                     filePart("data.txt", "second"),
                     fieldPart("attachments", "[ \"data.txt\", \"data.txt\" ]"),
                 });
}

void SendTests::imageRowWhoseFileWasDeletedIsSkipped()
{
    ReportForm report = form();
    report.includeSystemInfo = false;
    fillForm(*window, report);
    const QString thumbnails = MainWindowProbe::thumbnailFolder(*window);
    window->add_attachment_item("gone shot", drawnPixmap(Qt::red));
    window->add_attachment_item("kept shot", drawnPixmap(Qt::blue));
    window->add_attachment_item(writeTestFile(path("log.txt"), "log"), QPixmap());
    window->slot_set_control_states();
    QVERIFY(QFile::remove(thumbnails + "/gone_shot.png"));
    const QByteArray keptPng = fileContent(thumbnails + "/kept_shot.png");
    QVERIFY(keptPng.startsWith("\x89PNG"));
    sendAndCheck(kDefaultFields
                 + QList<QByteArray>{
                     filePart("kept_shot.png", keptPng),
                     filePart("log.txt", "log"),
                     fieldPart("attachments", "[ \"kept_shot.png\", \"log.txt\" ]"),
                 });
}

void SendTests::systemInformationAllowedButNotArrived()
{
    window->slot_sysinfo(QString()); // the worker has not reported yet
    ReportForm report = form();
    report.files = QStringList{writeTestFile(path("a.txt"), "a")};
    fillForm(*window, report);
    sendAndCheck(kDefaultFields
                 + QList<QByteArray>{
                     filePart("a.txt", "a"),
                     fieldPart("attachments", "[ \"a.txt\" ]"),
                 });
}

void SendTests::failedDiagnosticsSummaryIsStillSent()
{
    window->slot_sysinfo("{  }");
    ReportForm report = form();
    report.kind = ReportKind::FeatureRequest;
    fillForm(*window, report);
    sendAndCheck({
        fieldPart("identity", kAnnIdentity),
        fieldPart("details", expectedDetails("feature", "3126", "Animation", "false")),
        fieldPart("sysinfo", "{  }"),
        fieldPart("title", "Crash on save"),
        fieldPart("description", "It crashed."),
    });
}

void SendTests::areaIsTheTableEntryNotTheShownText()
{
    ReportForm report = form();
    report.kind = ReportKind::FeatureRequest;
    report.areaRow = 2; // "Audio"
    report.includeSystemInfo = false;
    fillForm(*window, report);
    child<QListWidget>(*window, "list_Area")->item(2)->setText("Sound (shown)");
    sendAndCheck({
        fieldPart("identity", kAnnIdentity),
        fieldPart("details", expectedDetails("feature", "3126", "Audio", "false")),
        fieldPart("title", "Crash on save"),
        fieldPart("description", "It crashed."),
    });
}

// Send stays disabled on an incomplete form; the payload itself sends empty values.
void SendTests::emptyFieldsAreSentEmpty()
{
    ReportForm report = form();
    report.kind = ReportKind::FeatureRequest;
    report.name.clear();
    report.email.clear();
    report.build.clear();
    report.title.clear();
    report.description.clear();
    report.includeSystemInfo = false;
    fillForm(*window, report);
    QVERIFY(!child<QPushButton>(*window, "button_Send")->isEnabled());

    ModalAnswerer answerer;
    answerer.clickButton("OK");
    QCOMPARE(runApplicationLoop([&] { window->slot_submit(); }, [] { return false; }), 0);
    QVERIFY(receiver->waitForEvent("request 1 answered 200"));
    checkRequest(receiver->request(1),
                 {
                     fieldPart("identity", "{ \"product\" : \"Korvane3D\", \"name\" : \"\", \"email\" : \"\", "
                                           "\"validated\" : \"false\" }"),
                     fieldPart("details", expectedDetails("feature", "", "Animation", "false")),
                     fieldPart("title", ""),
                     fieldPart("description", ""),
                 });
}

// Our guard: with no area selected no payload is built and nothing is sent or shown.
void SendTests::noAreaSelectedSendsNothing()
{
    ReportForm report = form();
    report.kind = ReportKind::FeatureRequest;
    report.areaRow = -1;
    fillForm(*window, report);
    QVERIFY(!child<QPushButton>(*window, "button_Send")->isEnabled());
    QCOMPARE(window->build_payload(), static_cast<QHttpMultiPart *>(nullptr));

    ModalAnswerer answerer;
    window->slot_submit();
    QTest::qWait(500);
    QCOMPARE(answerer.seen().size(), 0);
    QCOMPARE(MainWindowProbe::formState(*window), qint32(FormState::Composing));
    QCOMPARE(MainWindowProbe::reply(*window), static_cast<QNetworkReply *>(nullptr));
    QCOMPARE(receiver->countEvents("request "), 0);
}
