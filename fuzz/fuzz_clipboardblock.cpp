// Fuzzes the clipboard reader's byte arithmetic: any bytes as a locked CF_DIB block,
// through the same function the Windows paste calls. Besides the sanitizers (and the
// lane's memory limits, which make a size bomb fail), the result must be either no
// image or a BMP file whose length agrees with its own file-size field and with the
// block: 54 header bytes plus at most what followed the block's 40 header bytes.
#include "attachments/dib.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

[[noreturn]] void fail(const char *what)
{
    std::fprintf(stderr, "clipboard block: %s\n", what);
    std::abort();
}

std::uint32_t get32(const unsigned char *p)
{
    std::uint32_t value;
    std::memcpy(&value, p, 4);
    return value; // little-endian host, as the clipboard's
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::vector<unsigned char> file = dib::bmpFileFromClipboardBlock(data, size);
    if (file.empty())
        return 0;
    if (size < dib::kInfoHeaderSize)
        fail("a file from a block shorter than its header");
    if (file.size() < dib::kBmpHeadersSize)
        fail("a file shorter than its headers");
    if (file.size() > dib::kBmpHeadersSize + (size - dib::kInfoHeaderSize))
        fail("a file longer than the block plus the file header");
    if (file[0] != 'B' || file[1] != 'M')
        fail("no BM file type");
    if (get32(file.data() + 2) != file.size())
        fail("file-size field differs from the file's length");
    if (get32(file.data() + 10) != dib::kBmpHeadersSize)
        fail("pixel offset is not 54");
    if (std::memcmp(file.data() + dib::kFileHeaderSize, data, dib::kInfoHeaderSize) != 0)
        fail("the 40 header bytes are not the block's");
    if (std::memcmp(file.data() + dib::kBmpHeadersSize, data + dib::kInfoHeaderSize, file.size() - dib::kBmpHeadersSize)
        != 0)
        fail("pixel bytes are not the block's bytes from byte 40 on");
    return 0;
}
