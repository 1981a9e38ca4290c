#pragma once

// Another program on the Windows clipboard, the counterpart of Xclip: it copies a
// picture as the device-independent bitmap (CF_DIB) that Windows programs put there,
// or a text, and types keys through the system's input queue.

#include <QByteArray>
#include <QString>

class WinClipboard
{
public:
    ~WinClipboard() { stopServing(); }

    // Puts content on the clipboard: PNG bytes (type "image/png") as a bottom-up
    // 24-bit CF_DIB built here by hand, anything else as CF_UNICODETEXT. The data is
    // the clipboard's once this returns. The third argument is Xclip's and unused.
    bool serve(const QByteArray &content, const QString &type, const QString &qtFormat = QString());

    // Empties the clipboard.
    void stopServing();

    // Ctrl+V through SendInput, as a user types it, to whichever window has the focus.
    static bool typeCtrlV();
};
