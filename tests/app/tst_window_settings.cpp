// The settings checks of tests/app/windowsettingstests.h: their main and their fixture.
#include "windowsettingstests.h"

#include "settingsfiles.h"

#include <QtTest>

void WindowSettingsTests::init()
{
    // No settings file of either kind and no thumbnail folder: the window starts as it
    // does the first time.
    settingsfiles::removeAll();
}

FB_TEST_MAIN(WindowSettingsTests)
