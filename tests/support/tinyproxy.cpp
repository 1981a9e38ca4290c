#include "support/tinyproxy.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

TinyProxy::TinyProxy(const QString &workDir)
    : m_workDir(workDir)
{
    QDir().mkpath(workDir);
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setStandardOutputFile(workDir + "/tinyproxy.out");
}

TinyProxy::~TinyProxy()
{
    stop();
}

QString TinyProxy::program()
{
    const QString found = QStandardPaths::findExecutable(QStringLiteral("tinyproxy"), {"/usr/bin", "/usr/sbin"});
    return found.isEmpty() ? QStandardPaths::findExecutable(QStringLiteral("tinyproxy")) : found;
}

quint16 TinyProxy::freePort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost, 0);
    return probe.serverPort();
}

bool TinyProxy::start(quint16 port, const QString &user, const QString &password)
{
    m_port = port ? port : freePort();
    QFile config(m_workDir + "/tinyproxy.conf");
    if (!config.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    QByteArray text = "Port " + QByteArray::number(m_port)
                      + "\n"
                        "Listen 127.0.0.1\n"
                        "Timeout 120\n"
                        "MaxClients 8\n"
                        "LogLevel Info\n"
                        "LogFile \""
                      + (m_workDir + "/tinyproxy.log").toUtf8() + "\"\n";
    if (!user.isEmpty())
        text += "BasicAuth " + user.toUtf8() + " " + password.toUtf8() + "\n";
    config.write(text);
    config.close();

    // setpriv ties tinyproxy's life to this test's, so a killed test leaves no proxy behind.
    const QString setpriv = QStandardPaths::findExecutable(QStringLiteral("setpriv"));
    const QStringList arguments{"-d", "-c", config.fileName()};
    if (setpriv.isEmpty())
        m_process.start(program(), arguments);
    else
        m_process.start(setpriv, QStringList{"--pdeathsig", "KILL", program()} + arguments);
    if (!m_process.waitForStarted(10000))
        return false;
    return QTest::qWaitFor(
               [this] {
                   if (m_process.state() == QProcess::NotRunning)
                       return true;
                   QTcpSocket socket;
                   socket.connectToHost(QHostAddress::LocalHost, m_port);
                   return socket.waitForConnected(200);
               },
               10000)
           && m_process.state() == QProcess::Running;
}

void TinyProxy::stop()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    if (!m_process.waitForFinished(5000)) {
        m_process.kill();
        m_process.waitForFinished(5000);
    }
}

QString TinyProxy::log() const
{
    QFile file(m_workDir + "/tinyproxy.log");
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}
