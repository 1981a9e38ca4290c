#pragma once

// Preview pictures of attachments: a copy no larger than kPreviewLimit on either side,
// written as PNG to the thumbnail folder and shown in a row's tool tip.
#include <QImage>
#include <QString>

class QDir;

constexpr int kPreviewLimit = 512;

// A picture file read for its preview: a JPEG at preview size, anything else whole.
QImage readForPreview(const QString &path);

// Writes a preview; false when it could not be written.
bool savePreview(const QImage &image, const QString &path);

// A new, unique PNG path in the folder, native separators.
QString uuidPngPath(const QDir &folder);

// The files of an image entry (a pasted picture or a screen shot): the picture saved
// as PNG under its sanitised name in the folder, and its preview: the picture itself
// when it is small enough, else a smoothly scaled copy. A failed save is not detected:
// the entry then points at a missing file.
struct ImageEntryFiles
{
    QString path;
    QString preview;
};
ImageEntryFiles saveImageEntry(const QDir &folder, const QString &givenName, const QImage &image);

// The preview of a file entry that is a readable picture: a fast-scaled copy in the
// folder (only a tool tip shows it), or the file itself when the copy cannot be
// written; empty when the file is no picture Qt reads.
QString filePreview(const QDir &folder, const QString &path);
