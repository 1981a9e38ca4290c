#pragma once

// Registers the images compiled into the program library. A static library's resource
// initialiser is otherwise dropped by the linker, so the window calls this first.
void initFeedbackResources();
