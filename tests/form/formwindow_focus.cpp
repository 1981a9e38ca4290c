// Keyboard focus on a real X server: where a tab change puts it, and what leaving the
// title field does to the title history.
#include "formwindowx11tests.h"

#include "form/formwidgets.h"
#include "form/mainwindow.h"
#include "support/mainwindowprobe.h"
#include "support/testenv.h"

#include <QApplication>
#include <QTabBar>
#include <QtTest>

namespace {

void clickTab(FormWidgets &f, int index)
{
    QTabBar *bar = f.tabs->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(index).center());
}

QString focusName()
{
    QWidget *focus = QApplication::focusWidget();
    return focus ? focus->objectName() : QStringLiteral("(none)");
}

} // namespace

void FormWindowX11Tests::tabChangeMovesFocusIntoTheTab()
{
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window, kEventWaitMs));
    FormWidgets f(window);
    QTest::mouseClick(f.bug, Qt::LeftButton);
    f.cancel->setFocus();
    QTRY_COMPARE(focusName(), QString("button_Cancel"));

    const QList<QPair<int, QString>> expected = {
        {1, "line_Name"}, {2, "list_Area"}, {3, "combo_Title"}, {4, "button_Attach_File"}};
    for (const auto &step : expected) {
        clickTab(f, step.first);
        QCOMPARE(f.tabs->currentIndex(), step.first);
        QCOMPARE(focusName(), step.second);
    }

    // The Introduction tab has nothing to focus: the focus stays where it was.
    f.cancel->setFocus();
    QTRY_COMPARE(focusName(), QString("button_Cancel"));
    clickTab(f, 0);
    QCOMPARE(f.tabs->currentIndex(), 0);
    QCOMPARE(focusName(), QString("button_Cancel"));

    // The proxy group sits in the locked settings frame; once unlocked it takes the focus.
    clickTab(f, 5);
    QTest::mouseClick(f.find<QCheckBox>("check_Settings"), Qt::LeftButton);
    QVERIFY(f.find<QFrame>("frame_Settings")->isVisible());
    clickTab(f, 4);
    QCOMPARE(focusName(), QString("button_Attach_File"));
    clickTab(f, 5);
    QCOMPARE(focusName(), QString("group_Proxy_Settings"));
}

// Leaving the title field with Tab finishes the edit as Return does.
void FormWindowX11Tests::leavingTheTitleFieldAddsItToTheHistory()
{
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window, kEventWaitMs));
    FormWidgets f(window);
    f.title->addItem(QStringLiteral("Crash on save"));
    QTest::mouseClick(f.feature, Qt::LeftButton);
    clickTab(f, 3);
    QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget *>(f.title));
    f.title->lineEdit()->clear();
    QTest::keyClicks(QApplication::focusWidget(), "crash on save");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget *>(f.description));
    QCOMPARE(f.title->itemText(0), QString("crash on save"));
    QCOMPARE(f.title->itemText(1), QString("Crash on save"));
    QCOMPARE(f.title->count(), 2);
    QCOMPARE(f.title->currentText(), QString("crash on save"));
    QVERIFY(MainWindowProbe::settingsModified(window));
}
