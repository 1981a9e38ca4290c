// What needs host names: the default destination, the application's own proxy (which
// Qt never uses for a loopback address) and the e-mail look-up behind "validated".
// The program runs in namespaces of its own (privatenet.sh) where feedback.korvane3d.com
// and korvane3d.com are 127.0.0.1 and nothing outside the machine can be reached.
#include "multipartrecord.h"
#include "sendlinuxtests.h"
#include "submitfixture.h"

#include "form/mainwindow.h"
#include "support/httpreceiver.h"
#include "support/mainwindowprobe.h"
#include "support/modalanswerer.h"
#include "support/testenv.h"
#include "support/tinyproxy.h"

#include <QApplication>
#include <QGroupBox>
#include <QLineEdit>
#include <QNetworkProxy>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

bool inPrivateNet()
{
    return qgetenv("FB_IN_PRIVATE_NET") == "1";
}

QByteArray identityWith(const QByteArray &email, const QByteArray &validated)
{
    return "{ \"product\" : \"Korvane3D\", \"name\" : \"Ann%20Lee\", \"email\" : \"" + email + "\", \"validated\" : \""
           + validated + "\" }";
}

} // namespace

void SendLinuxTests::initPrivateNet()
{
    // Fail, never skip: a run that cannot make its private network has tested nothing.
    QVERIFY2(inPrivateNet(), "needs network and mount namespaces of its own: run as root or allow user namespaces");
    beginTest(QStringLiteral("privatenet"));
}

QString SendLinuxTests::byName() const
{
    return QStringLiteral("http://feedback.korvane3d.com:%1/").arg(receiver->port());
}

void SendLinuxTests::openWindow(const QString &destination)
{
    window = openReportWindow(destination, path("files"));
    QVERIFY(window);
}

// The identity part of the n-th request the receiver recorded.
QByteArray SendLinuxTests::identitySent(int n)
{
    const RecordedRequest request = parseRecordedRequest(receiver->request(n));
    const QByteArray part = multipartParts(request.body, multipartBoundary(request.header("Content-Type"))).value(0);
    return part.mid(part.indexOf("\r\n\r\n") + 4);
}

// One send that the receiver refuses with 500, so the form comes back for the next.
void SendLinuxTests::sendAndFail(int n)
{
    const SendRun run = sendExpectingFailure(*window);
    QCOMPARE(run.loopResult, kLoopDone);
    QCOMPARE(run.boxes.size(), 1);
    QVERIFY(receiver->waitForEvent(QStringLiteral("request %1 answered 500").arg(n)));
}

void SendLinuxTests::typeEmail(const QString &text)
{
    QLineEdit *email = child<QLineEdit>(*window, "line_Email");
    email->selectAll();
    QTest::keyClicks(email, text);
    QCOMPARE(email->text(), text);
}

bool SendLinuxTests::waitForLookUp()
{
    return QTest::qWaitFor(
        [&] {
            return !MainWindowProbe::lookupPending(*window) && !MainWindowProbe::emailTimer(*window).isActive()
                   && MainWindowProbe::hostInfo(*window).lookupId() != -1;
        },
        15000);
}

// Sends from the e-mail timer's own signal, right after the window's slot has
// started the look-up and before its answer can arrive.
void SendLinuxTests::sendAtTheTimer()
{
    ModalAnswerer answerer;
    answerer.clickButton("OK");
    bool sentAtTimer = false;
    bool lookUpWasPending = false;
    const QMetaObject::Connection atTimer =
        QObject::connect(&MainWindowProbe::emailTimer(*window), &QTimer::timeout, window.get(), [&] {
            if (sentAtTimer)
                return;
            sentAtTimer = true;
            lookUpWasPending = MainWindowProbe::lookupPending(*window);
            clickSend(*window);
        });
    const int result =
        runApplicationLoop([] {},
                           [&] {
                               return !answerer.seen().isEmpty()
                                      && MainWindowProbe::formState(*window) == qint32(FormState::Composing)
                                      && !MainWindowProbe::lookupPending(*window);
                           });
    QObject::disconnect(atTimer);
    QCOMPARE(result, kLoopDone);
    QVERIFY(sentAtTimer);
    QVERIFY(lookUpWasPending);
    QVERIFY(receiver->waitForEvent("request 4 answered 500"));
}

void SendLinuxTests::emptyDestinationPostsToThePlaceholder()
{
    HttpReceiver::Options options;
    options.port = 80;
    QVERIFY(startReceiver(options));
    openWindow(QString());
    QCOMPARE(child<QLineEdit>(*window, "line_HTTP_Destination")->placeholderText(),
             QString("http://feedback.korvane3d.com/"));
    const RecordedRequest request = deliverReport(*window, *receiver);
    QCOMPARE(request.requestLine, QByteArray("POST / HTTP/1.1"));
    QCOMPARE(request.header("Host"), QByteArray("feedback.korvane3d.com"));
}

// Unchecked, the proxy fields are ignored and the application's proxy carries the
// report; checked with an empty server the same proxy is bypassed on purpose.
void SendLinuxTests::uncheckedKeepsTheApplicationProxy()
{
    QVERIFY(startReceiver({}));
    proxy.reset(new TinyProxy(path("proxy")));
    QVERIFY(proxy->start());
    openWindow(byName()); // first: the window's instance guard would listen through the proxy
    QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::HttpProxy, "127.0.0.1", proxy->port()));
    setProxyFields(*window, false, "127.0.0.1", QString::number(closedPort()));
    const RecordedRequest request = deliverReport(*window, *receiver);
    QVERIFY2(request.header("Via").contains("tinyproxy"), request.header("Via").constData());
    QCOMPARE(request.header("Host"), "feedback.korvane3d.com:" + QByteArray::number(receiver->port()));
}

void SendLinuxTests::emptyServerIsADirectConnection()
{
    QVERIFY(startReceiver({}));
    openWindow(byName());
    QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::HttpProxy, "127.0.0.1", closedPort()));
    setProxyFields(*window, true, QString(), "3128");
    const RecordedRequest request = deliverReport(*window, *receiver);
    QVERIFY(!request.hasHeader("Via"));
    QCOMPARE(request.header("Host"), "feedback.korvane3d.com:" + QByteArray::number(receiver->port()));
}

// The counterpart: the same down application proxy, group unchecked, and the send fails.
void SendLinuxTests::applicationProxyDownFailsTheSend()
{
    QVERIFY(startReceiver({}));
    openWindow(byName());
    QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::HttpProxy, "127.0.0.1", closedPort()));
    setProxyFields(*window, false, QString(), QString());
    verifyFailedSend(*window, "Connection refused");
    QCOMPARE(receiver->countEvents("request "), 0);
}

// "validated" follows the last completed look-up, not the address as it stands.
void SendLinuxTests::validatedFollowsTheLastLookUp()
{
    HttpReceiver::Options options;
    options.status = 500;
    QVERIFY(startReceiver(options));
    openWindow(receiver->url().toString());
    child<QLineEdit>(*window, "line_Email")->clear();

    // Typed, but no look-up has completed yet.
    typeEmail("ann@korvane3d.com");
    sendAndFail(1);
    QCOMPARE(identitySent(1), identityWith("ann%40korvane3d.com", "false"));

    QVERIFY(waitForLookUp());
    QVERIFY(MainWindowProbe::emailValid(*window));
    sendAndFail(2);
    QCOMPARE(identitySent(2), identityWith("ann%40korvane3d.com", "true"));

    // Badly formed: no new look-up, so the old answer stands.
    typeEmail("ann@korvane3d");
    QTest::qWait(2500);
    QVERIFY(!MainWindowProbe::emailTimer(*window).isActive());
    sendAndFail(3);
    QCOMPARE(identitySent(3), identityWith("ann%40korvane3d", "true"));

    // Well formed again: "false" from the moment the timer starts the look-up.
    typeEmail("bob@korvane3d.com");
    sendAtTheTimer();
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(identitySent(4), identityWith("bob%40korvane3d.com", "false"));

    sendAndFail(5); // the look-up has answered by now
    QCOMPARE(identitySent(5), identityWith("bob%40korvane3d.com", "true"));

    // A domain that does not resolve leaves it "false".
    typeEmail("ann@nowhere.korvane3d.org");
    QVERIFY(waitForLookUp());
    QVERIFY(!MainWindowProbe::emailValid(*window));
    sendAndFail(6);
    QCOMPARE(identitySent(6), identityWith("ann%40nowhere.korvane3d.org", "false"));
}
