#pragma once

// The build number and date that the window title shows; the Windows executable's
// version resource (resources/feedbackagent.rc) reads them too, so this header is
// plain preprocessor text that both C++ and the resource compiler understand.
#define FB_BUILD_NUMBER 3126
#define FB_BUILD_NUMBER_TEXT "3126"
#define FB_BUILD_DATE_TEXT "21-Jun-2019"
