// The report body as it arrives at a real HTTP receiver: every part, every header and
// every byte, read back by our own framing check and by Python's email package.
#include "multipartrecord.h"
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

const QByteArray kBuildFacts =
    ", \"phase\" : \"release\", \"buildsys_build_number\" : 3008, \"buildsys_project_name\" : \"Korvane 2019.1 "
    "Release\", \"buildsys_build_agent\" : \"KV-BUILD-07\", \"buildsys_build_stage\" : \"unit\", "
    "\"buildsys_config_name\" : \"Windows 64bit\", \"buildsys_branch_name\" : \"KV2019.1\", \"buildsys_hash\" : "
    "\"3f9c2a7d1e8b4c6a9d0e5f7b2c4a6e8d1f3b5c7a\" }";

const QByteArray kAnnIdentity = "{ \"product\" : \"Korvane3D\", \"name\" : \"Ann%20Lee\", \"email\" : "
                                "\"ann%40example.com\", \"validated\" : \"false\" }";

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

class TestPayload : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> work;
    std::unique_ptr<HttpReceiver> receiver;

    QString path(const QString &name) const { return work->path() + "/" + name; }

    // A window whose system summary has arrived, so that the test's own summary stays.
    void settle(MainWindow &window, SummaryArrival &summary)
    {
        window.show();
        QVERIFY(summary.wait());
    }

    // Sends with the Send button; the receiver answers 200, the success box is closed
    // and the program quits, as it does for a user.
    void sendAndRecord(MainWindow &window, QByteArray &recorded)
    {
        QVERIFY(child<QPushButton>(window, "button_Send")->isEnabled());
        const SendRun run = sendExpectingQuit(window);
        QCOMPARE(run.loopResult, 0);
        verifySuccessBox(run);
        QVERIFY(receiver->waitForEvent("request 1 answered 200"));
        recorded = receiver->request(1);
    }

    // The request is a multipart POST whose body is exactly the expected parts, framed
    // by Qt's boundary; Python's parser reads the same parts.
    void checkRequest(const QByteArray &raw, const QList<QByteArray> &expectedParts)
    {
        const RecordedRequest request = parseRecordedRequest(raw);
        QCOMPARE(request.requestLine, QByteArray("POST / HTTP/1.1"));
        QCOMPARE(request.header("Host"), "127.0.0.1:" + QByteArray::number(receiver->port()));
        QCOMPARE(request.header("MIME-Version"), QByteArray("1.0"));
        const QByteArray contentType = request.header("Content-Type");
        QVERIFY2(QRegularExpression("^multipart/form-data; boundary=\"boundary_\\.oOo\\._[A-Za-z0-9+/=]+\"$")
                     .match(QString::fromLatin1(contentType))
                     .hasMatch(),
                 contentType.constData());
        QCOMPARE(request.header("Content-Length"), QByteArray::number(request.body.size()));

        const QByteArray boundary = multipartBoundary(contentType);
        QCOMPARE(multipartParts(request.body, boundary), expectedParts);
        QCOMPARE(request.body, multipartBody(boundary, expectedParts));

        QFile::remove(path("request.bin"));
        QVERIFY(writeTestFile(path("request.bin"), raw).size() > 0);
        QString error;
        const QList<ParsedPart> parsed = parseWithPython(path("request.bin"), &error);
        QVERIFY2(error.isEmpty(), qPrintable(error));
        QCOMPARE(parsed, partsAsParsed(expectedParts));
    }

private slots:
    void init()
    {
        work.reset(new QTemporaryDir(TestEnvironment::instance().root() + "/payload-XXXXXX"));
        QDir(TestEnvironment::instance().thumbnailFolder()).removeRecursively();
        receiver.reset(new HttpReceiver(path("received")));
        QVERIFY(receiver->start({}));
    }

    void cleanup()
    {
        receiver.reset();
        work.reset();
    }

    void bugReport()
    {
        MainWindow window;
        SummaryArrival summary(window);
        settle(window, summary);
        window.slot_sysinfo("{ \"OS\" : \"Debian%2012\", \"Display\" : \"%5C%5C.%5CDISPLAY1\" }");

        ReportForm form;
        form.description = "Open a scene.\nSave it.";
        form.files = QStringList{writeTestFile(path("logs/log.txt"), "first line\nsecond line\n"),
                      writeTestFile(path("data 1.bin"), allByteValues())};
        form.destination = receiver->url().toString();
        fillForm(window, form);

        QByteArray raw;
        sendAndRecord(window, raw);
        if (QTest::currentTestFailed())
            return;
        checkRequest(raw, {
            fieldPart("identity", kAnnIdentity),
            fieldPart("details",
                      "{ \"type\" : \"bug\", \"build\" : \"3126\", \"area\" : \"Animation\", \"NDA\" : false" + kBuildFacts),
            fieldPart("sysinfo", "{ \"OS\" : \"Debian%2012\", \"Display\" : \"%5C%5C.%5CDISPLAY1\" }"),
            fieldPart("title", "Crash on save"),
            fieldPart("description", "Open a scene.\r\nSave it."),
            filePart("log.txt", "first line\nsecond line\n"), // file contents go as they are
            filePart("data%201.bin", allByteValues()),
            fieldPart("attachments", "[ \"log.txt\", \"data%201.bin\" ]"),
        });
    }

    void featureRequestWithoutAttachmentsEndsWithTheDescription()
    {
        MainWindow window;
        SummaryArrival summary(window);
        settle(window, summary);
        window.slot_sysinfo("{ \"OS\" : \"Debian%2012\" }");

        ReportForm form;
        form.kind = FeatureRequest;
        form.areaRow = 45; // "Other", the last row
        form.nda = true;
        form.includeSystemInfo = false; // a summary is there, but not allowed
        form.title = "Batch export";
        form.description = "Export every scene at once.";
        form.destination = receiver->url().toString();
        fillForm(window, form);

        QByteArray raw;
        sendAndRecord(window, raw);
        if (QTest::currentTestFailed())
            return;
        checkRequest(raw, {
            fieldPart("identity", kAnnIdentity),
            fieldPart("details",
                      "{ \"type\" : \"feature\", \"build\" : \"3126\", \"area\" : \"Other\", \"NDA\" : true" + kBuildFacts),
            fieldPart("title", "Batch export"),
            fieldPart("description", "Export every scene at once."),
        });
    }

    void spacesQuotesNonAsciiAndLineBreaks()
    {
        MainWindow window;
        SummaryArrival summary(window);
        settle(window, summary);
        window.slot_sysinfo(QString::fromUtf8("{ \"Processor\" : \"Intel%28R%29\" }"));

        ReportForm form;
        form.name = QString::fromUtf8("José Ñ \"Q\" \\ x\r\ny");
        form.email = QString::fromUtf8("a b\"c\"@d.com\r\n");
        form.areaRow = 6; // "Crashes / Hangs"
        form.build = "12";
        // The line edit keeps a CR LF as typed; the sent title gets CR CR LF.
        form.title = QString::fromUtf8("Ünïcode \"quoted\" a\r\nb");
        // The editor keeps lines, not line ends: CR LF and LF both come back as LF.
        form.description = QString::fromUtf8("a\nb\r\nç \"d\"\n");
        form.files = QStringList{writeTestFile(path(QString::fromUtf8("résumé 1.txt")), "r\r\n"),
                      writeTestFile(path("q\"uote.txt"), QByteArray("nul\0byte", 8))};
        form.destination = receiver->url().toString();
        fillForm(window, form);

        QByteArray raw;
        sendAndRecord(window, raw);
        if (QTest::currentTestFailed())
            return;
        checkRequest(raw, {
            fieldPart("identity", "{ \"product\" : \"Korvane3D\", \"name\" : "
                                  "\"Jos%C3%A9%20%C3%91%20%22Q%22%20%5C%20x%0D%0Ay\", \"email\" : "
                                  "\"a%20b%22c%22%40d.com%0D%0A\", \"validated\" : \"false\" }"),
            fieldPart("details", "{ \"type\" : \"bug\", \"build\" : \"12\", \"area\" : \"Crashes%20%2F%20Hangs\", "
                                 "\"NDA\" : false" + kBuildFacts),
            fieldPart("sysinfo", "{ \"Processor\" : \"Intel%28R%29\" }"),
            fieldPart("title", "\xC3\x9Cn\xC3\xAF" "code \"quoted\" a\r\r\nb"),
            fieldPart("description", "a\r\nb\r\n\xC3\xA7 \"d\"\r\n"),
            filePart("r%C3%A9sum%C3%A9%201.txt", "r\r\n"),
            filePart("q%22uote.txt", QByteArray("nul\0byte", 8)),
            fieldPart("attachments", "[ \"r%C3%A9sum%C3%A9%201.txt\", \"q%22uote.txt\" ]"),
        });
    }

    void twoFilesWithTheSameName()
    {
        MainWindow window;
        SummaryArrival summary(window);
        settle(window, summary);

        ReportForm form;
        form.includeSystemInfo = false;
        form.files = QStringList{writeTestFile(path("one/data.txt"), "first"), writeTestFile(path("two/data.txt"), "second")};
        form.destination = receiver->url().toString();
        fillForm(window, form);

        QByteArray raw;
        sendAndRecord(window, raw);
        if (QTest::currentTestFailed())
            return;
        checkRequest(raw, {
            fieldPart("identity", kAnnIdentity),
            fieldPart("details",
                      "{ \"type\" : \"bug\", \"build\" : \"3126\", \"area\" : \"Animation\", \"NDA\" : false" + kBuildFacts),
            fieldPart("title", "Crash on save"),
            fieldPart("description", "It crashed."),
            filePart("data.txt", "first"),
            filePart("data.txt", "second"),
            fieldPart("attachments", "[ \"data.txt\", \"data.txt\" ]"),
        });
    }

    void imageRowWhoseFileWasDeletedIsSkipped()
    {
        MainWindow window;
        SummaryArrival summary(window);
        settle(window, summary);

        ReportForm form;
        form.includeSystemInfo = false;
        form.destination = receiver->url().toString();
        fillForm(window, form);
        const QString thumbnails = MainWindowProbe::thumbnailFolder(window);
        window.add_attachment_item("gone shot", drawnPixmap(Qt::red));
        window.add_attachment_item("kept shot", drawnPixmap(Qt::blue));
        const QString log = writeTestFile(path("log.txt"), "log");
        window.add_attachment_item(log, QPixmap());
        window.slot_set_control_states();
        QVERIFY(QFile::remove(thumbnails + "/gone_shot.png"));
        const QByteArray keptPng = fileContent(thumbnails + "/kept_shot.png");
        QVERIFY(keptPng.startsWith("\x89PNG"));

        QByteArray raw;
        sendAndRecord(window, raw);
        if (QTest::currentTestFailed())
            return;
        checkRequest(raw, {
            fieldPart("identity", kAnnIdentity),
            fieldPart("details",
                      "{ \"type\" : \"bug\", \"build\" : \"3126\", \"area\" : \"Animation\", \"NDA\" : false" + kBuildFacts),
            fieldPart("title", "Crash on save"),
            fieldPart("description", "It crashed."),
            filePart("kept_shot.png", keptPng),
            filePart("log.txt", "log"),
            fieldPart("attachments", "[ \"kept_shot.png\", \"log.txt\" ]"),
        });
    }

    void systemInformationAllowedButNotArrived()
    {
        MainWindow window;
        SummaryArrival summary(window);
        settle(window, summary);
        window.slot_sysinfo(QString()); // the worker has not reported yet

        ReportForm form;
        form.files = QStringList{writeTestFile(path("a.txt"), "a")};
        form.destination = receiver->url().toString();
        fillForm(window, form);

        QByteArray raw;
        sendAndRecord(window, raw);
        if (QTest::currentTestFailed())
            return;
        checkRequest(raw, {
            fieldPart("identity", kAnnIdentity),
            fieldPart("details",
                      "{ \"type\" : \"bug\", \"build\" : \"3126\", \"area\" : \"Animation\", \"NDA\" : false" + kBuildFacts),
            fieldPart("title", "Crash on save"),
            fieldPart("description", "It crashed."),
            filePart("a.txt", "a"),
            fieldPart("attachments", "[ \"a.txt\" ]"),
        });
    }

    void failedDiagnosticsSummaryIsStillSent()
    {
        MainWindow window;
        SummaryArrival summary(window);
        settle(window, summary);
        window.slot_sysinfo("{  }");

        ReportForm form;
        form.kind = FeatureRequest;
        form.destination = receiver->url().toString();
        fillForm(window, form);

        QByteArray raw;
        sendAndRecord(window, raw);
        if (QTest::currentTestFailed())
            return;
        checkRequest(raw, {
            fieldPart("identity", kAnnIdentity),
            fieldPart("details",
                      "{ \"type\" : \"feature\", \"build\" : \"3126\", \"area\" : \"Animation\", \"NDA\" : false" + kBuildFacts),
            fieldPart("sysinfo", "{  }"),
            fieldPart("title", "Crash on save"),
            fieldPart("description", "It crashed."),
        });
    }

    void areaIsTheTableEntryNotTheShownText()
    {
        MainWindow window;
        SummaryArrival summary(window);
        settle(window, summary);

        ReportForm form;
        form.kind = FeatureRequest;
        form.areaRow = 2; // "Audio"
        form.includeSystemInfo = false;
        form.destination = receiver->url().toString();
        fillForm(window, form);
        child<QListWidget>(window, "list_Area")->item(2)->setText("Sound (shown)");

        QByteArray raw;
        sendAndRecord(window, raw);
        if (QTest::currentTestFailed())
            return;
        const RecordedRequest request = parseRecordedRequest(raw);
        const QList<QByteArray> parts = multipartParts(request.body, multipartBoundary(request.header("Content-Type")));
        QCOMPARE(parts.value(1),
                 fieldPart("details",
                           "{ \"type\" : \"feature\", \"build\" : \"3126\", \"area\" : \"Audio\", \"NDA\" : false" + kBuildFacts));
    }

    // Send stays disabled on an incomplete form; the payload itself sends empty values.
    void emptyFieldsAreSentEmpty()
    {
        MainWindow window;
        SummaryArrival summary(window);
        settle(window, summary);

        ReportForm form;
        form.kind = FeatureRequest;
        form.name.clear();
        form.email.clear();
        form.build.clear();
        form.title.clear();
        form.description.clear();
        form.includeSystemInfo = false;
        form.destination = receiver->url().toString();
        fillForm(window, form);
        QVERIFY(!child<QPushButton>(window, "button_Send")->isEnabled());

        ModalAnswerer answerer;
        answerer.clickButton("OK");
        QCOMPARE(runApplicationLoop([&] { window.slot_submit(); }, [] { return false; }), 0);
        QVERIFY(receiver->waitForEvent("request 1 answered 200"));
        checkRequest(receiver->request(1), {
            fieldPart("identity", "{ \"product\" : \"Korvane3D\", \"name\" : \"\", \"email\" : \"\", "
                                  "\"validated\" : \"false\" }"),
            fieldPart("details",
                      "{ \"type\" : \"feature\", \"build\" : \"\", \"area\" : \"Animation\", \"NDA\" : false" + kBuildFacts),
            fieldPart("title", ""),
            fieldPart("description", ""),
        });
    }

    // Our guard: with no area selected no payload is built and nothing is sent or shown.
    void noAreaSelectedSendsNothing()
    {
        MainWindow window;
        SummaryArrival summary(window);
        settle(window, summary);

        ReportForm form;
        form.kind = FeatureRequest;
        form.areaRow = -1;
        form.destination = receiver->url().toString();
        fillForm(window, form);
        QVERIFY(!child<QPushButton>(window, "button_Send")->isEnabled());
        QCOMPARE(window.build_payload(), static_cast<QHttpMultiPart *>(nullptr));

        ModalAnswerer answerer;
        window.slot_submit();
        QTest::qWait(500);
        QCOMPARE(answerer.seen().size(), 0);
        QCOMPARE(MainWindowProbe::formState(window), qint32(Composing));
        QCOMPARE(MainWindowProbe::reply(window), static_cast<QNetworkReply *>(nullptr));
        QCOMPARE(receiver->countEvents("request "), 0);
    }
};

FB_TEST_MAIN(TestPayload)
#include "tst_payload.moc"
