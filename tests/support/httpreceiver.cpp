#include "support/httpreceiver.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QTest>

HttpReceiver::HttpReceiver(const QString &recordDir)
    : m_recordDir(recordDir)
{
    QDir().mkpath(recordDir);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
}

HttpReceiver::~HttpReceiver()
{
    stop();
}

QString HttpReceiver::program()
{
    return QStringLiteral(FB_HTTPRECEIVER_EXE);
}

bool HttpReceiver::start(const Options &options)
{
    QStringList arguments{"--record-dir", m_recordDir,
                          "--status",     QString::number(options.status),
                          "--port",       QString::number(options.port)};
    if (options.cutAfter >= 0)
        arguments << "--cut-after" << QString::number(options.cutAfter);
    if (options.answerDelayMs > 0)
        arguments << "--answer-delay-ms" << QString::number(options.answerDelayMs);
    m_process.start(program(), arguments);
    if (!m_process.waitForStarted(10000)) {
        qWarning("the receiver did not start: %s", qPrintable(m_process.errorString()));
        return false;
    }
    const bool listening = QTest::qWaitFor(
        [this] {
            for (const QString &line : events())
                if (line.startsWith(QLatin1String("listening ")))
                    return true;
            return m_process.state() == QProcess::NotRunning;
        },
        10000);
    for (const QString &line : events())
        if (line.startsWith(QLatin1String("listening ")))
            m_port = quint16(line.mid(10).toUInt());
    if (!listening || m_port == 0)
        qWarning("the receiver did not start listening: state %d, exit %d, error %s, events [%s]",
                 int(m_process.state()), m_process.exitCode(), qPrintable(m_process.errorString()),
                 qPrintable(m_events.join(QStringLiteral(" | "))));
    return listening && m_port != 0;
}

void HttpReceiver::stop()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished(5000);
}

QUrl HttpReceiver::url() const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1/").arg(m_port));
}

void HttpReceiver::readEvents()
{
    m_pending += m_process.readAllStandardOutput();
    int end;
    while ((end = m_pending.indexOf('\n')) >= 0) {
        m_events << QString::fromLatin1(m_pending.left(end));
        m_pending.remove(0, end + 1);
    }
}

QStringList HttpReceiver::events()
{
    readEvents();
    return m_events;
}

bool HttpReceiver::hasEvent(const QString &line)
{
    return events().contains(line);
}

bool HttpReceiver::waitForEvent(const QString &line, int timeoutMs)
{
    return QTest::qWaitFor([&] { return hasEvent(line); }, timeoutMs);
}

bool HttpReceiver::waitForEventBlocking(const QString &line, int timeoutMs)
{
    QDeadlineTimer deadline(timeoutMs);
    while (!hasEvent(line)) {
        if (deadline.hasExpired() || !m_process.waitForReadyRead(int(deadline.remainingTime())))
            return hasEvent(line);
    }
    return true;
}

int HttpReceiver::countEvents(const QString &prefix)
{
    int count = 0;
    for (const QString &line : events())
        if (line.startsWith(prefix))
            ++count;
    return count;
}

QString HttpReceiver::requestPath(int n) const
{
    return QStringLiteral("%1/request-%2.bin").arg(m_recordDir).arg(n);
}

QByteArray HttpReceiver::request(int n) const
{
    QFile file(requestPath(n));
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    return file.readAll();
}
