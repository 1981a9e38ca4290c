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
    // A section's list must name real functions, or their fixture part would be left
    // out without a word.
    QStringList listed = pasteFunctions;
#ifdef Q_OS_WIN
    listed << shotClipboardFunctions;
#endif
    for (const QString &name : listed)
        QVERIFY2(metaObject()->indexOfSlot(qPrintable(name + "()")) >= 0, qPrintable(name));
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
#ifdef Q_OS_WIN
    pattern.reset();
    if (running(shotClipboardFunctions))
        showPattern();
#endif
    if (running(pasteFunctions))
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
