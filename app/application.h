#pragma once

// The whole program run: application object, translators, the window, the event loop.
int runFeedbackAgent(int argc, char **argv);
