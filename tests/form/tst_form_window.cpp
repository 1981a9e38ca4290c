// The report window's in-process checks; the groups are in the formwindow_*.cpp files.
#include "formwindowtests.h"

#include "form/formwidgets.h"
#include "support/testenv.h"

#include <QAccessible>
#include <QApplication>
#include <QtTest>

// Every function starts from a first run, and none depends on another.
void FormWindowTests::init()
{
    TestEnvironment::instance().forgetSettings();
    const QByteArray group = currentTestTag(*this);
    if (group == "CONSTRUCTOR_TEST")
        QVERIFY(openWindow(Kind::Constructor));
    else if (group == "ACCESSIBILITY_TEST")
        QVERIFY(openWindow(Kind::Accessibility));
}

void FormWindowTests::cleanup()
{
    closeWindow();
}

// The window of a group as on a first run. The accessibility checks need it shown and
// active, with Qt's accessibility layer on for as long as it lives.
bool FormWindowTests::openWindow(Kind group)
{
    kind = group;
    if (group == Kind::Accessibility)
        QAccessible::setActive(true);
    window = new MainWindow;
    if (group == Kind::Constructor)
        return MainWindowProbe::instanceGuardListening(*window);
    window->show();
    f = new FormWidgets(*window);
    return QTest::qWaitForWindowActive(window, kEventWaitMs);
}

void FormWindowTests::closeWindow()
{
    delete f;
    f = nullptr;
    delete window;
    window = nullptr;
    if (kind == Kind::Accessibility)
        QAccessible::setActive(false);
    kind = Kind::None;
}

FB_TEST_MAIN(FormWindowTests)
