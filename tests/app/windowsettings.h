#pragma once

// The settings files (settingsfiles.h) with the window's widgets, for the window's
// settings tests.
#include "form/mainwindow.h"
#include "settingsfiles.h"
#include "support/mainwindowprobe.h"

namespace settingsfiles {

template <typename T>
T *widget(const MainWindow &window, const char *objectName)
{
    T *found = MainWindowProbe::widget<T>(window, objectName);
    if (!found)
        qFatal("no widget %s", objectName);
    return found;
}

} // namespace settingsfiles
