#pragma once

// A picture on the clipboard for the paste checks: on Windows put there as another
// program puts it (a CF_DIB, for as long as this object lives), elsewhere through
// QClipboard.
#include "attachments/attachmentcheck.h"
#ifdef Q_OS_WIN
#include "attachments/winclipboard.h"
#endif

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>

class ClipboardPicture
{
public:
    explicit ClipboardPicture(const QImage &picture)
    {
#ifdef Q_OS_WIN
        m_ok = m_peer.serve(attachmentcheck::pngOf(picture), "image/png");
#else
        QGuiApplication::clipboard()->setImage(picture);
        m_ok = true;
#endif
    }

    bool ok() const
    {
        return m_ok;
    }

private:
#ifdef Q_OS_WIN
    WinClipboard m_peer;
#endif
    bool m_ok = false;
};
