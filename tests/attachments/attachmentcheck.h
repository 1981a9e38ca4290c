#pragma once

// Shared by the attachment and clipboard tests: pictures with known pixels, and the
// exact forms of what a row of tree_Attachments holds.

#include "form/mainwindow.h"
#include "support/mainwindowprobe.h"

#include <QBuffer>
#include <QDir>
#include <QIcon>
#include <QImage>
#include <QRegularExpression>
#include <QStringList>
#include <QTreeWidget>
#include <QTreeWidgetItem>

namespace attachmentcheck {

// Neighbouring pixels differ, so smooth and fast scaling give different pictures.
inline QImage patternImage(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y,
                           qRgb((x * 37 + y * 11) & 0xFF, (x * 5 + y * 71 + 3) & 0xFF, ((x * 113) ^ (y * 29)) & 0xFF));
    }
    return image;
}

inline QByteArray pngOf(const QImage &image)
{
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return png;
}

inline QString toolTipFor(const QString &previewPath)
{
    return QStringLiteral("<html><img src='%1'/></html>").arg(previewPath);
}

// The picture an icon shows at the given size. Pixmaps hold premultiplied pixels, so
// comparisons are made in that format (unpremultiplying rounds semi-transparent pixels).
inline QImage iconImage(const QIcon &icon, const QSize &size)
{
    return icon.pixmap(size).toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

inline QImage resourceImage(const QString &resource)
{
    return QImage(resource).convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

// True when the icon shows exactly the resource picture at its own size.
inline bool isResourceIcon(const QIcon &icon, const QString &resource)
{
    const QImage expected = resourceImage(resource);
    return !icon.isNull() && !expected.isNull() && iconImage(icon, expected.size()) == expected;
}

inline QImage argb(const QImage &image)
{
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

inline QTreeWidget *tree(const MainWindow &window)
{
    return MainWindowProbe::widget<QTreeWidget>(window, "tree_Attachments");
}

inline QString thumbnailFolder(const MainWindow &window)
{
    return MainWindowProbe::thumbnailFolder(window);
}

// File names in the thumbnail folder, sorted, hidden files included.
inline QStringList thumbnailFiles(const MainWindow &window)
{
    return QDir(thumbnailFolder(window))
        .entryList(QDir::Files | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

// "{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}.png", as QUuid::toString() names a preview.
inline bool isUuidPngName(const QString &fileName)
{
    static const QRegularExpression pattern(
        QStringLiteral("^\\{[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}\\}\\.png$"));
    return pattern.match(fileName).hasMatch();
}

// The one file of the folder that is a uuid preview, or an empty string.
inline QString onlyUuidFile(const QStringList &files)
{
    QStringList previews;
    for (const QString &file : files) {
        if (isUuidPngName(file))
            previews << file;
    }
    return previews.size() == 1 ? previews.first() : QString();
}

} // namespace attachmentcheck
