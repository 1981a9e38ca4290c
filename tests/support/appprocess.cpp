#include "support/appprocess.h"

#include <QTcpSocket>
#include <QTest>

AppProcess::AppProcess()
    : m_env(QProcessEnvironment::systemEnvironment())
{
    m_process.setProcessChannelMode(QProcess::MergedChannels);
}

AppProcess::~AppProcess()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished(5000);
    }
}

QString AppProcess::executable()
{
    return QStringLiteral(FEEDBACKAGENT_EXE);
}

void AppProcess::start(const QStringList &arguments)
{
    m_process.setProcessEnvironment(m_env);
    m_process.start(executable(), arguments);
    m_process.waitForStarted(10000);
}

bool AppProcess::portInUse(quint16 port)
{
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, port);
    const bool connected = socket.waitForConnected(200);
    socket.abort();
    return connected;
}

bool AppProcess::waitUntilGuardTaken(int timeoutMs)
{
    return QTest::qWaitFor([this] { return m_process.state() == QProcess::NotRunning || portInUse(23709); }, timeoutMs)
           && m_process.state() != QProcess::NotRunning;
}

bool AppProcess::waitForFinished(int timeoutMs)
{
    const bool done = QTest::qWaitFor([this] { return m_process.state() == QProcess::NotRunning; }, timeoutMs);
    output();
    return done;
}

void AppProcess::terminate()
{
    m_process.terminate();
}
