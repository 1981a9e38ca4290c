#pragma once

// Device-independent bitmaps as the Windows clipboard holds them (CF_DIB, CF_DIBV5).
// Plain C++ without Qt or Windows headers, so that the byte arithmetic is shared by the
// program, its Linux tests and the Windows clipboard check that runs under Wine.

#include <cstddef>
#include <cstdint>
#include <vector>

namespace dib {

constexpr std::size_t kInfoHeaderSize = 40; // BITMAPINFOHEADER
constexpr std::size_t kFileHeaderSize = 14; // BITMAPFILEHEADER
constexpr std::size_t kBmpHeadersSize = kFileHeaderSize + kInfoHeaderSize;
constexpr std::uint16_t kBmpFileType = 0x4D42; // "BM"

// The eleven fields of a BITMAPINFOHEADER, in their order in memory.
struct InfoHeader
{
    std::uint32_t size = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::uint16_t planes = 0;
    std::uint16_t bitCount = 0;
    std::uint32_t compression = 0;
    std::uint32_t sizeImage = 0;
    std::int32_t xPelsPerMeter = 0;
    std::int32_t yPelsPerMeter = 0;
    std::uint32_t clrUsed = 0;
    std::uint32_t clrImportant = 0;
};

// Reads the first 40 bytes of a block as a header; false when the block is shorter.
bool readInfoHeader(const unsigned char *block, std::size_t blockSize, InfoHeader &header);
// Writes the header as 40 little-endian bytes.
void writeInfoHeader(const InfoHeader &header, unsigned char *out);

// The BMP file that the clipboard reader writes for a locked clipboard block: a
// 54-byte file header plus the block's first 40 bytes, then image-size bytes taken
// from byte 40 of the block on. Whatever follows the 40 bytes (colour masks, a colour
// table, the rest of a larger header) is copied as pixel bytes and the header-size
// field keeps its clipboard value: pasted pictures have always come out this way.
// An image size of 0 gives the 54 header bytes alone. A block shorter than 40 bytes,
// one whose image size says more bytes than follow its 40 header bytes, or one whose
// width and height exceed imagelimits::kMaxPixels gives an empty result (no image):
// the result never holds more than the block plus the 54 header bytes, and never
// makes the image reader allocate more than the bound.
std::vector<unsigned char> bmpFileFromClipboardBlock(const unsigned char *block, std::size_t blockSize);

// Bit depth and colour-table size of the DIB the clipboard writer makes from a
// bitmap with the given bits per pixel.
struct DibFormat
{
    std::uint16_t bitCount;
    std::uint32_t colourTableSize;
};
DibFormat dibFormatFor(unsigned bitsPerPixel);

// Bytes of pixel data of a bottom-up DIB: rows padded to 32 bits.
std::uint32_t dibImageSize(std::uint16_t bitCount, std::int32_t width, std::int32_t height);

// The header the clipboard writer starts from: size 40, planes 1, no compression,
// the bit count chosen by dibFormatFor and every other field 0.
InfoHeader infoHeaderForBitmap(std::int32_t width, std::int32_t height, unsigned bitsPerPixel);

} // namespace dib
