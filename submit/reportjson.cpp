#include "submit/reportjson.h"

#include <QUrl>

QByteArray percentEncoded(const QString &text)
{
    return QUrl::toPercentEncoding(text, QByteArray(), QByteArray());
}

QByteArray identityJson(const QString &name, const QString &email, bool validated)
{
    QByteArray json;
    json.append("{ \"product\" : \"");
    json.append(percentEncoded(QStringLiteral("Korvane3D")));
    json.append("\", \"name\" : \"");
    json.append(percentEncoded(name));
    json.append("\", \"email\" : \"");
    json.append(percentEncoded(email));
    json.append("\", \"validated\" : \"");
    json.append(validated ? "true" : "false");
    json.append("\" }");
    return json;
}

QByteArray detailsJson(bool bugReport, const QString &build, const QString &area, bool nda)
{
    QByteArray json;
    json.append("{ \"type\" : \"");
    json.append(bugReport ? "bug" : "feature");
    json.append("\", \"build\" : \"");
    json.append(percentEncoded(build));
    json.append("\", \"area\" : \"");
    json.append(percentEncoded(area));
    json.append("\", \"NDA\" : ");
    json.append(nda ? "true" : "false");
    json.append(", \"phase\" : \"");
    json.append(ReportBuild::kPhase);
    json.append("\", \"buildsys_build_number\" : ");
    json.append(QByteArray::number(ReportBuild::kBuildNumber));
    json.append(", \"buildsys_project_name\" : \"");
    json.append(ReportBuild::kProjectName);
    json.append("\", \"buildsys_build_agent\" : \"");
    json.append(ReportBuild::kBuildAgent);
    json.append("\", \"buildsys_build_stage\" : \"");
    json.append(ReportBuild::kBuildStage);
    json.append("\", \"buildsys_config_name\" : \"");
    json.append(ReportBuild::kConfigName);
    json.append("\", \"buildsys_branch_name\" : \"");
    json.append(ReportBuild::kBranchName);
    json.append("\", \"buildsys_hash\" : \"");
    json.append(ReportBuild::kHash);
    json.append("\" }");
    return json;
}

QString withCrLf(const QString &text)
{
    // The same as splitting at LF and joining with CR LF, empty pieces included.
    QString result = text;
    return result.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
}

QString fileFieldDisposition(const QString &fileName)
{
    return QStringLiteral("form-data; name=\"%1\"")
        .arg(QString::fromLatin1(percentEncoded(fileName)), 0, QLatin1Char(' '));
}

QByteArray attachmentNameList(const QStringList &fileNames)
{
    QString list = QStringLiteral("[ ");
    for (const QString &name : fileNames) {
        if (list.length() > 2)
            list.append(QStringLiteral(", "));
        list.append(QStringLiteral("\"%1\"").arg(QString::fromLatin1(percentEncoded(name))));
    }
    list.append(QStringLiteral(" ]"));
    return list.toLatin1();
}
