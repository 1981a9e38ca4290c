// The clipboard through the Win32 calls: the Qt side of dibclipboard_win.cpp.
#include <QtGlobal>

#ifdef Q_OS_WIN

#include "attachments/clipboard.h"
#include "attachments/clipboardbmp.h"
#include "attachments/dibclipboard_win.h"

#include <QPixmap>
#include <QWidget>

#include <windows.h>

// Exported by QtGui for the Windows platform code; not in a public header.
Q_GUI_EXPORT HBITMAP qt_pixmapToWinHBITMAP(const QPixmap &p, int hbitmapFormat = 0);

bool readImageFromClipboard(QImage &image, const QDir &scratchFolder)
{
    std::vector<unsigned char> bmpFile;
    return readClipboardBmp(bmpFile) && loadBmpThroughFile(bmpFile, scratchFolder, image);
}

bool copyPixmapToClipboard(const QPixmap &pixmap, QWidget *owner)
{
    HBITMAP bitmap = qt_pixmapToWinHBITMAP(pixmap, 0); // 0: no alpha
    const bool copied = copy_bitmap_to_clipboard(reinterpret_cast<HWND>(owner->winId()), bitmap);
    if (bitmap)
        DeleteObject(bitmap); // the clipboard holds its own copy of the bits
    return copied;
}

#endif
