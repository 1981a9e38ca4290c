#pragma once

#include <QPoint>
#include <QSize>

// Top-left corner that centres a window of the given size on a screen of the given
// size. The halves are arithmetic shifts, so a window larger than the screen gets a
// negative position rounded down (half the overflow).
QPoint centredPosition(const QSize &screenSize, const QSize &windowSize);

// What the application object must know before it exists: scale with the screen, as
// the system sets it (on Windows 125 % and 150 % as they are, not rounded to whole
// factors), with pictures drawn for the screen's pixels. The tests set the same.
void setHighDpiAttributes();
