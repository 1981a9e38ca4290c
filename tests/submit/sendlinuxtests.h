#pragma once

#include "submitfixture.h"

#include <QByteArray>
#include <QObject>
#include <QString>

// Which group a test function belongs to: moc keeps the tag with the declaration
// (QMetaMethod::tag), and init() gives each group the start it needs.
#ifndef Q_MOC_RUN
#define UPLOAD_PROXY_TEST
#define PRIVATE_NET_TEST
#endif

// Sending with what only Linux gives the tests: a real tinyproxy, and a private network
// in which the program's own host names lead back to this machine. The whole program
// runs inside that network (tst_send_linux.cpp); the proxy functions use loopback only,
// which is there as well.
class SendLinuxTests
    : public QObject
    , protected SubmitTestState
{
    Q_OBJECT

private:
    // The proxy functions start with the receiver running.
    void initUploadProxy();
    void openWindow();
    bool startProxy(quint16 port = 0, const QString &user = QString(), const QString &password = QString());

    // The private-network functions start with nothing running, and fail when the
    // private network could not be made.
    void initPrivateNet();
    QString byName() const;
    void openWindow(const QString &destination);
    QByteArray identitySent(int n);
    void sendAndFail(int n);
    void typeEmail(const QString &text);
    bool waitForLookUp();
    void sendAtTheTimer();

private slots:
    void initTestCase();
    void init();
    void cleanup();

    // Through tinyproxy on loopback, with and without credentials, and the proxy fields' rules.
    UPLOAD_PROXY_TEST void throughTheProxy();
    UPLOAD_PROXY_TEST void emptyPortMeans8080();
    UPLOAD_PROXY_TEST void proxyDown();
    UPLOAD_PROXY_TEST void proxyNeedsCredentialsAndNoneAreGiven();
    UPLOAD_PROXY_TEST void wrongProxyPassword();
    UPLOAD_PROXY_TEST void rightProxyPassword();

    // What needs host names: the default destination, the application's proxy, "validated".
    PRIVATE_NET_TEST void emptyDestinationPostsToThePlaceholder();
    PRIVATE_NET_TEST void uncheckedKeepsTheApplicationProxy();
    PRIVATE_NET_TEST void emptyServerIsADirectConnection();
    PRIVATE_NET_TEST void applicationProxyDownFailsTheSend();
    PRIVATE_NET_TEST void validatedFollowsTheLastLookUp();
};
