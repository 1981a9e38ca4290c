#pragma once

#include <QImage>
#include <QString>

// Images are compared premultiplied, so that the colour of fully transparent pixels,
// which painting does not keep, plays no part.
inline QImage asArgb(const QImage &image)
{
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

inline QImage resourceImage(const char *path)
{
    return asArgb(QImage(QString::fromLatin1(path)));
}
