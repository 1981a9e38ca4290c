#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>

// Reading back a request that the loopback receiver recorded.
struct RecordedRequest
{
    QByteArray requestLine;
    QList<QPair<QByteArray, QByteArray>> headers; // in the order sent
    QByteArray body;

    QByteArray header(const QByteArray &name) const; // first match, name case-insensitive
    bool hasHeader(const QByteArray &name) const;
};

RecordedRequest parseRecordedRequest(const QByteArray &raw);

// The boundary parameter of a multipart Content-Type, without its quotes.
QByteArray multipartBoundary(const QByteArray &contentType);

// The raw parts between the delimiters ("headers CRLF CRLF body"); empty when the
// body is not framed exactly as opening delimiter, parts, closing delimiter.
QList<QByteArray> multipartParts(const QByteArray &body, const QByteArray &boundary);
QByteArray multipartBody(const QByteArray &boundary, const QList<QByteArray> &parts);

// One expected part, written out: a form field, or a file field with its content type.
QByteArray fieldPart(const QByteArray &name, const QByteArray &body);
QByteArray filePart(const QByteArray &encodedName, const QByteArray &content);

// What an independent parser makes of a part: Python's email package.
struct ParsedPart
{
    QString disposition;
    QString contentType; // empty when the part has none
    QString name;
    QByteArray body;
};
bool operator==(const ParsedPart &a, const ParsedPart &b);
QDebug operator<<(QDebug debug, const ParsedPart &part);

// The same view taken from raw expected parts, to compare with Python's.
QList<ParsedPart> partsAsParsed(const QList<QByteArray> &rawParts);
// Runs tests/submit/read_multipart.py on a recorded request; error says why when it fails.
QList<ParsedPart> parseWithPython(const QString &requestFile, QString *error);
