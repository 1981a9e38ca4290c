#pragma once

// Ends the process with `status` once the program is done with it, after flushing
// the standard streams. On Windows the libraries' unload code is skipped: it runs
// after every other thread has been killed wherever it was (the diagnostics provider
// leaves threads of its own behind, such as Direct3D's), and may then wait for ever
// for a lock that one of them held. Elsewhere this is an ordinary exit.
[[noreturn]] void endProcess(int status);
