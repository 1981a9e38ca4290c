#pragma once

// The first time a widget needs a font's metrics, Qt reads the system's font
// configuration and lists every installed font: 10 to 15 ms here, on the way to the
// first window. A helper thread does that while the form is being built, on another
// core; its destructor waits for it. QFontDatabase is thread-safe. Font engines are
// kept per thread, so what carries over is the shared database and the fallback lists
// of the families named, which the system may lack.
#include <QStringList>

#include <thread>

class FontWarmUp
{
public:
    explicit FontWarmUp(const QStringList &families);
    ~FontWarmUp();
    FontWarmUp(const FontWarmUp &) = delete;
    FontWarmUp &operator=(const FontWarmUp &) = delete;

private:
    std::thread worker;
};
