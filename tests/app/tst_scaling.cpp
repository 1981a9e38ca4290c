// The window at the display scaling the user chose in Windows (FB_WINE_LOGPIXELS: 96,
// 120, 144 or 192 dots per inch, that is 100, 125, 150 and 200 %): drawn at that
// factor, not a rounded one, in screen pixels the window's 720x470 times the factor,
// with its fonts and pictures scaled alike. Windows only: the lane sets the setting.
#include "form/mainwindow.h"
#include "support/mainwindowprobe.h"
#include "support/testenv.h"

#include <QApplication>
#include <QFontInfo>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QWindow>
#include <QtTest>

#include <windows.h>

class TestScaling : public QObject
{
    Q_OBJECT

private:
    int dotsPerInch = 0;
    qreal factor = 0;

private slots:
    void initTestCase()
    {
        QCOMPARE(QGuiApplication::platformName(), QString("windows"));
        dotsPerInch = qEnvironmentVariableIntValue("FB_WINE_LOGPIXELS");
        QVERIFY2(dotsPerInch >= 96, "FB_WINE_LOGPIXELS sets the scaling of this test");
        factor = dotsPerInch / 96.0;
        // The system has the setting the test asked for.
        const HDC screen = GetDC(nullptr);
        const int systemDpi = GetDeviceCaps(screen, LOGPIXELSX);
        ReleaseDC(nullptr, screen);
        QCOMPARE(systemDpi, dotsPerInch);
    }

    void windowIsDrawnAtTheSystemsFactor()
    {
        MainWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window, kEventWaitMs));
        QCOMPARE(window.devicePixelRatioF(), factor);
        QCOMPARE(window.windowHandle()->screen()->devicePixelRatio(), factor);
        QCOMPARE(window.size(), QSize(720, 470));
        // In screen pixels, as Windows measures the window's inside.
        RECT client = {};
        QVERIFY(GetClientRect(reinterpret_cast<HWND>(window.winId()), &client));
        QCOMPARE(QSize(client.right - client.left, client.bottom - client.top),
                 QSize(qRound(720 * factor), qRound(470 * factor)));
    }

    void fontsAndPicturesScaleAlike()
    {
        MainWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window, kEventWaitMs));
        // A font of n points is n / 72 inches high: in screen pixels, at the system's
        // resolution; in the window's own pixels, at 96 dots per inch.
        const QFont font = window.font();
        QCOMPARE(QFontInfo(font).pixelSize(), qRound(font.pointSizeF() * 96 / 72));
        // A picture of the window has the screen's pixels.
        const QPixmap picture = window.grab();
        QCOMPARE(picture.devicePixelRatio(), factor);
        QCOMPARE(picture.size(), QSize(qRound(720 * factor), qRound(470 * factor)));
        // The program's pictures are drawn for the screen's pixels too.
        const QIcon icon = window.windowIcon();
        QCOMPARE(icon.pixmap(QSize(32, 32)).devicePixelRatio(), factor);
    }
};

FB_TEST_MAIN(TestScaling)
#include "tst_scaling.moc"
