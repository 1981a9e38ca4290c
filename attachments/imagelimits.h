#pragma once

// The largest picture the program takes from the clipboard, where any program can put
// anything: 2^27 pixels, 512 MiB at 32 bits per pixel, more than four 8K screens side
// by side. A header that claims more is not decoded at all, so a few bytes cannot make
// the program allocate gigabytes. Plain C++, shared by the Windows and the Qt paste.

#include <cstdint>

namespace imagelimits {

constexpr std::int64_t kMaxPixels = std::int64_t(1) << 27;

// Whether a picture of width x height pixels is within the bound. Either may be
// negative (a DIB's height is, for a top-down picture); the sizes count.
constexpr bool withinPixelBound(std::int64_t width, std::int64_t height)
{
    const std::int64_t w = width < 0 ? -width : width;
    const std::int64_t h = height < 0 ? -height : height;
    return h == 0 || w <= kMaxPixels / h;
}

} // namespace imagelimits
