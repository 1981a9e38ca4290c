// The attachment tests on a real window system: the fixture and main. The functions
// are in screenshotclipboard_win.cpp (Windows only) and clipboardpaste.cpp.
#include "attachmentswindowx11tests.h"
#include "overlaywatcher.h"
#include "support/testenv.h"

#include <QApplication>
#include <QtTest>

namespace {

#ifdef Q_OS_WIN
const char kPlatform[] = "windows";
#else
const char kPlatform[] = "xcb";
#endif

} // namespace

void AttachmentsWindowX11Tests::initTestCase()
{
    QCOMPARE(QGuiApplication::platformName(), QString(kPlatform));
}

void AttachmentsWindowX11Tests::init()
{
    // A failed init skips cleanup: only one window may hold the guard, and the pattern
    // is for its own function alone.
    window.reset();
    const QByteArray group = currentTestTag(*this);
#ifdef Q_OS_WIN
    pattern.reset();
    if (group == "SHOT_CLIPBOARD_TEST")
        showPattern();
#endif
    if (group == "PASTE_TEST")
        openPasteWindow();
}

void AttachmentsWindowX11Tests::cleanup()
{
    window.reset();
    xclip.stopServing();
#ifdef Q_OS_WIN
    pattern.reset();
#endif
}

FB_TEST_MAIN(AttachmentsWindowX11Tests)
