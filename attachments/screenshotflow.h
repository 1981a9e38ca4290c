#pragma once

class QString;

// Milliseconds to wait before a screen shot, from the text of the delay field
// (whole seconds): 0, empty or not a number wait 2 s, and the wait is capped at one
// minute even for a value that was never clamped. A negative value, which only a
// hand-edited settings file can bring, waits for nothing.
int screenShotDelayMs(const QString &delayText);
