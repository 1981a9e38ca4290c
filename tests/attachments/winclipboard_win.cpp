#include "winclipboard.h"

#include "support/winkeys.h"

#include <QImage>

#include <windows.h>

#include <cstring>

namespace {

// The CF_DIB block of a picture: a BITMAPINFOHEADER and 24-bit rows, bottom row first,
// each padded to four bytes.
QByteArray dibBlockOf(const QImage &picture)
{
    const QImage rgb = picture.convertToFormat(QImage::Format_RGB32);
    const int stride = (rgb.width() * 3 + 3) & ~3;
    BITMAPINFOHEADER header = {};
    header.biSize = sizeof(header);
    header.biWidth = rgb.width();
    header.biHeight = rgb.height();
    header.biPlanes = 1;
    header.biBitCount = 24;
    header.biCompression = BI_RGB;
    header.biSizeImage = DWORD(stride) * DWORD(rgb.height());
    QByteArray block(reinterpret_cast<const char *>(&header), sizeof(header));
    for (int y = rgb.height() - 1; y >= 0; --y) {
        QByteArray row(stride, '\0');
        for (int x = 0; x < rgb.width(); ++x) {
            const QRgb pixel = rgb.pixel(x, y);
            row[3 * x] = char(qBlue(pixel));
            row[3 * x + 1] = char(qGreen(pixel));
            row[3 * x + 2] = char(qRed(pixel));
        }
        block += row;
    }
    return block;
}

bool putOnClipboard(UINT format, const QByteArray &bytes)
{
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, SIZE_T(bytes.size()));
    if (!memory)
        return false;
    void *target = GlobalLock(memory);
    if (!target) {
        GlobalFree(memory);
        return false;
    }
    std::memcpy(target, bytes.constData(), size_t(bytes.size()));
    GlobalUnlock(memory);
    if (!OpenClipboard(nullptr)) {
        GlobalFree(memory);
        return false;
    }
    EmptyClipboard();
    const bool handedOver = SetClipboardData(format, memory) != nullptr;
    CloseClipboard();
    if (!handedOver)
        GlobalFree(memory);
    return handedOver;
}

} // namespace

bool WinClipboard::serve(const QByteArray &content, const QString &type, const QString &)
{
    if (type == QLatin1String("image/png")) {
        const QImage picture = QImage::fromData(content, "PNG");
        return !picture.isNull() && putOnClipboard(CF_DIB, dibBlockOf(picture));
    }
    const QString text = QString::fromUtf8(content);
    QByteArray utf16(reinterpret_cast<const char *>(text.utf16()), int((text.size() + 1) * sizeof(ushort)));
    return putOnClipboard(CF_UNICODETEXT, utf16);
}

void WinClipboard::stopServing()
{
    if (OpenClipboard(nullptr)) {
        EmptyClipboard();
        CloseClipboard();
    }
}

bool WinClipboard::typeCtrlV()
{
    return pressKeyChord({VK_CONTROL, 'V'});
}
