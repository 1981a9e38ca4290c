#pragma once

#include <QByteArray>
#include <QProcess>
#include <QStringList>
#include <QUrl>

// Runs the loopback HTTP receiver (tools/httpreceiver) as a child process for one
// test. Every request it takes is kept byte for byte in its record folder, and what it
// did is followed through the event lines it prints ("request 1 body 1234", ...).
class HttpReceiver
{
public:
    struct Options
    {
        int status = 200;
        qint64 cutAfter = -1; // close the connection after this many body bytes
        int answerDelayMs = 0; // wait this long after the body before answering
        quint16 port = 0; // 0: any free port
    };

    explicit HttpReceiver(const QString &recordDir);
    ~HttpReceiver();

    bool start(const Options &options);
    void stop();

    quint16 port() const { return m_port; }
    QUrl url() const; // http://127.0.0.1:<port>/

    QStringList events();
    // Spins the event loop until an event line equal to line has been printed.
    bool waitForEvent(const QString &line, int timeoutMs = 15000);
    // The same without running the event loop, for a test that holds the GUI thread.
    bool waitForEventBlocking(const QString &line, int timeoutMs = 15000);
    bool hasEvent(const QString &line);
    // Event lines that start with prefix ("request " counts the requests begun).
    int countEvents(const QString &prefix);
    // The recorded bytes of request n (1-based), once the request is complete.
    QByteArray request(int n) const;
    QString requestPath(int n) const;

    static QString program();

private:
    void readEvents();

    QString m_recordDir;
    QProcess m_process;
    QByteArray m_pending;
    QStringList m_events;
    quint16 m_port = 0;
};
