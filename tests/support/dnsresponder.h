#pragma once

#include <QHash>
#include <QHostAddress>
#include <QList>
#include <QObject>
#include <QUdpSocket>

// A small DNS server for tests, on a loopback address and the GUI thread's event loop.
// It answers A and AAAA questions from a table the test fills, each name after its own
// delay, and records every question it receives. Names not in the table get a name
// error at once.
class DnsResponder : public QObject
{
    Q_OBJECT

public:
    enum class Reply {
        Records, // NOERROR with the name's addresses of the asked type (maybe none)
        NoRecords, // NOERROR with an empty answer section
        NameError, // NXDOMAIN
        ServerFailure // SERVFAIL
    };

    struct Question
    {
        QString name; // lower case, without the final dot
        quint16 type = 0; // 1 = A, 28 = AAAA
        qint64 receivedAt = 0; // clockMs() on arrival
    };

    static const quint16 TypeA = 1;
    static const quint16 TypeAAAA = 28;

    explicit DnsResponder(QObject *parent = nullptr);

    // A monotonic clock in milliseconds, to compare arrival times with the test's own.
    static qint64 clockMs();

    bool listen(const QHostAddress &address, quint16 port = 53);
    QString errorString() const { return m_socket.errorString(); }

    void answer(const QString &name, Reply reply, const QList<QHostAddress> &addresses = {}, int delayMs = 0);

    const QList<Question> &questions() const { return m_questions; }
    // Questions for one name, of one type, or of any type when type is 0.
    QList<Question> questionsFor(const QString &name, quint16 type = 0) const;

private:
    struct Entry
    {
        Reply reply = Reply::NameError;
        QList<QHostAddress> addresses;
        int delayMs = 0;
    };

    void readPending();
    QByteArray replyTo(const QByteArray &query, const Question &question, int questionEnd) const;

    QUdpSocket m_socket;
    QHash<QString, Entry> m_table;
    QList<Question> m_questions;
};
