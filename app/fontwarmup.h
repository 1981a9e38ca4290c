#pragma once

// The first time a widget needs a font's metrics, Qt reads the system's font
// configuration and lists every installed font: 10 to 15 ms with fontconfig, on the way
// to the first window. On Linux a helper thread does that while the form is being built,
// on another core; its destructor waits for it. Font engines are kept per thread, so
// what carries over is the shared database and the fallback lists of the families
// named, which the system may lack. On Windows it does nothing: filling Qt's Windows
// font database from a second thread while the GUI thread uses it corrupted the heap
// (seen under Wine), so there fonts are read where they are first needed.
#include <QStringList>
#include <QtGlobal>

#include <thread>

class FontWarmUp
{
public:
    explicit FontWarmUp(const QStringList &families);
    ~FontWarmUp();
    FontWarmUp(const FontWarmUp &) = delete;
    FontWarmUp &operator=(const FontWarmUp &) = delete;

private:
#ifndef Q_OS_WIN
    std::thread worker;
#endif
};
