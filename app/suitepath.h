#pragma once

// Folder query of the suite's tools library. Returns the UTF-8 path of a suite folder,
// without a trailing separator, or an empty string for an unknown kind. The pointer
// stays valid on the calling thread until that thread's next call.
//   kind 10: the user's suite settings folder
//   kind  2: a writable folder for temporary files
const char *SuitePath(int kind);

enum SuiteFolder { SuiteTempFolder = 2, SuiteSettingsFolder = 10 };
