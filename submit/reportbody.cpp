#include "submit/reportbody.h"

#include "submit/attachmentfile.h"
#include "submit/reportjson.h"

#include <QFileInfo>
#include <QHttpMultiPart>
#include <QNetworkRequest>

namespace {

QHttpPart formField(const char *disposition, const QByteArray &body)
{
    QHttpPart part;
    part.setHeader(QNetworkRequest::ContentDispositionHeader, QString::fromLatin1(disposition));
    part.setBody(body);
    return part;
}

} // namespace

QHttpMultiPart *buildReportBody(const ReportFields &fields)
{
    QHttpMultiPart *multiPart = new QHttpMultiPart(QHttpMultiPart::FormDataType);

    multiPart->append(
        formField("form-data; name=\"identity\"", identityJson(fields.name, fields.email, fields.emailValidated)));
    multiPart->append(
        formField("form-data; name=\"details\"", detailsJson(fields.bugReport, fields.build, fields.area, fields.nda)));
    if (!fields.systemSummary.isEmpty())
        multiPart->append(formField("form-data; name=\"sysinfo\"", fields.systemSummary.toUtf8()));
    multiPart->append(formField("form-data; name=\"title\"", withCrLf(fields.title).toUtf8()));
    multiPart->append(formField("form-data; name=\"description\"", withCrLf(fields.description).toUtf8()));

    QStringList fileNames;
    for (const QString &path : fields.attachmentPaths) {
        const QString fileName = QFileInfo(path).fileName();
        fileNames.append(fileName);

        QHttpPart part;
        part.setHeader(QNetworkRequest::ContentDispositionHeader, fileFieldDisposition(fileName));
        part.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/octet-stream"));

        AttachmentFile *file = new AttachmentFile(path);
        if (!file->openForSending()) {
            delete file;
            multiPart->deleteLater();
            return nullptr;
        }
        // Streamed while the request goes out; closed and freed with the multipart.
        part.setBodyDevice(file);
        file->setParent(multiPart);
        multiPart->append(part);
    }

    if (!fileNames.isEmpty())
        multiPart->append(formField("form-data; name=\"attachments\"", attachmentNameList(fileNames)));

    return multiPart;
}
