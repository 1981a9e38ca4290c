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
