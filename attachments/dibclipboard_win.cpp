#ifdef _WIN32

#include "attachments/dibclipboard_win.h"
#include "attachments/dib.h"

#include <cstring>

bool readClipboardBmp(std::vector<unsigned char> &bmpFile)
{
    if (!IsClipboardFormatAvailable(CF_BITMAP) && !IsClipboardFormatAvailable(CF_DIB)
        && !IsClipboardFormatAvailable(CF_DIBV5))
        return false;
    if (!OpenClipboard(nullptr))
        return false;

    HANDLE data = GetClipboardData(CF_DIB);
    if (!data)
        data = GetClipboardData(CF_DIBV5);
    if (!data) {
        CloseClipboard();
        return false;
    }
    const auto *block = static_cast<const unsigned char *>(GlobalLock(data));
    if (!block) {
        CloseClipboard();
        return false;
    }
    bmpFile = dib::bmpFileFromClipboardBlock(block, GlobalSize(data));
    GlobalUnlock(data);
    CloseClipboard();
    return !bmpFile.empty();
}

namespace {

static_assert(sizeof(BITMAPINFOHEADER) == dib::kInfoHeaderSize, "the header is copied as 40 bytes");

BITMAPINFOHEADER toWin32(const dib::InfoHeader &header)
{
    BITMAPINFOHEADER out = {};
    dib::writeInfoHeader(header, reinterpret_cast<unsigned char *>(&out));
    return out;
}

} // namespace

bool copy_bitmap_to_clipboard(HWND owner, HBITMAP bitmap)
{
    if (!OpenClipboard(owner))
        return false;
    EmptyClipboard();

    BITMAP bm = {};
    GetObjectW(bitmap, sizeof bm, &bm);
    const dib::DibFormat format = dib::dibFormatFor(bm.bmBitsPixel);

    // GetDIBits fills a colour table behind the header for paletted depths, even when
    // it is only asked for the image size, so the probe gets room for 256 entries.
    struct
    {
        BITMAPINFOHEADER header;
        RGBQUAD colours[256];
    } probe = {};
    probe.header = toWin32(dib::infoHeaderForBitmap(bm.bmWidth, bm.bmHeight, bm.bmBitsPixel));

    HDC dc = GetDC(nullptr);
    HPALETTE oldPalette = SelectPalette(dc, static_cast<HPALETTE>(GetStockObject(DEFAULT_PALETTE)), FALSE);
    RealizePalette(dc);

    GetDIBits(dc, bitmap, 0, UINT(bm.bmHeight), nullptr, reinterpret_cast<BITMAPINFO *>(&probe), DIB_RGB_COLORS);
    if (probe.header.biSizeImage == 0)
        probe.header.biSizeImage =
            dib::dibImageSize(probe.header.biBitCount, probe.header.biWidth, probe.header.biHeight);

    bool handed = false;
    const SIZE_T blockSize = SIZE_T(probe.header.biSizeImage) + dib::kInfoHeaderSize + format.colourTableSize;
    if (HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, blockSize)) {
        auto *bytes = static_cast<unsigned char *>(GlobalLock(block));
        int lines = 0;
        if (bytes) {
            std::memcpy(bytes, &probe.header, dib::kInfoHeaderSize);
            lines = GetDIBits(dc, bitmap, 0, UINT(bm.bmHeight), bytes + dib::kInfoHeaderSize + format.colourTableSize,
                              reinterpret_cast<BITMAPINFO *>(bytes), DIB_RGB_COLORS);
            GlobalUnlock(block);
        }
        // Once SetClipboardData succeeds the clipboard owns the block.
        handed = lines != 0 && SetClipboardData(CF_DIB, block) != nullptr;
        if (!handed)
            GlobalFree(block);
    }

    CloseClipboard();
    SelectPalette(dc, oldPalette, FALSE);
    ReleaseDC(nullptr, dc);
    return handed;
}

#endif
