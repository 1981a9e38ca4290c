// The window's move and resize handlers, which keep the geometry that is saved: what
// they record, what they leave alone, and the pinned window of the screen-shot flow.
#include "windowsettingstests.h"

#include "windowsettings.h"

#include <QApplication>
#include <QMoveEvent>
#include <QResizeEvent>
#include <QWindow>
#include <QtTest>

#include <memory>

using namespace settingsfiles;

namespace {

// A shown window whose loaded geometry is exactly the one it is shown with, so that
// showing it changes nothing and every later change is the test's own.
std::unique_ptr<MainWindow> settledWindow()
{
    QRect shown;
    {
        MainWindow probe;
        probe.show();
        if (!QTest::qWaitForWindowExposed(&probe, kEventWaitMs))
            return nullptr;
        QTest::qWait(50);
        shown = QRect(QPoint(150, 100), probe.size());
    }
    removeAll();
    // "Remember My Information" as the form has it: unchecking it would count as a change.
    writeApplicationGroup(newFile(),
                          {{"window_pos", shown.topLeft()}, {"window_size", shown.size()}, {"remember_me", true}});
    auto window = std::make_unique<MainWindow>();
    window->show();
    if (!QTest::qWaitForWindowExposed(window.get(), kEventWaitMs))
        return nullptr;
    QTest::qWait(50);
    return window;
}

void sendMove(MainWindow &window, const QPoint &to, bool *accepted = nullptr)
{
    QMoveEvent event(to, window.pos());
    QCoreApplication::sendEvent(&window, &event);
    if (accepted)
        *accepted = event.isAccepted();
}

} // namespace

// Reported moves, as the window system sends them, on a window not yet shown.
void WindowSettingsTests::moveRecordsThePosition()
{
    MainWindow window;
    QCOMPARE(MainWindowProbe::savedPos(window), QPoint(40, 65));
    bool accepted = false;
    sendMove(window, QPoint(120, 80), &accepted);
    QVERIFY(accepted);
    QCOMPARE(MainWindowProbe::savedPos(window), QPoint(120, 80));
    QVERIFY(MainWindowProbe::settingsModified(window));
}

void WindowSettingsTests::moveToTheSamePlaceChangesNothing()
{
    MainWindow window;
    sendMove(window, QPoint(40, 65));
    QCOMPARE(MainWindowProbe::savedPos(window), QPoint(40, 65));
    QVERIFY(!MainWindowProbe::settingsModified(window));
}

void WindowSettingsTests::moveToTheOriginIsNotRecorded()
{
    MainWindow window;
    bool accepted = false;
    sendMove(window, QPoint(0, 0), &accepted);
    QVERIFY(accepted); // passed on to the base handler
    QCOMPARE(MainWindowProbe::savedPos(window), QPoint(40, 65));
    QVERIFY(!MainWindowProbe::settingsModified(window));
}

void WindowSettingsTests::movesOnOneAxisToZeroAreRecorded()
{
    MainWindow window;
    sendMove(window, QPoint(0, 30));
    QCOMPARE(MainWindowProbe::savedPos(window), QPoint(0, 30));
    QVERIFY(MainWindowProbe::settingsModified(window));
}

void WindowSettingsTests::negativeMovesAreRecordedAsTheyCome()
{
    MainWindow window;
    sendMove(window, QPoint(-20, 10));
    QCOMPARE(MainWindowProbe::savedPos(window), QPoint(-20, 10)); // brought back only at the next load
    QVERIFY(MainWindowProbe::settingsModified(window));
}

void WindowSettingsTests::resizeRecordsTheSize()
{
    MainWindow window;
    QResizeEvent same(QSize(720, 470), QSize(720, 470));
    QCoreApplication::sendEvent(&window, &same);
    QVERIFY(!MainWindowProbe::settingsModified(window));
    QResizeEvent larger(QSize(900, 600), QSize(720, 470));
    QCoreApplication::sendEvent(&window, &larger);
    QCOMPARE(MainWindowProbe::savedSize(window), QSize(900, 600));
    QVERIFY(MainWindowProbe::settingsModified(window));
}

// The same rules on a shown window, moved and resized for real. move() places the
// frame, and the window reports the frame's position.
void WindowSettingsTests::realMovesAndResizes()
{
    const std::unique_ptr<MainWindow> window = settledWindow();
    QVERIFY(window);
    const QSize size = window->size();
    QCOMPARE(MainWindowProbe::savedPos(*window), QPoint(150, 100));
    QCOMPARE(MainWindowProbe::savedSize(*window), size);
    QVERIFY(!MainWindowProbe::settingsModified(*window));

    // Placed at the origin: not recorded.
    window->move(0, 0);
    QTest::qWait(50);
    QCOMPARE(window->pos(), QPoint(0, 0));
    QCOMPARE(MainWindowProbe::savedPos(*window), QPoint(150, 100));
    QVERIFY(!MainWindowProbe::settingsModified(*window));

    window->move(210, 130);
    QTRY_COMPARE(MainWindowProbe::savedPos(*window), QPoint(210, 130));
    QCOMPARE(window->pos(), QPoint(210, 130));
    QVERIFY(MainWindowProbe::settingsModified(*window));

    // Back to the origin: the last recorded place stays.
    window->move(0, 0);
    QTest::qWait(50);
    QCOMPARE(MainWindowProbe::savedPos(*window), QPoint(210, 130));

    window->resize(size + QSize(30, 20));
    QTRY_COMPARE(MainWindowProbe::savedSize(*window), size + QSize(30, 20));
    QCOMPARE(window->size(), size + QSize(30, 20));
}

void WindowSettingsTests::pinnedWindowSnapsBack()
{
    const std::unique_ptr<MainWindow> window = settledWindow();
    QVERIFY(window);
    const QRect recorded(QPoint(150, 100), window->size());
    QCOMPARE(window->geometry(), recorded);

    MainWindowProbe::setGeometryPinned(*window, true);
    window->move(320, 240);
    QTest::qWait(50);
    QCOMPARE(window->geometry(), recorded);
    QCOMPARE(MainWindowProbe::savedPos(*window), recorded.topLeft());
    QVERIFY(!MainWindowProbe::settingsModified(*window));

    // A reported move is ignored and undone, even to the origin.
    bool accepted = true;
    sendMove(*window, QPoint(0, 0), &accepted);
    QVERIFY(!accepted);
    QCOMPARE(window->geometry(), recorded);
    QVERIFY(!MainWindowProbe::settingsModified(*window));

    // Unpinned, it moves and records again.
    MainWindowProbe::setGeometryPinned(*window, false);
    window->move(320, 240);
    QTRY_COMPARE(MainWindowProbe::savedPos(*window), QPoint(320, 240));
    QCOMPARE(window->pos(), QPoint(320, 240));
    QVERIFY(MainWindowProbe::settingsModified(*window));
}

void WindowSettingsTests::pinnedWindowTakesBackItsRecordedSizeToo()
{
    MainWindow window;
    MainWindowProbe::setGeometryPinned(window, true);
    sendMove(window, QPoint(300, 300));
    // The geometry is set from what was recorded: position and size.
    QCOMPARE(window.geometry(), QRect(40, 65, 720, 470));
    QCOMPARE(MainWindowProbe::savedPos(window), QPoint(40, 65));
    QVERIFY(!MainWindowProbe::settingsModified(window));
}

// What the handlers recorded is what the next run starts from.
void WindowSettingsTests::recordedGeometryIsSaved()
{
    {
        MainWindow window;
        sendMove(window, QPoint(77, 88));
        QResizeEvent resize(QSize(999, 555), QSize(720, 470));
        QCoreApplication::sendEvent(&window, &resize);
    }
    QCOMPARE(QSettings(newFile(), QSettings::IniFormat).value("application/window_pos"), QVariant(QPoint(77, 88)));
    QVERIFY(bytes(newFile()).contains(iniLines("\nwindow_pos=@Point(77 88)\nwindow_size=@Size(999 555)\n")));
    MainWindow window;
    QCOMPARE(window.geometry(), QRect(77, 88, 999, 555));
}
