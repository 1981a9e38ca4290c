#pragma once

// The rules of the attachment list that need no widget: which dropped items count as
// files, how an image entry is named on disk, and the tool tip that shows a preview.
#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

class QDir;

// A drag is taken when it carries a URI list with at least one entry that is not a
// folder. A URL that is no local file counts too: its drop then fails to open, and
// the user is told so.
bool dragOffersFiles(bool hasUriList, const QList<QUrl> &urls);

// What a drop adds, in order: the absolute path of every entry that is not a folder.
QStringList droppedFilePaths(const QList<QUrl> &urls);

// The file name an image entry is saved under, from the name the user gave it: "&"
// becomes "and", and each of * ? $ ! and blank becomes "_".
QString imageEntryBaseName(const QString &givenName);

// <folder>/<base>.png, or <folder>/<base>_<n>.png with the first n from 1 that names no
// existing file. Native separators.
QString freeImageEntryPath(const QDir &folder, const QString &baseName);

// The rich-text tool tip that shows a preview picture.
QString previewToolTip(const QString &previewPath);
