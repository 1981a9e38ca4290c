// The report window's checks on a real window system; the groups are in
// formwindow_focus.cpp and formwindow_keyboard.cpp.
#include "formwindowx11tests.h"

#include "support/testenv.h"

#include <QApplication>
#include <QtTest>

#ifndef Q_OS_WIN
#include "support/privateresolver.h"
#endif

// Every function starts from a first run. The keyboard report's work folder, receiver
// and window (SubmitTestState) are made ready and dropped around every function; the
// focus checks leave them unused.
void FormWindowX11Tests::init()
{
    TestEnvironment::instance().forgetSettings();
#ifndef Q_OS_WIN
    beginTest(QStringLiteral("keyboard"));
#endif
}

void FormWindowX11Tests::cleanup()
{
#ifndef Q_OS_WIN
    endTest();
#endif
}

// The keyboard report's address is answered from the test's own hosts file, which must
// be in place before any thread exists; the focus checks look nothing up.
#ifdef Q_OS_WIN
FB_TEST_MAIN(FormWindowX11Tests)
#else
FB_TEST_MAIN_PRIVATE_RESOLVER(FormWindowX11Tests, PrivateResolver::HostsFile)
#endif
