#pragma once

// The Win32 side of the clipboard: reading a device-independent bitmap and putting a
// bitmap on the clipboard as one. Plain C++ on the Windows API, no Qt, so that it is
// also built on its own with MinGW and checked under Wine (tools/wineclip/).

#ifdef _WIN32

#include <windows.h>

#include <vector>

// Reads the clipboard's bitmap (CF_DIB, else CF_DIBV5; a lone CF_BITMAP is served
// through the CF_DIB the system makes from it) and turns the locked block into the
// bytes of a BMP file, see dib::bmpFileFromClipboardBlock. The clipboard is opened
// and closed within the call. False when there is no bitmap, the clipboard cannot be
// opened or the block cannot be locked.
bool readClipboardBmp(std::vector<unsigned char> &bmpFile);

// Puts the bitmap on the clipboard as CF_DIB (1, 4, 8 or 24 bits per pixel), owned by
// the given window. True when a block was handed to the clipboard. The clipboard is
// emptied even when no block can be made. The caller keeps the bitmap.
bool copy_bitmap_to_clipboard(HWND owner, HBITMAP bitmap);

#endif
