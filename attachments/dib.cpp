#include "attachments/dib.h"

#include "attachments/imagelimits.h"

#include <algorithm>

namespace dib {

namespace {

std::uint32_t get32(const unsigned char *p)
{
    return std::uint32_t(p[0]) | std::uint32_t(p[1]) << 8 | std::uint32_t(p[2]) << 16 | std::uint32_t(p[3]) << 24;
}

std::uint16_t get16(const unsigned char *p)
{
    return std::uint16_t(p[0] | p[1] << 8);
}

unsigned char *put32(unsigned char *p, std::uint32_t value)
{
    for (int i = 0; i < 4; ++i)
        *p++ = static_cast<unsigned char>(value >> (8 * i));
    return p;
}

unsigned char *put16(unsigned char *p, std::uint16_t value)
{
    *p++ = static_cast<unsigned char>(value);
    *p++ = static_cast<unsigned char>(value >> 8);
    return p;
}

} // namespace

bool readInfoHeader(const unsigned char *block, std::size_t blockSize, InfoHeader &header)
{
    if (!block || blockSize < kInfoHeaderSize)
        return false;
    header.size = get32(block);
    header.width = static_cast<std::int32_t>(get32(block + 4));
    header.height = static_cast<std::int32_t>(get32(block + 8));
    header.planes = get16(block + 12);
    header.bitCount = get16(block + 14);
    header.compression = get32(block + 16);
    header.sizeImage = get32(block + 20);
    header.xPelsPerMeter = static_cast<std::int32_t>(get32(block + 24));
    header.yPelsPerMeter = static_cast<std::int32_t>(get32(block + 28));
    header.clrUsed = get32(block + 32);
    header.clrImportant = get32(block + 36);
    return true;
}

void writeInfoHeader(const InfoHeader &header, unsigned char *out)
{
    out = put32(out, header.size);
    out = put32(out, static_cast<std::uint32_t>(header.width));
    out = put32(out, static_cast<std::uint32_t>(header.height));
    out = put16(out, header.planes);
    out = put16(out, header.bitCount);
    out = put32(out, header.compression);
    out = put32(out, header.sizeImage);
    out = put32(out, static_cast<std::uint32_t>(header.xPelsPerMeter));
    out = put32(out, static_cast<std::uint32_t>(header.yPelsPerMeter));
    out = put32(out, header.clrUsed);
    put32(out, header.clrImportant);
}

std::vector<unsigned char> bmpFileFromClipboardBlock(const unsigned char *block, std::size_t blockSize)
{
    InfoHeader header;
    if (!readInfoHeader(block, blockSize, header))
        return {};
    // Any program can put a block on the clipboard: its image-size field must not make
    // us allocate or write more than the block holds, nor its width and height make
    // the image reader allocate a picture larger than any screen.
    if (header.sizeImage > blockSize - kInfoHeaderSize || !imagelimits::withinPixelBound(header.width, header.height))
        return {};

    std::vector<unsigned char> file(kBmpHeadersSize + std::size_t(header.sizeImage), 0);
    unsigned char *out = file.data();
    out = put16(out, kBmpFileType);
    out = put32(out, header.sizeImage + std::uint32_t(kBmpHeadersSize));
    out = put32(out, 0); // two reserved words
    out = put32(out, std::uint32_t(kBmpHeadersSize));
    writeInfoHeader(header, out);

    // The pixel bytes start right after the 40 bytes, whatever the header size says.
    std::copy_n(block + kInfoHeaderSize, header.sizeImage, file.begin() + kBmpHeadersSize);
    return file;
}

DibFormat dibFormatFor(unsigned bitsPerPixel)
{
    if (bitsPerPixel <= 1)
        return {1, 8};
    if (bitsPerPixel <= 4)
        return {4, 64};
    if (bitsPerPixel <= 8)
        return {8, 1024};
    return {24, 0};
}

std::uint32_t dibImageSize(std::uint16_t bitCount, std::int32_t width, std::int32_t height)
{
    const std::int64_t rowBits = (std::int64_t(bitCount) * width + 31) & ~std::int64_t(31);
    return static_cast<std::uint32_t>(rowBits / 8 * height);
}

InfoHeader infoHeaderForBitmap(std::int32_t width, std::int32_t height, unsigned bitsPerPixel)
{
    InfoHeader header;
    header.size = std::uint32_t(kInfoHeaderSize);
    header.width = width;
    header.height = height;
    header.planes = 1;
    header.bitCount = dibFormatFor(bitsPerPixel).bitCount;
    return header;
}

} // namespace dib
