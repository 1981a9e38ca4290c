#pragma once

#include <QProcess>
#include <QString>

// A real HTTP proxy for the tests: Debian's tinyproxy, run in the foreground on
// 127.0.0.1 with a config file of its own, optionally with basic authentication.
// tinyproxy asks for credentials with 407, but answers wrong ones with 401.
class TinyProxy
{
public:
    explicit TinyProxy(const QString &workDir);
    ~TinyProxy();

    // port 0 picks a free one. An empty user means no authentication.
    bool start(quint16 port = 0, const QString &user = QString(), const QString &password = QString());
    void stop();
    quint16 port() const { return m_port; }
    QString log() const;

    static QString program();
    static quint16 freePort();

private:
    QString m_workDir;
    QProcess m_process;
    quint16 m_port = 0;
};
