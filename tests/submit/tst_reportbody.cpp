// The report body built from plain values, with no window: posted by a bare network
// manager to the loopback receiver and compared part by part, byte for byte.
#include "expectedtexts.h"
#include "multipartrecord.h"

#include "submit/reportbody.h"
#include "support/httpreceiver.h"
#include "support/testenv.h"
#include "support/unreadablefile.h"

#include <QApplication>
#include <QHttpMultiPart>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

ReportFields annsReport()
{
    ReportFields fields;
    fields.name = QStringLiteral("Ann Lee");
    fields.email = QStringLiteral("ann@example.com");
    fields.bugReport = true;
    fields.build = QStringLiteral("3126");
    fields.area = QStringLiteral("Animation");
    fields.title = QStringLiteral("Crash on save");
    fields.description = QStringLiteral("It crashed.");
    return fields;
}

} // namespace

class TestReportBody : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> work;
    std::unique_ptr<HttpReceiver> receiver;

    QString path(const QString &name) const { return work->path() + "/" + name; }

    QString writeFile(const QString &name, const QByteArray &content) { return writeTestFile(path(name), content); }

    // Posts the body as the window does and returns the parts that arrived.
    QList<QByteArray> postAndReceive(QHttpMultiPart *body)
    {
        QNetworkAccessManager manager;
        QNetworkReply *reply = manager.post(QNetworkRequest(receiver->url()), body);
        body->setParent(reply);
        QSignalSpy finished(reply, &QNetworkReply::finished);
        if (!finished.wait(kEventWaitMs) || reply->error() != QNetworkReply::NoError)
            return {QByteArray("no answer: ") + reply->errorString().toUtf8()};
        delete reply;
        if (!receiver->waitForEvent(QStringLiteral("request 1 answered 200")))
            return {QByteArray("not recorded")};
        const RecordedRequest request = parseRecordedRequest(receiver->request(1));
        return multipartParts(request.body, multipartBoundary(request.header("Content-Type")));
    }

private slots:
    void init()
    {
        work.reset(new QTemporaryDir(TestEnvironment::instance().root() + "/reportbody-XXXXXX"));
        receiver.reset(new HttpReceiver(path("received")));
        QVERIFY(receiver->start({}));
    }
    void cleanup()
    {
        receiver.reset();
        work.reset();
    }

    void fieldsOnly()
    {
        QHttpMultiPart *body = buildReportBody(annsReport());
        QVERIFY(body);
        QCOMPARE(postAndReceive(body),
                 (QList<QByteArray>{fieldPart("identity", kAnnIdentity),
                                    fieldPart("details", expectedDetails("bug", "3126", "Animation", "false")),
                                    fieldPart("title", "Crash on save"), fieldPart("description", "It crashed.")}));
    }

    void everyPartInOrder()
    {
        ReportFields fields = annsReport();
        fields.emailValidated = true;
        fields.bugReport = false;
        fields.nda = true;
        fields.systemSummary = QStringLiteral("OS: Test\nRAM: 1 GB");
        fields.title = QStringLiteral("Two\nlines");
        fields.description = QStringLiteral("a\r\nb\nc");
        const QByteArray scene("scene bytes \0\xff", 14);
        fields.attachmentPaths = QStringList{writeFile("scene file.kv", scene), writeFile("empty.txt", QByteArray())};
        QHttpMultiPart *body = buildReportBody(fields);
        QVERIFY(body);
        QCOMPARE(postAndReceive(body),
                 (QList<QByteArray>{fieldPart("identity", QByteArray(kAnnIdentity).replace("\"false\"", "\"true\"")),
                                    fieldPart("details", expectedDetails("feature", "3126", "Animation", "true")),
                                    fieldPart("sysinfo", "OS: Test\nRAM: 1 GB"), fieldPart("title", "Two\r\nlines"),
                                    fieldPart("description", "a\r\r\nb\r\nc"), filePart("scene%20file.kv", scene),
                                    filePart("empty.txt", QByteArray()),
                                    fieldPart("attachments", "[ \"scene%20file.kv\", \"empty.txt\" ]")}));
    }

    void unreadableAttachmentGivesNoBody()
    {
        ReportFields fields = annsReport();
        const QString locked = writeFile("locked.bin", "secret");
        fields.attachmentPaths = QStringList{writeFile("first.txt", "one"), locked};
        UnreadableFile lock(locked);
        QVERIFY(lock.ok());
        QVERIFY(!buildReportBody(fields));
    }
};

FB_TEST_MAIN(TestReportBody)
#include "tst_reportbody.moc"
