#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// The hand-built texts of the report body. The receiving server parses these bytes as
// they stand, so every separator, blank and quote here is part of the wire format.
// User-typed values are only ever percent-encoded; nothing else escapes them.

// Fixed facts about this build, sent in the details text without encoding.
namespace ReportBuild {
constexpr char kPhase[] = "release";
constexpr int kBuildNumber = 3008; // not the number in the window title; the two stay apart
constexpr char kProjectName[] = "Korvane 2019.1 Release";
constexpr char kBuildAgent[] = "KV-BUILD-07";
constexpr char kBuildStage[] = "unit";
constexpr char kConfigName[] = "Windows 64bit";
constexpr char kBranchName[] = "KV2019.1";
constexpr char kHash[] = "3f9c2a7d1e8b4c6a9d0e5f7b2c4a6e8d1f3b5c7a";
} // namespace ReportBuild

// UTF-8, then every byte but A-Z a-z 0-9 - . _ ~ as %XX (upper-case hex).
QByteArray percentEncoded(const QString &text);

// { "product" : ..., "name" : ..., "email" : ..., "validated" : "true"|"false" }
// "validated" is a quoted string, unlike NDA in the details.
QByteArray identityJson(const QString &name, const QString &email, bool validated);

// { "type" : "bug"|"feature", "build" : ..., "area" : ..., "NDA" : true|false, then the build facts }
QByteArray detailsJson(bool bugReport, const QString &build, const QString &area, bool nda);

// Every LF becomes CR LF. A CR already there stays, so CR LF becomes CR CR LF.
QString withCrLf(const QString &text);

// Content-Disposition of a file part: the percent-encoded file name is the field name.
QString fileFieldDisposition(const QString &fileName);

// [ "a", "b" ] with percent-encoded names, as Latin-1 (plain ASCII by construction).
QByteArray attachmentNameList(const QStringList &fileNames);
