#pragma once

// The Windows paste's detour: the BMP bytes made from the clipboard block are written
// to a temporary file, QImage loads it guessing the format from the content, and the
// file is removed again. Kept apart from the Win32 calls so that it runs everywhere.

#include <vector>

class QDir;
class QImage;
class QString;

// "<folder>/{uuid}.bmp" with native separators; a fresh name on every call.
QString temporaryBmpPath(const QDir &folder);

// Writes the bytes to a temporary file in the folder, loads it into image and removes
// it. True when the image was loaded; false too when the file could not be written.
bool loadBmpThroughFile(const std::vector<unsigned char> &bmpFile, const QDir &folder, QImage &image);
