#pragma once

#include <QPoint>
#include <QSize>

// Top-left corner that centres a window of the given size on a screen of the given
// size. The halves are arithmetic shifts, so a window larger than the screen gets a
// negative position rounded down (half the overflow).
QPoint centredPosition(const QSize &screenSize, const QSize &windowSize);

// The whole program run: application object, translators, the window, the event loop.
int runFeedbackAgent(int argc, char **argv);
