// The report window's in-process checks; the groups are in the formwindow_*.cpp files.
#include "formwindowtests.h"

#include "form/formwidgets.h"
#include "support/testenv.h"

#include <QAccessible>
#include <QApplication>
#include <QtTest>

// Every function starts from a first run: windows read the settings file only as they
// are made, so forgetting it under a shared window changes nothing for that window.
void FormWindowTests::init()
{
    TestEnvironment::instance().forgetSettings();
    // The constructor and accessibility groups go on with their group's window; the
    // state and navigation functions make windows of their own, so no shared window may
    // be left for them, whatever order a run names the functions in.
    const QByteArray group = currentTestTag(*this);
    if (group == "CONSTRUCTOR_TEST")
        QVERIFY(sharedWindow(Shared::Constructor));
    else if (group == "ACCESSIBILITY_TEST")
        QVERIFY(sharedWindow(Shared::Accessibility));
    else
        closeSharedWindow();
}

void FormWindowTests::cleanupTestCase()
{
    closeSharedWindow();
}

// The window of a group, made as on a first run before the group's first function. The
// constructor checks look at it as built and show it last; the accessibility checks
// need it shown and active, with Qt's accessibility layer on for as long as it lives.
bool FormWindowTests::sharedWindow(Shared group)
{
    if (shared == group)
        return sharedWindowReady;
    closeSharedWindow();
    shared = group;
    if (group == Shared::Accessibility)
        QAccessible::setActive(true);
    TestEnvironment::instance().forgetSettings();
    window = new MainWindow;
    if (group == Shared::Constructor) {
        sharedWindowReady = MainWindowProbe::instanceGuardListening(*window);
    } else {
        window->show();
        sharedWindowReady = QTest::qWaitForWindowActive(window, kEventWaitMs);
        f = new FormWidgets(*window);
    }
    return sharedWindowReady;
}

void FormWindowTests::closeSharedWindow()
{
    delete f;
    f = nullptr;
    delete window;
    window = nullptr;
    if (shared == Shared::Accessibility)
        QAccessible::setActive(false);
    shared = Shared::None;
    sharedWindowReady = false;
}

FB_TEST_MAIN(FormWindowTests)
