// The attachment tests on a real window system: the fixture and main. The functions
// are in screenshotflow_x11.cpp (X only), screenshotclipboard_win.cpp (Windows only)
// and clipboardpaste.cpp.
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
#ifndef Q_OS_WIN
    // The flow's checks of the X server and window manager, and the pattern on the root
    // window; the paste functions neither grab the screen nor use the pointer.
    prepareScreen();
#endif
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
#else
    // The flow ends with its overlay gone; no other function here opens one.
    QVERIFY(!OverlayWatcher::findOverlay());
#endif
}

FB_TEST_MAIN(AttachmentsWindowX11Tests)
