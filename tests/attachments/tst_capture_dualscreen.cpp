// Two monitors side by side: the screen under the pointer is grabbed and the overlay
// covers that screen, wherever the main window is. On X: Xephyr with two Xinerama
// screens (run-under-xephyr.sh). On Windows: Wine on a private X server with two
// monitors of different sizes (run-wine-on-two-monitors.sh).
#include "attachments/screenshot.h"
#include "capturetesting.h"
#include "form/mainwindow.h"
#include "overlaywatcher.h"
#include "realinput.h"
#include "support/mainwindowprobe.h"
#include "support/modalanswerer.h"
#include "support/testenv.h"

#include <QApplication>
#include <QFileInfo>
#include <QPushButton>
#include <QScreen>
#include <QTreeWidget>
#include <QtTest>

using namespace CaptureTesting;

namespace {

#ifdef Q_OS_WIN
const QRect kLeft(0, 0, 1920, 1200);
const QRect kRight(1920, 0, 1280, 1024);
#else
const QRect kLeft(0, 0, 800, 600);
const QRect kRight(800, 0, 800, 600);
#endif

} // namespace

class TestCaptureDualScreen : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<MainWindow> window;

    void showWindowOnTheLeft()
    {
        window = std::make_unique<MainWindow>();
        window->move(20, 20);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get(), kEventWaitMs));
        QVERIFY(QTest::qWaitFor([&] { return window->windowHandle()->screen() == QGuiApplication::screens().at(0); },
                                kEventWaitMs));
    }

    void takeScreenShot()
    {
        MainWindowProbe::widget<QPushButton>(*window, "button_Screen_Shot")->click();
        QVERIFY(QTest::qWaitFor([&] { return !MainWindowProbe::geometryPinned(*window); }, kEventWaitMs));
    }

private slots:
    void initTestCase()
    {
        const QList<QScreen *> screens = QGuiApplication::screens();
        QCOMPARE(screens.size(), 2);
        QCOMPARE(screens.at(0)->geometry(), kLeft);
        QCOMPARE(screens.at(1)->geometry(), kRight);
        const QString pattern = showPatternOnScreens();
        QVERIFY2(pattern.isEmpty(), qPrintable(pattern));
    }

    void cleanup() { window.reset(); }

    void screenUnderThePointerIsGrabbed_data()
    {
        QTest::addColumn<QPoint>("pointer");
        QTest::addColumn<int>("screen");
        QTest::addColumn<QRect>("selection"); // global; dragged from top-left to bottom-right + (1, 1)
        QTest::addColumn<QString>("name");
        QTest::newRow("second screen, window on the first")
            << kRight.topLeft() + QPoint(400, 300) << 1 << QRect(kRight.topLeft() + QPoint(100, 100), QSize(200, 150))
            << "second screen";
        QTest::newRow("first screen") << QPoint(700, 500) << 0 << QRect(700, 500, 60, 60) << "first screen";
    }

    void screenUnderThePointerIsGrabbed()
    {
        QFETCH(QPoint, pointer);
        QFETCH(int, screen);
        QFETCH(QRect, selection);
        QFETCH(QString, name);
        showWindowOnTheLeft();
        QVERIFY(RealInput().moveTo(pointer).run());
        ModalAnswerer answerer;
        answerer.enterText(name);
        const QPoint from = selection.topLeft();
        const QPoint to = selection.bottomRight() + QPoint(1, 1);
        OverlayWatcher watcher(
            [from, to](ScreenShot *) { RealInput().moveTo(from).press().moveTo(to).release().run(); });
        takeScreenShot();
        QVERIFY(watcher.fired());
        QVERIFY(!watcher.rescued);
        const QRect covered = screen == 0 ? kLeft : kRight;
        QCOMPARE(watcher.screen, QGuiApplication::screens().at(screen));
        QCOMPARE(watcher.geometry, covered);
        QCOMPARE(watcher.origin, covered.topLeft());
        QVERIFY(watcher.fullScreen);
        QCOMPARE(patternMismatch(watcher.background.toImage(), covered), QString());

        QTreeWidget *tree = MainWindowProbe::widget<QTreeWidget>(*window, "tree_Attachments");
        QCOMPARE(tree->topLevelItemCount(), 1);
        const QString saved = tree->topLevelItem(0)->data(1, Qt::UserRole).toString();
        QCOMPARE(QFileInfo(saved).fileName(), QString(name).replace(' ', '_') + ".png");
        QCOMPARE(patternMismatch(QImage(saved), selection), QString());
    }
};

FB_TEST_MAIN(TestCaptureDualScreen)
#include "tst_capture_dualscreen.moc"
