// Where a report goes and through what (sendTarget), and how a send ends (sendoutcome),
// table by table.
#include "submit/sendoutcome.h"
#include "submit/sendtarget.h"
#include "support/testenv.h"

#include <QtTest>

Q_DECLARE_METATYPE(SendOutcome)
Q_DECLARE_METATYPE(sendoutcome::Box)
Q_DECLARE_METATYPE(sendoutcome::Next)

namespace {

const QString kDefault = QStringLiteral("https://feedback.example/upload");

} // namespace

class TestSendTarget : public QObject
{
    Q_OBJECT

private slots:
    void destination_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QUrl>("url");
        QTest::newRow("empty: the default") << "" << QUrl(kDefault);
        QTest::newRow("as typed") << "http://127.0.0.1:8000/in" << QUrl("http://127.0.0.1:8000/in");
        QTest::newRow("tolerant: a blank") << "http://host/a b" << QUrl("http://host/a%20b");
        QTest::newRow("not checked: no scheme") << "host/path" << QUrl("host/path");
        QTest::newRow("a blank alone is not empty") << " " << QUrl(" ", QUrl::TolerantMode);
    }

    void destination()
    {
        QFETCH(QString, typed);
        QFETCH(QUrl, url);
        const SendTarget target = sendTarget(typed, kDefault, ProxyFields());
        QCOMPARE(target.url, url);
        QVERIFY(!target.setsProxy);
    }

    void proxy_data()
    {
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<QString>("server");
        QTest::addColumn<QString>("port");
        QTest::addColumn<bool>("setsProxy");
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("host");
        QTest::addColumn<int>("portNumber");
        const int http = QNetworkProxy::HttpProxy;
        const int none = QNetworkProxy::NoProxy;
        const int unset = QNetworkProxy::DefaultProxy;
        QTest::newRow("switched off: the application's default") << false << "proxy"
                                                                 << "3128" << false << unset << "" << 0;
        QTest::newRow("server and port") << true << "proxy.lan"
                                         << "3128" << true << http << "proxy.lan" << 3128;
        QTest::newRow("no port: 8080") << true << "proxy.lan"
                                       << "" << true << http << "proxy.lan" << 8080;
        QTest::newRow("no server: a direct connection") << true << ""
                                                        << "3128" << true << none << "" << 0;
        QTest::newRow("port not a number: 0") << true << "proxy.lan"
                                              << "31x" << true << http << "proxy.lan" << 0;
        QTest::newRow("port beyond 65535: 0") << true << "proxy.lan"
                                              << "65536" << true << http << "proxy.lan" << 0;
        QTest::newRow("highest port") << true << "proxy.lan"
                                      << "65535" << true << http << "proxy.lan" << 65535;
        QTest::newRow("blanks around the port are read past") << true << "proxy.lan"
                                                              << " 80 " << true << http << "proxy.lan" << 80;
    }

    void proxy()
    {
        QFETCH(bool, enabled);
        QFETCH(QString, server);
        QFETCH(QString, port);
        QFETCH(bool, setsProxy);
        QFETCH(int, type);
        QFETCH(QString, host);
        QFETCH(int, portNumber);
        ProxyFields fields;
        fields.enabled = enabled;
        fields.server = server;
        fields.port = port;
        fields.userName = QStringLiteral("ann");
        fields.password = QStringLiteral("secret word");
        const SendTarget target = sendTarget(QString(), kDefault, fields);
        QCOMPARE(target.setsProxy, setsProxy);
        QCOMPARE(int(target.proxy.type()), type);
        QCOMPARE(target.proxy.hostName(), host);
        QCOMPARE(int(target.proxy.port()), portNumber);
        const bool credentials = type == QNetworkProxy::HttpProxy;
        QCOMPARE(target.proxy.user(), credentials ? QString("ann") : QString());
        QCOMPARE(target.proxy.password(), credentials ? QString("secret word") : QString());
    }

    void finish_data()
    {
        QTest::addColumn<SendOutcome>("outcome");
        QTest::addColumn<bool>("transferFailed");
        QTest::addColumn<sendoutcome::Box>("box");
        QTest::addColumn<sendoutcome::Next>("next");
        using sendoutcome::Box;
        using sendoutcome::Next;
        QTest::newRow("delivered") << SendOutcome::InFlight << false << Box::Submitted << Next::Quit;
        QTest::newRow("error came first") << SendOutcome::Failed << true << Box::Failed << Next::BackToForm;
        QTest::newRow("aborted, answer already in") << SendOutcome::Aborted << false << Box::None << Next::BackToForm;
        QTest::newRow("aborted, then the transfer failed")
            << SendOutcome::Aborted << true << Box::None << Next::BackToForm;
        QTest::newRow("failed without an error signal") << SendOutcome::InFlight << true << Box::Failed << Next::Quit;
        QTest::newRow("error signal, transfer fine after all")
            << SendOutcome::Failed << false << Box::Submitted << Next::BackToForm;
    }

    void finish()
    {
        QFETCH(SendOutcome, outcome);
        QFETCH(bool, transferFailed);
        QFETCH(sendoutcome::Box, box);
        QFETCH(sendoutcome::Next, next);
        const sendoutcome::Finish finish = sendoutcome::afterFinish(outcome, transferFailed);
        QCOMPARE(finish.box, box);
        QCOMPARE(finish.next, next);
    }

    void abortAndErrorMarks()
    {
        QCOMPARE(sendoutcome::afterAbort(), SendOutcome::Aborted);
        QCOMPARE(sendoutcome::afterError(), SendOutcome::Failed);
        // The values the window keeps, as plain 32-bit numbers.
        QCOMPARE(qint32(SendOutcome::Idle), 0);
        QCOMPARE(qint32(SendOutcome::InFlight), 1);
        QCOMPARE(qint32(SendOutcome::Aborted), 2);
        QCOMPARE(qint32(SendOutcome::Failed), 3);
    }
};

FB_TEST_MAIN(TestSendTarget)
#include "tst_sendtarget.moc"
