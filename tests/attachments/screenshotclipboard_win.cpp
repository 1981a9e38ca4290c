// Take Screen Shot on Windows: the captured region goes onto the clipboard as a
// device-independent bitmap, and another program reads it back pixel for pixel.
// A full-screen window of the test pattern stands for the screen, since Windows has
// no root window for a test to paint on.
#include "attachments/screenshot.h"
#include "attachmentswindowx11tests.h"
#include "capturetesting.h"
#include "form/mainwindow.h"
#include "overlaywatcher.h"
#include "support/mainwindowprobe.h"
#include "support/modalanswerer.h"
#include "support/testenv.h"

#include <QApplication>
#include <QFile>
#include <QPainter>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QTreeWidget>
#include <QtTest>

using namespace CaptureTesting;

namespace {

// The test pattern over the whole of one screen.
class PatternWindow : public QWidget
{
public:
    explicit PatternWindow(const QRect &screen)
        : QWidget(nullptr, Qt::FramelessWindowHint)
        , m_pattern(patternImage(QRect(QPoint(0, 0), screen.size())))
    {
        setGeometry(screen);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.drawImage(0, 0, m_pattern);
    }

private:
    QImage m_pattern;
};

} // namespace

// What init() does for this section's function.
void AttachmentsWindowX11Tests::showPattern()
{
    screen = QGuiApplication::primaryScreen()->geometry();
    QVERIFY(screen.width() >= 200 && screen.height() >= 200);
    pattern = std::make_unique<PatternWindow>(screen);
    pattern->showFullScreen();
    QVERIFY(QTest::qWaitForWindowExposed(pattern.get(), kEventWaitMs));
    QVERIFY(QTest::qWaitFor([&] { return pattern->mapToGlobal(QPoint(0, 0)) == screen.topLeft(); }, kEventWaitMs));
}

void AttachmentsWindowX11Tests::shotIsOnTheClipboardForOtherPrograms()
{
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window, kEventWaitMs));
    ModalAnswerer answerer;
    answerer.enterText("clip");
    OverlayWatcher watcher([](ScreenShot *overlay) { leftDrag(overlay, QPoint(40, 30), QPoint(140, 110)); });

    MainWindowProbe::widget<QPushButton>(window, "button_Screen_Shot")->click();
    QVERIFY(MainWindowProbe::geometryPinned(window));
    QVERIFY(QTest::qWaitFor([&] { return !MainWindowProbe::geometryPinned(window); }, kEventWaitMs));
    QVERIFY(watcher.fired());
    QVERIFY(!watcher.rescued);
    // What was grabbed is the pattern, so the pixels below can be told apart.
    QCOMPARE(patternMismatch(watcher.background.toImage(), QRect(QPoint(0, 0), screen.size())), QString());
    QCOMPARE(MainWindowProbe::widget<QTreeWidget>(window, "tree_Attachments")->topLevelItemCount(), 1);

    const QString bmp = TestEnvironment::instance().temp() + "/from-the-clipboard.bmp";
    QProcess reader;
    reader.setProcessChannelMode(QProcess::ForwardedChannels);
    reader.start(QStringLiteral(FB_CLIPBOARD_BMP_READER), {QDir::toNativeSeparators(bmp)});
    QVERIFY(reader.waitForFinished(kEventWaitMs));
    QCOMPARE(reader.exitStatus(), QProcess::NormalExit);
    QCOMPARE(reader.exitCode(), 0);
    QImage pasted;
    pictureOfClipboardBmp(bmp, pasted);
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(patternMismatch(pasted, QRect(40, 30, 100, 80)), QString());
}
