// Take Screen Shot end to end on a real window system: the delay timer, the wait for
// the minimise, the grab of a known screen picture, the overlay driven with real
// pointer and key input, the name dialog, the attachment, the clipboard and the
// restored window. On X: with openbox, which iconifies; and with no window manager and
// with i3, where nothing iconifies and the flow takes the window off the screen itself
// (FB_X_WINDOW_MANAGER, as tools/run-under-x.sh reads it). On Windows: under Wine,
// whose windows openbox iconifies on the lane's X server.
#include "attachments/screenshot.h"
#include "capturetesting.h"
#include "form/mainwindow.h"
#include "overlaywatcher.h"
#include "realinput.h"
#include "support/mainwindowprobe.h"
#include "support/modalanswerer.h"
#include "support/testenv.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QFile>
#include <QInputDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeWidget>
#include <QtTest>

#include <memory>

using namespace CaptureTesting;

namespace {

const QRect kScreen(0, 0, 1920, 1080);

#ifdef Q_OS_WIN
const char kPlatform[] = "windows";
#else
const char kPlatform[] = "xcb";
#endif

QList<QObject *> pendingSingleShots()
{
    QList<QObject *> timers;
    const auto children = QAbstractEventDispatcher::instance()->children();
    for (QObject *child : children) {
        if (qstrcmp(child->metaObject()->className(), "QSingleShotTimer") == 0)
            timers << child;
    }
    return timers;
}

int intervalOf(QObject *timer)
{
    const auto timers = QAbstractEventDispatcher::instance()->registeredTimers(timer);
    return timers.isEmpty() ? -1 : timers.first().interval;
}

// The single-shot timers started since `before` was taken; with an interval given,
// only those of that interval.
QList<QObject *> startedSince(const QList<QObject *> &before, int interval = -1)
{
    QList<QObject *> started;
    for (QObject *timer : pendingSingleShots()) {
        if (!before.contains(timer) && (interval < 0 || intervalOf(timer) == interval))
            started << timer;
    }
    return started;
}

// What the name dialog looked like when it was answered.
struct NameDialogSeen
{
    QString title;
    QString label;
    QString text;
    int echoMode = -1;
};

// Accepts the name dialog with `name` after noting how it looked.
ModalAnswerer::Answer nameWith(const QString &name, NameDialogSeen *seen)
{
    return [name, seen](QWidget *modal) {
        QInputDialog *input = qobject_cast<QInputDialog *>(modal);
        if (!input) {
            modal->close();
            return;
        }
        seen->title = input->windowTitle();
        seen->label = input->labelText();
        seen->text = input->textValue();
        seen->echoMode = input->textEchoMode();
        input->setTextValue(name);
        input->accept();
    };
}

} // namespace

class ScreenShotFlowTests : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<MainWindow> window;
    // openbox unless the test runs under another desktop.
    const QByteArray windowManager =
        qEnvironmentVariableIsEmpty("FB_X_WINDOW_MANAGER") ? QByteArray("openbox") : qgetenv("FB_X_WINDOW_MANAGER");

    template <typename T>
    T *widget(const char *name)
    {
        return MainWindowProbe::widget<T>(*window, name);
    }

    void showWindow();
    bool pinned() const;
    void takeScreenShot(int timeoutMs = 20000);
    QString thumbnail(const QString &fileName) const;
    QTreeWidget *tree();

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void delayStartsTheTimer_data();
    void delayStartsTheTimer();
    void waitsUntilTheWindowIsMinimised();
    void plainShotIsNamedAndAttached();
    void shotIsOnTheClipboard();
    void enhancedShotIsAcceptedWithTheRightButton();
    void escapeCancels_data();
    void escapeCancels();
    void cancelledOrEmptyNameAddsNothing_data();
    void cancelledOrEmptyNameAddsNothing();
    void plainClickWithoutDragAsksNothing();
    void secondShotOfTheSameNameGetsANumber();
};

// Stops at once, with the reason, where the flow could only time out.
void ScreenShotFlowTests::initTestCase()
{
    QCOMPARE(QGuiApplication::platformName(), QString(kPlatform));
    if (windowManager == "openbox") {
        const QString problem = windowManagerMinimiseProblem();
        QVERIFY2(problem.isEmpty(), qPrintable(problem));
    }
    QCOMPARE(QGuiApplication::primaryScreen()->geometry(), kScreen);
    const QString pattern = showPatternOnScreens();
    QVERIFY2(pattern.isEmpty(), qPrintable(pattern));
    QCursor::setPos(kScreen.bottomRight());
}

void ScreenShotFlowTests::init()
{
    window.reset();
}

void ScreenShotFlowTests::cleanup()
{
    window.reset();
    // The flow ends with its overlay gone.
    QVERIFY(!OverlayWatcher::findOverlay());
}

void ScreenShotFlowTests::showWindow()
{
    window = std::make_unique<MainWindow>();
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get(), kEventWaitMs));
}

bool ScreenShotFlowTests::pinned() const
{
    return MainWindowProbe::geometryPinned(*window);
}

// Clicks Take Screen Shot and waits until the flow has given the window back.
void ScreenShotFlowTests::takeScreenShot(int timeoutMs)
{
    widget<QPushButton>("button_Screen_Shot")->click();
    QVERIFY(pinned());
    QVERIFY(QTest::qWaitFor([&] { return !pinned(); }, timeoutMs));
    // Back on the screen and settled with the window manager, as a user would
    // see it before the next click.
    QVERIFY(
        QTest::qWaitFor([&] { return window->windowHandle()->isExposed() && window->isActiveWindow(); }, kEventWaitMs));
    QVERIFY(!window->isMinimized());
}

QString ScreenShotFlowTests::thumbnail(const QString &fileName) const
{
    return QDir::toNativeSeparators(MainWindowProbe::thumbnailFolder(*window) + "/" + fileName);
}

QTreeWidget *ScreenShotFlowTests::tree()
{
    return widget<QTreeWidget>("tree_Attachments");
}

// Delay "0" or empty: 2 s; "5": 5 s; "120": capped at one minute. The window is
// minimised and pinned while the timer runs.
void ScreenShotFlowTests::delayStartsTheTimer_data()
{
    QTest::addColumn<QString>("delay");
    QTest::addColumn<int>("interval");
    QTest::newRow("empty") << "" << 2000;
    QTest::newRow("0") << "0" << 2000;
    QTest::newRow("5") << "5" << 5000;
    QTest::newRow("120") << "120" << 60000;
}

void ScreenShotFlowTests::delayStartsTheTimer()
{
    QFETCH(QString, delay);
    QFETCH(int, interval);
    showWindow();
    widget<QLineEdit>("line_Snapshot_Delay")->setText(delay);
    QVERIFY(!pinned());
    const QList<QObject *> before = pendingSingleShots();
    widget<QPushButton>("button_Screen_Shot")->click();
    QVERIFY(pinned());
    QVERIFY(window->isMinimized());
    const QList<QObject *> started = startedSince(before);
    QCOMPARE(started.size(), 1);
    QCOMPARE(intervalOf(started.first()), interval);
    // Stop the wait here; the window comes back by hand.
    delete started.first();
    window->showNormal();
}

void ScreenShotFlowTests::waitsUntilTheWindowIsMinimised()
{
    // Only a started flow's wait has a bound: where nothing iconifies the window, the
    // re-check reached without the button would go on for ever.
    if (windowManager != "openbox")
        QSKIP("needs a window manager that iconifies the window (openbox)");
    showWindow();
    bool pinnedDuringOverlay = false;
    OverlayWatcher watcher([&](ScreenShot *) {
        pinnedDuringOverlay = pinned();
        RealInput().escape().run();
    });
    // Not minimised: no overlay, a re-check in 100 ms, again and again.
    const QList<QObject *> before = pendingSingleShots();
    QVERIFY(QMetaObject::invokeMethod(window.get(), "slot_screen_shot"));
    QList<QObject *> started = startedSince(before);
    QCOMPARE(started.size(), 1);
    QCOMPARE(intervalOf(started.first()), 100);
    QTest::qWait(350);
    QVERIFY(!watcher.fired());
    QVERIFY(!OverlayWatcher::findOverlay());
    started = startedSince(before);
    QCOMPARE(started.size(), 1);
    QCOMPARE(intervalOf(started.first()), 100);

    // Once the window is minimised, the next check grabs.
    window->showMinimized();
    QVERIFY(QTest::qWaitFor([&] { return watcher.fired() && !window->isMinimized(); }, kEventWaitMs));
    QVERIFY(!watcher.rescued);
    QVERIFY(!pinnedDuringOverlay); // the button sets the flag, not the re-check
    QVERIFY(startedSince(before, 100).isEmpty());
}

void ScreenShotFlowTests::plainShotIsNamedAndAttached()
{
    showWindow();
    QTabWidget *tabs = widget<QTabWidget>("tabWidget");
    tabs->setCurrentIndex(2);
    const QPoint placeBefore = window->pos();
    NameDialogSeen seen;
    ModalAnswerer answerer;
    answerer.then(nameWith("my shot", &seen));
    bool pinnedDuringOverlay = false;
    bool minimisedDuringOverlay = false;
    OverlayWatcher watcher([&](ScreenShot *) {
        pinnedDuringOverlay = pinned();
        // openbox iconifies the window; elsewhere the flow takes it off the screen.
        const bool outOfTheWay = windowManager == "openbox" ? window->isMinimized() : !window->isVisible();
        minimisedDuringOverlay = outOfTheWay && !window->windowHandle()->isExposed();
        RealInput().moveTo({100, 100}).press().moveTo({200, 170}).moveTo({300, 250}).release().run();
    });

    takeScreenShot();
    QVERIFY(watcher.fired());
    QVERIFY(!watcher.rescued);
    QVERIFY(pinnedDuringOverlay);
    QVERIFY(minimisedDuringOverlay);
    // The overlay covered the screen, showed the screen as it was, with the cross.
    QCOMPARE(watcher.geometry, kScreen);
    QCOMPARE(watcher.origin, kScreen.topLeft());
    QVERIFY(watcher.fullScreen);
    QVERIFY(watcher.mouseTracking);
    QCOMPARE(watcher.cursor, Qt::CrossCursor);
    QCOMPARE(patternMismatch(watcher.background.toImage(), kScreen), QString());

    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(seen.title, QString("Name Screen Shot"));
    QCOMPARE(seen.label, QString("Name:"));
    QCOMPARE(seen.text, QString());
    QCOMPARE(seen.echoMode, int(QLineEdit::Normal));

    QCOMPARE(tree()->topLevelItemCount(), 1);
    const QString saved = tree()->topLevelItem(0)->data(1, Qt::UserRole).toString();
    QCOMPARE(saved, thumbnail("my_shot.png"));
    QCOMPARE(patternMismatch(QImage(saved), QRect(100, 100, 200, 150)), QString());
    QCOMPARE(tabs->currentIndex(), 4);

    QVERIFY(!pinned());
    QVERIFY(QTest::qWaitFor([&] { return window->windowHandle()->isExposed(); }, kEventWaitMs));
    QVERIFY(!window->isMinimized());
    QVERIFY(window->isVisible());
    QCOMPARE(window->pos(), placeBefore);
    QVERIFY(!OverlayWatcher::findOverlay());
}

void ScreenShotFlowTests::shotIsOnTheClipboard()
{
    showWindow();
    QGuiApplication::clipboard()->setText("before the shot");
    ModalAnswerer answerer;
    answerer.enterText("clip");
    OverlayWatcher watcher([](ScreenShot *) {
        RealInput().moveTo({40, 30}).press().moveTo({140, 110}).release().run();
    });
    takeScreenShot();
    QVERIFY(watcher.fired());
    QVERIFY(!watcher.rescued);
    QCOMPARE(tree()->topLevelItemCount(), 1);

    // Another program reads the clipboard. It may ask this process for the data (xclip
    // does), so the event loop must keep running.
    QProcess reader;
#ifdef Q_OS_WIN
    // A Windows program takes the device-independent bitmap and writes it as a BMP file.
    const QString bmp = TestEnvironment::instance().temp() + "/from-the-clipboard.bmp";
    reader.start(QStringLiteral(FB_CLIPBOARD_BMP_READER), {QDir::toNativeSeparators(bmp)});
#else
    reader.start("xclip", {"-o", "-selection", "clipboard", "-t", "image/png"});
#endif
    QVERIFY(QTest::qWaitFor([&] { return reader.state() == QProcess::NotRunning; }, kEventWaitMs));
    QCOMPARE(reader.exitStatus(), QProcess::NormalExit);
    QCOMPARE(reader.exitCode(), 0);
#ifdef Q_OS_WIN
    QImage pasted;
    pictureOfClipboardBmp(bmp, pasted);
    if (QTest::currentTestFailed())
        return;
#else
    const QImage pasted = QImage::fromData(reader.readAllStandardOutput(), "PNG");
#endif
    QCOMPARE(patternMismatch(pasted, QRect(40, 30, 100, 80)), QString());
}

void ScreenShotFlowTests::enhancedShotIsAcceptedWithTheRightButton()
{
    showWindow();
    widget<QCheckBox>("check_EnhancedCapture")->setChecked(true);
    ModalAnswerer answerer;
    answerer.enterText("enhanced & sharp");
    bool endedOnLeftRelease = true;
    bool bandShownAfterLeftRelease = false;
    OverlayWatcher watcher([&](ScreenShot *overlay) {
        RealInput().moveTo({500, 400}).press().moveTo({600, 500}).moveTo({700, 600}).release().run();
        // Look again once the overlay has seen the drag and the release, then accept.
        const auto releaseSeen = [overlay] {
            return overlay->rubberBand()->geometry() == QRect(500, 400, 201, 201)
                   && QGuiApplication::mouseButtons() == Qt::NoButton;
        };
        whenTrue(overlay, releaseSeen, [&, overlay] {
            endedOnLeftRelease = overlay->hasEnded();
            bandShownAfterLeftRelease = overlay->rubberBand()->isVisible();
            RealInput().moveTo({1500, 900}).click(Qt::RightButton).run();
        });
    });
    takeScreenShot();
    QVERIFY(watcher.fired());
    QVERIFY(!watcher.rescued);
    QVERIFY(!endedOnLeftRelease);
    QVERIFY(bandShownAfterLeftRelease);
    QCOMPARE(tree()->topLevelItemCount(), 1);
    const QString saved = tree()->topLevelItem(0)->data(1, Qt::UserRole).toString();
    QCOMPARE(saved, thumbnail("enhanced_and_sharp.png"));
    QCOMPARE(patternMismatch(QImage(saved), QRect(500, 400, 201, 201)), QString());
    QCOMPARE(widget<QTabWidget>("tabWidget")->currentIndex(), 4);
}

void ScreenShotFlowTests::escapeCancels_data()
{
    QTest::addColumn<bool>("enhanced");
    QTest::newRow("plain") << false;
    QTest::newRow("enhanced") << true;
}

void ScreenShotFlowTests::escapeCancels()
{
    QFETCH(bool, enhanced);
    showWindow();
    widget<QCheckBox>("check_EnhancedCapture")->setChecked(enhanced);
    QTabWidget *tabs = widget<QTabWidget>("tabWidget");
    tabs->setCurrentIndex(3);
    QGuiApplication::clipboard()->setText("left alone");
    ModalAnswerer answerer;
    OverlayWatcher watcher([](ScreenShot *) {
        RealInput().moveTo({100, 100}).press().moveTo({300, 250}).run();
        RealInput().escape().run();
        RealInput().release().run();
    });
    takeScreenShot();
    QVERIFY(watcher.fired());
    QVERIFY(!watcher.rescued);
    QCOMPARE(answerer.seen().size(), 0);
    QCOMPARE(tree()->topLevelItemCount(), 0);
    QCOMPARE(tabs->currentIndex(), 3);
    QCOMPARE(QGuiApplication::clipboard()->text(), QString("left alone"));
    QVERIFY(QTest::qWaitFor([&] { return window->windowHandle()->isExposed(); }, kEventWaitMs));
    QVERIFY(!window->isMinimized());
}

void ScreenShotFlowTests::cancelledOrEmptyNameAddsNothing_data()
{
    QTest::addColumn<bool>("cancel");
    QTest::newRow("cancelled") << true;
    QTest::newRow("empty") << false;
}

void ScreenShotFlowTests::cancelledOrEmptyNameAddsNothing()
{
    QFETCH(bool, cancel);
    showWindow();
    QTabWidget *tabs = widget<QTabWidget>("tabWidget");
    tabs->setCurrentIndex(1);
    QGuiApplication::clipboard()->setText("left alone");
    ModalAnswerer answerer;
    if (cancel)
        answerer.reject();
    else
        answerer.enterText(QString());
    OverlayWatcher watcher([](ScreenShot *) {
        RealInput().moveTo({100, 100}).press().moveTo({300, 250}).release().run();
    });
    takeScreenShot();
    QVERIFY(!watcher.rescued);
    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(answerer.seen().first().windowTitle, QString("Name Screen Shot"));
    QCOMPARE(tree()->topLevelItemCount(), 0);
    QCOMPARE(tabs->currentIndex(), 1);
    QCOMPARE(QGuiApplication::clipboard()->text(), QString("left alone"));
    QCOMPARE(QDir(MainWindowProbe::thumbnailFolder(*window)).entryList(QDir::Files), QStringList());
    QVERIFY(!window->isMinimized());
}

void ScreenShotFlowTests::plainClickWithoutDragAsksNothing()
{
    showWindow();
    ModalAnswerer answerer;
    OverlayWatcher watcher([](ScreenShot *) { RealInput().moveTo({700, 500}).click().run(); });
    takeScreenShot();
    QVERIFY(watcher.fired());
    QVERIFY(!watcher.rescued);
    QCOMPARE(answerer.seen().size(), 0);
    QCOMPARE(tree()->topLevelItemCount(), 0);
}

void ScreenShotFlowTests::secondShotOfTheSameNameGetsANumber()
{
    showWindow();
    ModalAnswerer answerer;
    answerer.enterText("shot").enterText("shot");
    for (int i = 0; i < 2; ++i) {
        OverlayWatcher watcher([](ScreenShot *) {
            RealInput().moveTo({10, 10}).press().moveTo({60, 60}).release().run();
        });
        takeScreenShot();
        QVERIFY(!watcher.rescued);
    }
    QCOMPARE(tree()->topLevelItemCount(), 2);
    QCOMPARE(tree()->topLevelItem(0)->data(1, Qt::UserRole).toString(), thumbnail("shot.png"));
    QCOMPARE(tree()->topLevelItem(1)->data(1, Qt::UserRole).toString(), thumbnail("shot_1.png"));
}

FB_TEST_MAIN(ScreenShotFlowTests)
#include "tst_screenshotflow.moc"
