// Sending through an HTTP proxy: a real tinyproxy on loopback, with and without basic
// authentication, and the rules for the proxy fields of the settings page. The rules
// that involve the application's own proxy are in sendlinux_privatenet.cpp: Qt never
// uses that proxy for a loopback address, so they need a destination with a host name.
#include "multipartrecord.h"
#include "sendlinuxtests.h"
#include "submitfixture.h"

#include "form/mainwindow.h"
#include "support/httpreceiver.h"
#include "support/mainwindowprobe.h"
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

// tinyproxy marks what it forwards with a Via header naming itself.
bool cameThroughTinyproxy(const RecordedRequest &request)
{
    return request.header("Via").contains("tinyproxy");
}

} // namespace

void SendLinuxTests::initUploadProxy()
{
    beginTest(QStringLiteral("proxy"));
    QVERIFY(startReceiver());
}

void SendLinuxTests::openWindow()
{
    window = openReportWindow(receiver->url().toString(), path("files"));
    QVERIFY(window);
}

bool SendLinuxTests::startProxy(quint16 port, const QString &user, const QString &password)
{
    proxy.reset(new TinyProxy(path("proxy")));
    return proxy->start(port, user, password);
}

void SendLinuxTests::throughTheProxy()
{
    QVERIFY(startProxy());
    openWindow();
    setProxyFields(*window, true, "127.0.0.1", QString::number(proxy->port()));
    const RecordedRequest request = deliverReport(*window, *receiver);
    QVERIFY2(cameThroughTinyproxy(request), request.header("Via").constData());
    QCOMPARE(request.requestLine, QByteArray("POST / HTTP/1.1"));
}

void SendLinuxTests::emptyPortMeans8080()
{
    QVERIFY2(startProxy(8080), "port 8080 is taken on this machine");
    openWindow();
    setProxyFields(*window, true, "127.0.0.1", QString());
    QVERIFY(cameThroughTinyproxy(deliverReport(*window, *receiver)));
}

// Qt reaches an HTTP proxy for a plain http URL like a server, so a proxy that is
// down reads like a server that is down.
void SendLinuxTests::proxyDown()
{
    openWindow();
    setProxyFields(*window, true, "127.0.0.1", QString::number(closedPort()));
    verifyFailedSend(*window, "Connection refused");
    QCOMPARE(receiver->countEvents("request "), 0);
}

// tinyproxy asks for credentials with 407; with none to give, the send fails.
void SendLinuxTests::proxyNeedsCredentialsAndNoneAreGiven()
{
    QVERIFY(startProxy(0, "alice", "s3cret"));
    openWindow();
    setProxyFields(*window, true, "127.0.0.1", QString::number(proxy->port()));
    verifyFailedSend(*window, "Proxy requires authentication");
    QCOMPARE(receiver->countEvents("request "), 0);
}

// tinyproxy answers a wrong password with 401, as if the destination had asked:
// the box then speaks of the host, not of the proxy.
void SendLinuxTests::wrongProxyPassword()
{
    QVERIFY(startProxy(0, "alice", "s3cret"));
    openWindow();
    setProxyFields(*window, true, "127.0.0.1", QString::number(proxy->port()), "alice", "wrong");
    verifyFailedSend(*window, "Host requires authentication");
    QCOMPARE(receiver->countEvents("request "), 0);
}

void SendLinuxTests::rightProxyPassword()
{
    QVERIFY(startProxy(0, "alice", "s3cret"));
    openWindow();
    setProxyFields(*window, true, "127.0.0.1", QString::number(proxy->port()), "alice", "s3cret");
    const RecordedRequest request = deliverReport(*window, *receiver);
    QVERIFY(cameThroughTinyproxy(request));
    QVERIFY(!request.hasHeader("Proxy-Authorization")); // the proxy keeps it to itself
}
