#include "support/dnsresponder.h"

#include <QElapsedTimer>
#include <QNetworkDatagram>
#include <QPointer>
#include <QTimer>
#include <QtEndian>

namespace {

const int kHeaderSize = 12;
const quint16 kClassIn = 1;
const quint16 kResponse = 0x8000;
const quint16 kAuthoritative = 0x0400;
const quint16 kRecursionAvailable = 0x0080;
const quint16 kQueryBits = 0x7900; // opcode and recursion desired, copied from the query
const quint16 kNameErrorCode = 3;
const quint16 kServerFailureCode = 2;

void appendUint16(QByteArray &out, quint16 value)
{
    out.append(char(value >> 8)).append(char(value & 0xff));
}

void appendUint32(QByteArray &out, quint32 value)
{
    appendUint16(out, quint16(value >> 16));
    appendUint16(out, quint16(value & 0xffff));
}

quint16 readUint16(const QByteArray &in, int at)
{
    return qFromBigEndian<quint16>(reinterpret_cast<const uchar *>(in.constData() + at));
}

// Reads the question's name (labels, no compression) and returns the offset after the
// question's type and class, or -1 when the packet is not a plain one-question query.
int parseQuestion(const QByteArray &query, DnsResponder::Question &question)
{
    if (query.size() < kHeaderSize || readUint16(query, 4) != 1)
        return -1;
    QStringList labels;
    int at = kHeaderSize;
    while (at < query.size()) {
        const int length = uchar(query.at(at++));
        if (length == 0)
            break;
        if (length > 63 || at + length > query.size())
            return -1;
        labels << QString::fromLatin1(query.mid(at, length)).toLower();
        at += length;
    }
    if (at + 4 > query.size())
        return -1;
    question.name = labels.join(QLatin1Char('.'));
    question.type = readUint16(query, at);
    return at + 4;
}

} // namespace

DnsResponder::DnsResponder(QObject *parent)
    : QObject(parent)
{
    connect(&m_socket, &QUdpSocket::readyRead, this, &DnsResponder::readPending);
}

qint64 DnsResponder::clockMs()
{
    static QElapsedTimer clock;
    if (!clock.isValid())
        clock.start();
    return clock.elapsed();
}

bool DnsResponder::listen(const QHostAddress &address, quint16 port)
{
    return m_socket.bind(address, port);
}

void DnsResponder::answer(const QString &name, Reply reply, const QList<QHostAddress> &addresses, int delayMs)
{
    m_table.insert(name.toLower(), Entry{reply, addresses, delayMs});
}

QList<DnsResponder::Question> DnsResponder::questionsFor(const QString &name, quint16 type) const
{
    QList<Question> found;
    for (const Question &q : m_questions) {
        if (q.name == name.toLower() && (type == 0 || q.type == type))
            found << q;
    }
    return found;
}

void DnsResponder::readPending()
{
    while (m_socket.hasPendingDatagrams()) {
        const QNetworkDatagram datagram = m_socket.receiveDatagram();
        const QByteArray query = datagram.data();
        Question question;
        const int questionEnd = parseQuestion(query, question);
        if (questionEnd < 0)
            continue;
        question.receivedAt = clockMs();
        m_questions << question;

        const QByteArray reply = replyTo(query, question, questionEnd);
        const int delay = m_table.value(question.name).delayMs;
        const QHostAddress peer = datagram.senderAddress();
        const quint16 peerPort = quint16(datagram.senderPort());
        QPointer<QUdpSocket> socket(&m_socket);
        QTimer::singleShot(delay, this, [socket, reply, peer, peerPort] {
            if (socket)
                socket->writeDatagram(reply, peer, peerPort);
        });
    }
}

QByteArray DnsResponder::replyTo(const QByteArray &query, const Question &question, int questionEnd) const
{
    const Entry entry = m_table.value(question.name);
    QList<QByteArray> records;
    quint16 code = 0;
    switch (entry.reply) {
    case Reply::Records:
        for (const QHostAddress &address : entry.addresses) {
            const bool v4 = address.protocol() == QAbstractSocket::IPv4Protocol;
            if (question.type == TypeA && v4) {
                QByteArray data;
                appendUint32(data, address.toIPv4Address());
                records << data;
            } else if (question.type == TypeAAAA && !v4) {
                const Q_IPV6ADDR v6 = address.toIPv6Address();
                records << QByteArray(reinterpret_cast<const char *>(v6.c), 16);
            }
        }
        break;
    case Reply::NoRecords:
        break;
    case Reply::NameError:
        code = kNameErrorCode;
        break;
    case Reply::ServerFailure:
        code = kServerFailureCode;
        break;
    }

    QByteArray out = query.left(2); // the query's id
    appendUint16(out, kResponse | (readUint16(query, 2) & kQueryBits) | kAuthoritative | kRecursionAvailable | code);
    appendUint16(out, 1);
    appendUint16(out, quint16(records.size()));
    appendUint16(out, 0);
    appendUint16(out, 0);
    out.append(query.mid(kHeaderSize, questionEnd - kHeaderSize));
    for (const QByteArray &data : records) {
        appendUint16(out, 0xc000 | kHeaderSize); // the name, as a pointer to the question's
        appendUint16(out, question.type);
        appendUint16(out, kClassIn);
        appendUint32(out, 60);
        appendUint16(out, quint16(data.size()));
        out.append(data);
    }
    return out;
}
