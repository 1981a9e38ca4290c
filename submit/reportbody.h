#pragma once

// The report body as one multipart form, built from plain values: the window gathers
// what the form holds into ReportFields, and buildReportBody() makes the parts. The
// texts of the parts are those of submit/reportjson.h.
#include <QString>
#include <QStringList>

class QHttpMultiPart;

struct ReportFields
{
    QString name;
    QString email;
    bool emailValidated = false; // the address's domain was found
    bool bugReport = true;
    QString build;
    QString area; // the source-language name, which the server files by
    bool nda = false;
    QString systemSummary; // empty: no summary part at all, never an empty one
    QString title;
    QString description;
    QStringList attachmentPaths; // in list order; each must exist when the body is built
};

// identity, details, sysinfo (only with a summary), title, description, one file part
// per attachment (streamed from the file while the request goes out), and the list of
// the attachments' names when there is any. Null when an attachment cannot be opened:
// the parts made so far are then scheduled for deletion.
QHttpMultiPart *buildReportBody(const ReportFields &fields);
