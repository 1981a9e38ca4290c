#include "multipartrecord.h"

#include <QDebug>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>

QByteArray RecordedRequest::header(const QByteArray &name) const
{
    for (const auto &field : headers)
        if (field.first.toLower() == name.toLower())
            return field.second;
    return QByteArray();
}

bool RecordedRequest::hasHeader(const QByteArray &name) const
{
    for (const auto &field : headers)
        if (field.first.toLower() == name.toLower())
            return true;
    return false;
}

RecordedRequest parseRecordedRequest(const QByteArray &raw)
{
    RecordedRequest request;
    const int headEnd = raw.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return request;
    const QList<QByteArray> lines = raw.left(headEnd).split('\n');
    request.requestLine = lines.value(0).trimmed();
    for (int i = 1; i < lines.size(); ++i) {
        const QByteArray line = lines.at(i).trimmed();
        const int colon = line.indexOf(':');
        if (colon > 0)
            request.headers.append({line.left(colon), line.mid(colon + 1).trimmed()});
    }
    request.body = raw.mid(headEnd + 4);
    return request;
}

QByteArray multipartBoundary(const QByteArray &contentType)
{
    const QRegularExpression pattern(QStringLiteral("boundary=\"?([^\";]+)\"?"));
    const QRegularExpressionMatch match = pattern.match(QString::fromLatin1(contentType));
    return match.hasMatch() ? match.captured(1).toLatin1() : QByteArray();
}

QList<QByteArray> multipartParts(const QByteArray &body, const QByteArray &boundary)
{
    const QByteArray opening = "--" + boundary + "\r\n";
    const QByteArray between = "\r\n--" + boundary + "\r\n";
    const QByteArray closing = "\r\n--" + boundary + "--\r\n";
    if (boundary.isEmpty() || !body.startsWith(opening) || !body.endsWith(closing)
        || body.size() < opening.size() + closing.size())
        return {};
    const QByteArray inner = body.mid(opening.size(), body.size() - opening.size() - closing.size());
    QList<QByteArray> parts;
    int from = 0;
    for (int at; (at = inner.indexOf(between, from)) >= 0; from = at + between.size())
        parts.append(inner.mid(from, at - from));
    parts.append(inner.mid(from));
    return parts;
}

QByteArray multipartBody(const QByteArray &boundary, const QList<QByteArray> &parts)
{
    QByteArray body = "--" + boundary + "\r\n";
    for (int i = 0; i < parts.size(); ++i) {
        if (i > 0)
            body += "\r\n--" + boundary + "\r\n";
        body += parts.at(i);
    }
    return body + "\r\n--" + boundary + "--\r\n";
}

QByteArray fieldPart(const QByteArray &name, const QByteArray &body)
{
    return "Content-Disposition: form-data; name=\"" + name + "\"\r\n\r\n" + body;
}

QByteArray filePart(const QByteArray &encodedName, const QByteArray &content)
{
    return "Content-Disposition: form-data; name=\"" + encodedName
           + "\"\r\nContent-Type: application/octet-stream\r\n\r\n" + content;
}

bool operator==(const ParsedPart &a, const ParsedPart &b)
{
    return a.disposition == b.disposition && a.contentType == b.contentType && a.name == b.name && a.body == b.body;
}

QDebug operator<<(QDebug debug, const ParsedPart &part)
{
    QDebugStateSaver saver(debug);
    debug.nospace() << "ParsedPart(" << part.disposition << ", " << part.contentType << ", " << part.name << ", "
                    << part.body << ")";
    return debug;
}

QList<ParsedPart> partsAsParsed(const QList<QByteArray> &rawParts)
{
    QList<ParsedPart> parsed;
    const QRegularExpression name(QStringLiteral("name=\"([^\"]*)\""));
    for (const QByteArray &raw : rawParts) {
        const int headEnd = raw.indexOf("\r\n\r\n");
        ParsedPart part;
        for (const QByteArray &line : raw.left(headEnd).split('\n')) {
            const QByteArray field = line.trimmed();
            if (field.startsWith("Content-Disposition: "))
                part.disposition = QString::fromUtf8(field.mid(21));
            else if (field.startsWith("Content-Type: "))
                part.contentType = QString::fromUtf8(field.mid(14));
        }
        part.name = name.match(part.disposition).captured(1);
        part.body = raw.mid(headEnd + 4);
        parsed.append(part);
    }
    return parsed;
}

QList<ParsedPart> parseWithPython(const QString &requestFile, QString *error)
{
    // Debian's own interpreter, not whatever a developer has first on PATH.
    QString python = QStandardPaths::findExecutable(QStringLiteral("python3"), {QStringLiteral("/usr/bin")});
    if (python.isEmpty())
        python = QStandardPaths::findExecutable(QStringLiteral("python3"));
    QProcess process;
    process.start(python, {QStringLiteral(FB_TESTS_DIR "/submit/read_multipart.py"), requestFile});
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        *error = QString::fromUtf8(process.readAllStandardError());
        return {};
    }
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(process.readAllStandardOutput(), &parseError);
    const QJsonArray defects = document.object().value(QStringLiteral("defects")).toArray();
    if (parseError.error != QJsonParseError::NoError || !defects.isEmpty()) {
        *error = parseError.error != QJsonParseError::NoError ? parseError.errorString()
                                                              : QString::fromUtf8(QJsonDocument(defects).toJson());
        return {};
    }
    QList<ParsedPart> parts;
    for (const QJsonValue &value : document.object().value(QStringLiteral("parts")).toArray()) {
        const QJsonObject object = value.toObject();
        ParsedPart part;
        part.disposition = object.value(QStringLiteral("disposition")).toString();
        part.contentType = object.value(QStringLiteral("type")).toString();
        part.name = object.value(QStringLiteral("name")).toString();
        part.body = QByteArray::fromHex(object.value(QStringLiteral("body")).toString().toLatin1());
        parts.append(part);
    }
    return parts;
}
