// Two monitors side by side (Xephyr with Xinerama): the screen under the pointer is
// grabbed and the overlay covers that screen, wherever the main window is.
#include "attachments/screenshot.h"
#include "capturetesting.h"
#include "form/mainwindow.h"
#include "overlaywatcher.h"
#include "support/mainwindowprobe.h"
#include "support/modalanswerer.h"
#include "support/testenv.h"

#include <QApplication>
#include <QPushButton>
#include <QScreen>
#include <QTreeWidget>
#include <QtTest>

using namespace CaptureTesting;

namespace {

const QRect kLeft(0, 0, 800, 600);
const QRect kRight(800, 0, 800, 600);

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
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        QVERIFY(QTest::qWaitFor([&] { return window->windowHandle()->screen() == QGuiApplication::screens().at(0); }));
    }

    void takeScreenShot()
    {
        MainWindowProbe::widget<QPushButton>(*window, "button_Screen_Shot")->click();
        QVERIFY(QTest::qWaitFor([&] { return !MainWindowProbe::geometryPinned(*window); }, 20000));
    }

private slots:
    void initTestCase()
    {
        const QList<QScreen *> screens = QGuiApplication::screens();
        QCOMPARE(screens.size(), 2);
        QCOMPARE(screens.at(0)->geometry(), kLeft);
        QCOMPARE(screens.at(1)->geometry(), kRight);
        QVERIFY(paintRootPattern());
    }

    void cleanup() { window.reset(); }

    void pointerOnTheSecondScreenGrabsIt()
    {
        showWindowOnTheLeft();
        QVERIFY(xdotool({"mousemove", "1200", "300"}));
        ModalAnswerer answerer;
        answerer.enterText("second screen");
        OverlayWatcher watcher([](ScreenShot *) {
            xdotool({"mousemove", "900", "100", "mousedown", "1", "mousemove", "1000", "200", "mousemove", "1100",
                     "250", "mouseup", "1"});
        });
        takeScreenShot();
        QVERIFY(watcher.fired());
        QVERIFY(!watcher.rescued);
        QCOMPARE(watcher.screen, QGuiApplication::screens().at(1));
        QCOMPARE(watcher.geometry, kRight);
        QCOMPARE(watcher.origin, kRight.topLeft());
        QVERIFY(watcher.fullScreen);
        QCOMPARE(patternMismatch(watcher.background.toImage(), kRight), QString());

        QTreeWidget *tree = MainWindowProbe::widget<QTreeWidget>(*window, "tree_Attachments");
        QCOMPARE(tree->topLevelItemCount(), 1);
        const QString saved = tree->topLevelItem(0)->data(1, Qt::UserRole).toString();
        QVERIFY(saved.endsWith("/second_screen.png"));
        QCOMPARE(patternMismatch(QImage(saved), QRect(900, 100, 200, 150)), QString());
    }

    void pointerOnTheFirstScreenGrabsIt()
    {
        showWindowOnTheLeft();
        QVERIFY(xdotool({"mousemove", "700", "500"}));
        ModalAnswerer answerer;
        answerer.enterText("first screen");
        OverlayWatcher watcher([](ScreenShot *) {
            xdotool({"mousemove", "700", "500", "mousedown", "1", "mousemove", "760", "560", "mouseup", "1"});
        });
        takeScreenShot();
        QVERIFY(watcher.fired());
        QVERIFY(!watcher.rescued);
        QCOMPARE(watcher.screen, QGuiApplication::screens().at(0));
        QCOMPARE(watcher.geometry, kLeft);
        QCOMPARE(patternMismatch(watcher.background.toImage(), kLeft), QString());
        QTreeWidget *tree = MainWindowProbe::widget<QTreeWidget>(*window, "tree_Attachments");
        QCOMPARE(tree->topLevelItemCount(), 1);
        QCOMPARE(patternMismatch(QImage(tree->topLevelItem(0)->data(1, Qt::UserRole).toString()),
                                 QRect(700, 500, 60, 60)),
                 QString());
    }
};

FB_TEST_MAIN(TestCaptureDualScreen)
#include "tst_capture_dualscreen.moc"
