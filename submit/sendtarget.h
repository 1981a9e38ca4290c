#pragma once

// Where a report goes and through what, from the texts of the Settings tab: what the
// network manager is given. The destination field's placeholder stands for an empty
// destination; the proxy group, when switched on, decides the manager's proxy.

#include <QNetworkProxy>
#include <QString>
#include <QUrl>

struct ProxyFields
{
    bool enabled = false; // the group's check box
    QString server;
    QString port;
    QString userName;
    QString password;
};

struct SendTarget
{
    QUrl url;
    // Only with the proxy group on: the manager keeps the application's default
    // otherwise.
    bool setsProxy = false;
    QNetworkProxy proxy;
};

// An empty destination is the default one (the field's placeholder), taken as typed
// (tolerant parsing; the server's answer is the check). With the proxy group on: an
// empty server is an explicit direct connection whatever the application default; an
// empty port is 8080; a port that is not a number from 0 to 65535 is 0.
SendTarget sendTarget(const QString &destination, const QString &defaultDestination, const ProxyFields &proxy);
