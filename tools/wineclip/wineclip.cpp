// Checks the Windows clipboard code (attachments/dib*.cpp) against a real Win32
// clipboard: built with MinGW and run under Wine by tools/lanes/wine-clipboard.sh.
//
//   wineclip serve CASE READY STOP  puts the case's picture on the clipboard, reads it
//                                   back in the same process, creates the file READY
//                                   and keeps its window alive until STOP exists (Wine
//                                   serves the clipboard only while its owner lives)
//   wineclip check CASE             reads the clipboard in a second process and
//                                   compares what the reader makes of it
//   wineclip list                   prints the case names
//
// Exit status 0 when every comparison holds; each mismatch is printed.

#include "attachments/dib.h"
#include "attachments/dibclipboard_win.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

const int kWidth = 7; // odd, so 24-bit rows need padding
const int kHeight = 5;

struct Bgr
{
    unsigned char b, g, r;
};

Bgr pattern(int x, int y)
{
    return {static_cast<unsigned char>(x * 37 + y * 11), static_cast<unsigned char>(x * 5 + y * 71 + 3),
            static_cast<unsigned char>((x * 113) ^ (y * 29))};
}

int g_failures = 0;

void fail(const std::string &what)
{
    std::printf("FAIL: %s\n", what.c_str());
    ++g_failures;
}

void expect(bool condition, const std::string &what)
{
    if (!condition)
        fail(what);
}

void add32(Bytes &out, std::uint32_t v)
{
    for (int i = 0; i < 4; ++i)
        out.push_back(static_cast<unsigned char>(v >> (8 * i)));
}

// A bottom-up BI_RGB or BI_BITFIELDS block of the test pattern.
Bytes patternBlock(int bitCount, std::uint32_t compression, std::uint32_t sizeImage, const Bytes &afterHeader)
{
    dib::InfoHeader header;
    header.size = 40;
    header.width = kWidth;
    header.height = kHeight;
    header.planes = 1;
    header.bitCount = std::uint16_t(bitCount);
    header.compression = compression;
    header.sizeImage = sizeImage;
    Bytes block(40);
    dib::writeInfoHeader(header, block.data());
    block.insert(block.end(), afterHeader.begin(), afterHeader.end());
    const int bytesPerPixel = bitCount / 8;
    const int stride = (kWidth * bytesPerPixel + 3) & ~3;
    for (int row = 0; row < kHeight; ++row) {
        const int y = kHeight - 1 - row;
        Bytes line(std::size_t(stride), 0);
        for (int x = 0; x < kWidth; ++x) {
            const Bgr p = pattern(x, y);
            line[std::size_t(x * bytesPerPixel)] = p.b;
            line[std::size_t(x * bytesPerPixel + 1)] = p.g;
            line[std::size_t(x * bytesPerPixel + 2)] = p.r;
        }
        block.insert(block.end(), line.begin(), line.end());
    }
    return block;
}

Bytes rgbBlock(int bitCount)
{
    const std::uint32_t size = dib::dibImageSize(std::uint16_t(bitCount), kWidth, kHeight);
    return patternBlock(bitCount, BI_RGB, size, {});
}

Bytes masks()
{
    Bytes m;
    add32(m, 0x00FF0000);
    add32(m, 0x0000FF00);
    add32(m, 0x000000FF);
    return m;
}

Bytes bitfieldsBlock()
{
    return patternBlock(32, BI_BITFIELDS, dib::dibImageSize(32, kWidth, kHeight), masks());
}

Bytes paletteBlock()
{
    dib::InfoHeader header;
    header.size = 40;
    header.width = kWidth;
    header.height = kHeight;
    header.planes = 1;
    header.bitCount = 8;
    header.sizeImage = dib::dibImageSize(8, kWidth, kHeight);
    Bytes block(40);
    dib::writeInfoHeader(header, block.data());
    for (int i = 0; i < 256; ++i) { // grey ramp
        const unsigned char v = static_cast<unsigned char>(i);
        block.insert(block.end(), {v, v, v, 0});
    }
    for (std::uint32_t i = 0; i < header.sizeImage; ++i)
        block.push_back(static_cast<unsigned char>(i * 7));
    return block;
}

Bytes zeroSizeBlock()
{
    return patternBlock(32, BI_RGB, 0, {});
}

std::uint32_t get32(const Bytes &b, std::size_t at)
{
    return std::uint32_t(b[at]) | std::uint32_t(b[at + 1]) << 8 | std::uint32_t(b[at + 2]) << 16
           | std::uint32_t(b[at + 3]) << 24;
}

// Decodes the reader's BMP file independently of the code under test and compares
// every pixel with the pattern. Handles the 24- and 32-bit BI_RGB files it gets.
void expectPatternPixels(const Bytes &file, const std::string &label)
{
    if (file.size() < 54) {
        fail(label + ": file shorter than its headers");
        return;
    }
    expect(file[0] == 'B' && file[1] == 'M', label + ": file type");
    expect(get32(file, 2) == file.size(), label + ": file size field");
    expect(get32(file, 10) == 54, label + ": pixel offset");
    const int width = int(get32(file, 18));
    const int height = int(get32(file, 22));
    const int bitCount = file[28] | file[29] << 8;
    expect(width == kWidth && height == kHeight, label + ": dimensions");
    expect(get32(file, 30) == BI_RGB, label + ": compression");
    if (bitCount != 24 && bitCount != 32) {
        fail(label + ": bit count " + std::to_string(bitCount));
        return;
    }
    const int bytesPerPixel = bitCount / 8;
    const std::size_t stride = std::size_t((kWidth * bytesPerPixel + 3) & ~3);
    if (file.size() < 54 + stride * kHeight) {
        fail(label + ": too few pixel bytes");
        return;
    }
    int wrong = 0;
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const std::size_t at = 54 + std::size_t(kHeight - 1 - y) * stride + std::size_t(x * bytesPerPixel);
            const Bgr p = pattern(x, y);
            if (file[at] != p.b || file[at + 1] != p.g || file[at + 2] != p.r)
                ++wrong;
        }
    }
    expect(wrong == 0,
           label + ": " + std::to_string(wrong) + " of " + std::to_string(kWidth * kHeight) + " pixels differ");
}

void expectBytes(const Bytes &actual, const Bytes &expected, const std::string &label)
{
    if (actual.size() != expected.size()) {
        fail(label + ": " + std::to_string(actual.size()) + " bytes, expected " + std::to_string(expected.size()));
        return;
    }
    for (std::size_t i = 0; i < actual.size(); ++i) {
        if (actual[i] != expected[i]) {
            fail(label + ": first difference at byte " + std::to_string(i));
            return;
        }
    }
}

bool putBlock(HWND owner, UINT format, const Bytes &block)
{
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, block.size());
    if (!memory)
        return false;
    std::memcpy(GlobalLock(memory), block.data(), block.size());
    GlobalUnlock(memory);
    if (!OpenClipboard(owner)) {
        GlobalFree(memory);
        return false;
    }
    EmptyClipboard();
    const bool put = SetClipboardData(format, memory) != nullptr;
    if (!put)
        GlobalFree(memory);
    CloseClipboard();
    return put;
}

HBITMAP patternBitmap()
{
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = kWidth;
    info.bmiHeader.biHeight = kHeight;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void *bits = nullptr;
    HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (!bitmap)
        return nullptr;
    const Bytes block = rgbBlock(32);
    std::memcpy(bits, block.data() + 40, block.size() - 40);
    return bitmap;
}

struct Case
{
    const char *name;
    const char *what;
    bool (*put)(HWND owner);
    void (*verify)(const std::string &label); // reads the clipboard and compares
};

Bytes readOrFail(const std::string &label)
{
    Bytes file;
    if (!readClipboardBmp(file))
        fail(label + ": the reader found no bitmap");
    return file;
}

// A BI_RGB block comes back as it was put, and its pixels are the pattern's.
void expectStraightRead(const Bytes &block, const std::string &label)
{
    const Bytes file = readOrFail(label);
    expectBytes(file, dib::bmpFileFromClipboardBlock(block.data(), block.size()), label);
    expectPatternPixels(file, label);
}

const Case kCases[] = {
    {"rgb32", "32-bit BI_RGB block, read pixel for pixel",
     [](HWND owner) { return putBlock(owner, CF_DIB, rgbBlock(32)); },
     [](const std::string &label) { expectStraightRead(rgbBlock(32), label); }},
    {"rgb24", "24-bit BI_RGB block with padded rows, read pixel for pixel",
     [](HWND owner) { return putBlock(owner, CF_DIB, rgbBlock(24)); },
     [](const std::string &label) { expectStraightRead(rgbBlock(24), label); }},
    {"bitfields", "32-bit BI_BITFIELDS block: the masks become the first 12 pixel bytes",
     [](HWND owner) { return putBlock(owner, CF_DIB, bitfieldsBlock()); },
     [](const std::string &label) {
         const Bytes block = bitfieldsBlock();
         const Bytes file = readOrFail(label);
         Bytes expected(block.begin(), block.begin() + 40);
         Bytes fileHeader = {'B', 'M'};
         add32(fileHeader, 54 + 140);
         add32(fileHeader, 0);
         add32(fileHeader, 54);
         expected.insert(expected.begin(), fileHeader.begin(), fileHeader.end());
         expected.insert(expected.end(), block.begin() + 40, block.begin() + 40 + 140);
         expectBytes(file, expected, label);
         const Bytes m = masks();
         expect(file.size() >= 66 && std::equal(m.begin(), m.end(), file.begin() + 54), label + ": masks first");
     }},
    {"pal8", "8-bit block with a colour table: the table becomes the pixel bytes",
     [](HWND owner) { return putBlock(owner, CF_DIB, paletteBlock()); },
     [](const std::string &label) {
         const Bytes block = paletteBlock();
         const Bytes file = readOrFail(label);
         expect(file.size() == 54 + 40, label + ": size");
         expect(file.size() == 94 && std::equal(block.begin() + 40, block.begin() + 80, file.begin() + 54),
                label + ": pixel bytes are the colour table's first 40 bytes");
         expectBytes(file, dib::bmpFileFromClipboardBlock(block.data(), block.size()), label);
     }},
    {"zero", "image size 0: the headers alone", [](HWND owner) { return putBlock(owner, CF_DIB, zeroSizeBlock()); },
     [](const std::string &label) {
         const Bytes block = zeroSizeBlock();
         const Bytes file = readOrFail(label);
         expect(file.size() == 54, label + ": 54 bytes");
         expect(file.size() == 54 && get32(file, 2) == 54, label + ": file size field 54");
         expectBytes(file, dib::bmpFileFromClipboardBlock(block.data(), block.size()), label);
     }},
    {"writer", "a 32-bit bitmap through copy_bitmap_to_clipboard comes back as 24 bits",
     [](HWND owner) {
         HBITMAP bitmap = patternBitmap();
         const bool copied = bitmap && copy_bitmap_to_clipboard(owner, bitmap);
         DeleteObject(bitmap);
         return copied;
     },
     [](const std::string &label) {
         const Bytes file = readOrFail(label);
         expect(file.size() >= 54 && file[28] == 24, label + ": 24 bits per pixel");
         expect(file.size() >= 54 && get32(file, 14) == 40, label + ": header size 40");
         expect(file.size() >= 54 && get32(file, 34) == dib::dibImageSize(24, kWidth, kHeight), label + ": image size");
         expectPatternPixels(file, label);
     }},
    {"bitmap", "a lone CF_BITMAP comes through the system's CF_DIB, masks first",
     [](HWND owner) {
         HBITMAP bitmap = patternBitmap();
         if (!bitmap || !OpenClipboard(owner))
             return false;
         EmptyClipboard();
         const bool put = SetClipboardData(CF_BITMAP, bitmap) != nullptr;
         CloseClipboard();
         return put;
     },
     [](const std::string &label) {
         // The system describes a 32-bit bitmap with BI_BITFIELDS and three masks
         // behind the header, so the picture arrives shifted by those 12 bytes.
         const Bytes file = readOrFail(label);
         const Bytes block = rgbBlock(32);
         const std::uint32_t size = dib::dibImageSize(32, kWidth, kHeight);
         expect(file.size() == 54 + size, label + ": size");
         if (file.size() != 54 + size)
             return;
         expect(get32(file, 30) == BI_BITFIELDS, label + ": compression BI_BITFIELDS");
         const Bytes m = masks();
         expect(std::equal(m.begin(), m.end(), file.begin() + 54), label + ": masks first");
         expect(std::equal(block.begin() + 40, block.begin() + 40 + (size - 12), file.begin() + 66),
                label + ": pixels shifted by 12 bytes");
     }},
    {"text", "text only: the reader finds no bitmap",
     [](HWND owner) {
         const wchar_t text[] = L"not a picture";
         const Bytes block(reinterpret_cast<const unsigned char *>(text),
                           reinterpret_cast<const unsigned char *>(text) + sizeof text);
         return putBlock(owner, CF_UNICODETEXT, block);
     },
     [](const std::string &label) {
         Bytes file;
         expect(!readClipboardBmp(file), label + ": the reader must find no bitmap");
     }},
};

const Case *findCase(const std::string &name)
{
    for (const Case &c : kCases) {
        if (name == c.name)
            return &c;
    }
    return nullptr;
}

bool fileExists(const char *path)
{
    return GetFileAttributesA(path) != INVALID_FILE_ATTRIBUTES;
}

int serve(const Case &c, const char *ready, const char *stop)
{
    HWND window = CreateWindowExW(0, L"STATIC", L"wineclip", WS_OVERLAPPEDWINDOW, 0, 0, 10, 10, nullptr, nullptr,
                                  GetModuleHandleW(nullptr), nullptr);
    if (!window) {
        fail("no window");
        return 1;
    }
    if (!c.put(window)) {
        fail(std::string(c.name) + ": could not put it on the clipboard");
        return 1;
    }
    c.verify(std::string(c.name) + " (same process)");

    if (FILE *f = std::fopen(ready, "w"))
        std::fclose(f);
    // Serve the clipboard until told to stop; give up after a minute.
    const DWORD start = GetTickCount();
    while (!fileExists(stop) && GetTickCount() - start < 60000) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
        MSG msg;
        while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&msg);
            DispatchMessageW(&msg);
        }
    }
    DestroyWindow(window);
    return g_failures == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    const std::string mode = argc > 1 ? argv[1] : "";
    if (mode == "list") {
        for (const Case &c : kCases)
            std::printf("%s\t%s\n", c.name, c.what);
        return 0;
    }
    const Case *c = argc > 2 ? findCase(argv[2]) : nullptr;
    if (mode == "serve" && c && argc == 5)
        return serve(*c, argv[3], argv[4]);
    if (mode == "check" && c && argc == 3) {
        c->verify(std::string(c->name) + " (second process)");
        return g_failures == 0 ? 0 : 1;
    }
    std::fprintf(stderr, "usage: wineclip list | serve CASE READY STOP | check CASE\n");
    return 2;
}
