// Another Windows program reading the clipboard: takes the device-independent bitmap
// (CF_DIB) that is there and writes it as a BMP file, so that a test can compare its
// pixels. Written apart from the program's own clipboard reader on purpose.
// Usage: clipboardbmpreader <file.bmp>; exit status 0 when the file was written.
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <vector>

namespace {

// The bytes between the header and the pixels: the colour masks of a BI_BITFIELDS
// bitmap with the 40-byte header, and the colour table.
DWORD bytesBeforePixels(const BITMAPINFOHEADER &header)
{
    DWORD extra = 0;
    if (header.biSize == sizeof(BITMAPINFOHEADER) && header.biCompression == BI_BITFIELDS)
        extra += 3 * sizeof(DWORD);
    DWORD colours = header.biClrUsed;
    if (colours == 0 && header.biBitCount <= 8)
        colours = 1u << header.biBitCount;
    return header.biSize + extra + colours * sizeof(RGBQUAD);
}

bool openClipboard()
{
    // Another program may hold it for a moment.
    for (int attempt = 0; attempt < 100; ++attempt) {
        if (OpenClipboard(nullptr))
            return true;
        Sleep(50);
    }
    return false;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: clipboardbmpreader <file.bmp>\n");
        return 2;
    }
    if (!openClipboard()) {
        std::fprintf(stderr, "the clipboard cannot be opened\n");
        return 1;
    }
    std::vector<unsigned char> block;
    if (HANDLE data = GetClipboardData(CF_DIB)) {
        const SIZE_T size = GlobalSize(data);
        if (const void *bytes = GlobalLock(data)) {
            block.assign(static_cast<const unsigned char *>(bytes), static_cast<const unsigned char *>(bytes) + size);
            GlobalUnlock(data);
        }
    }
    CloseClipboard();
    if (block.size() < sizeof(BITMAPINFOHEADER)) {
        std::fprintf(stderr, "no device-independent bitmap on the clipboard\n");
        return 1;
    }
    BITMAPINFOHEADER header;
    std::memcpy(&header, block.data(), sizeof header);
    BITMAPFILEHEADER file{};
    file.bfType = 0x4d42; // "BM"
    file.bfSize = DWORD(sizeof file + block.size());
    file.bfOffBits = DWORD(sizeof file + bytesBeforePixels(header));
    FILE *out = std::fopen(argv[1], "wb");
    if (!out)
        return 1;
    const bool written =
        std::fwrite(&file, sizeof file, 1, out) == 1 && std::fwrite(block.data(), 1, block.size(), out) == block.size();
    return std::fclose(out) == 0 && written ? 0 : 1;
}
