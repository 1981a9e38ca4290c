// The rules of the screen shot that need no window: when the flow may grab, and where
// the picture comes from and which part of it shows the screen.
#include "attachments/screengrab.h"
#include "attachments/screenshotflow.h"
#include "support/testenv.h"

#include <QtTest>

Q_DECLARE_METATYPE(MinimiseWait::Step)

class TestScreenGrab : public QObject
{
    Q_OBJECT

private slots:
    void minimiseWait_data()
    {
        QTest::addColumn<bool>("minimised");
        QTest::addColumn<bool>("exposed");
        QTest::addColumn<bool>("flowMinimised");
        QTest::addColumn<bool>("withdrawn");
        QTest::addColumn<qint64>("since");
        QTest::addColumn<MinimiseWait::Step>("step");
        using Step = MinimiseWait::Step;
        QTest::newRow("iconified") << true << false << true << false << 0LL << Step::Grab;
        QTest::newRow("iconified, reached without the button") << true << false << false << false << 0LL << Step::Grab;
        QTest::newRow("minimised but still on the screen") << true << true << true << false << 0LL << Step::CheckAgain;
        QTest::newRow("still on the screen just before the bound")
            << true << true << true << false << 999LL << Step::CheckAgain;
        QTest::newRow("still on the screen at the bound") << true << true << true << false << 1000LL << Step::Withdraw;
        QTest::newRow("state reset by the desktop, at the bound")
            << false << true << true << false << 1500LL << Step::Withdraw;
        QTest::newRow("not minimised, reached without the button, long after")
            << false << true << false << false << 600000LL << Step::CheckAgain;
        QTest::newRow("minimised on the screen, reached without the button")
            << true << true << false << false << 600000LL << Step::CheckAgain;
        QTest::newRow("withdrawn and gone") << false << false << true << true << 1100LL << Step::Grab;
        QTest::newRow("withdrawn, not yet gone") << false << true << true << true << 1100LL << Step::CheckAgain;
        QTest::newRow("hidden by someone else, not minimised")
            << false << false << true << false << 200LL << Step::CheckAgain;
    }

    void minimiseWait()
    {
        QFETCH(bool, minimised);
        QFETCH(bool, exposed);
        QFETCH(bool, flowMinimised);
        QFETCH(bool, withdrawn);
        QFETCH(qint64, since);
        QFETCH(MinimiseWait::Step, step);
        QCOMPARE(MinimiseWait::next(minimised, exposed, flowMinimised, withdrawn, since), step);
    }

    // The delay field once its editing finishes: 2 is the floor and the default, yet 3
    // is the smallest value kept as typed; 60 is the ceiling.
    void delayKeptAfterEditing_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("kept");
        QTest::newRow("empty") << ""
                               << "2";
        QTest::newRow("not a number") << "abc"
                                      << "2";
        QTest::newRow("1") << "1"
                           << "2";
        QTest::newRow("2") << "2"
                           << "2";
        QTest::newRow("3") << "3"
                           << "3";
        QTest::newRow("60") << "60"
                            << "60";
        QTest::newRow("61") << "61"
                            << "60";
        QTest::newRow("999") << "999"
                             << "60";
        QTest::newRow("negative, from a settings file") << "-5"
                                                        << "2";
        QTest::newRow("leading zero kept as typed") << "05"
                                                    << "05";
    }

    void delayKeptAfterEditing()
    {
        QFETCH(QString, typed);
        QFETCH(QString, kept);
        QCOMPARE(snapshotdelay::clamped(typed), kept);
        QCOMPARE(snapshotdelay::defaultText(), QString("2"));
    }

    void needsDesktopPortal_data()
    {
        QTest::addColumn<QString>("platform");
        QTest::addColumn<QString>("screen");
        QTest::addColumn<bool>("portal");
        QTest::newRow("Wayland") << "wayland"
                                 << "HEADLESS-1" << true;
        QTest::newRow("Wayland, any name") << "wayland"
                                           << "" << true;
        QTest::newRow("XWayland") << "xcb"
                                  << "XWAYLAND0" << true;
        QTest::newRow("XWayland, second screen") << "xcb"
                                                 << "XWAYLAND1" << true;
        QTest::newRow("X11") << "xcb"
                             << "HDMI-1" << false;
        QTest::newRow("X11, Xvfb") << "xcb"
                                   << "screen" << false;
        QTest::newRow("X11, a name that only contains it") << "xcb"
                                                           << "MY-XWAYLAND" << false;
        QTest::newRow("Windows") << "windows"
                                 << "\\\\.\\DISPLAY1" << false;
        QTest::newRow("offscreen") << "offscreen"
                                   << "XWAYLAND0" << false;
    }

    void needsDesktopPortal()
    {
        QFETCH(QString, platform);
        QFETCH(QString, screen);
        QFETCH(bool, portal);
        QCOMPARE(screengrab::needsDesktopPortal(platform, screen), portal);
    }

    void areaOfScreen_data()
    {
        QTest::addColumn<QSize>("picture");
        QTest::addColumn<QRect>("screen");
        QTest::addColumn<QRect>("desktop");
        QTest::addColumn<qreal>("ratio");
        QTest::addColumn<QRect>("area");
        const QRect left(0, 0, 1920, 1080);
        const QRect right(1920, 0, 1280, 1024);
        const QRect both(0, 0, 3200, 1080);
        QTest::newRow("one screen") << QSize(1920, 1080) << left << left << 1.0 << QRect(0, 0, 1920, 1080);
        QTest::newRow("the screen's own picture (wlroots)")
            << QSize(1280, 1024) << right << both << 1.0 << QRect(0, 0, 1280, 1024);
        QTest::newRow("the desktop (GNOME), left screen")
            << QSize(3200, 1080) << left << both << 1.0 << QRect(0, 0, 1920, 1080);
        QTest::newRow("the desktop (GNOME), right screen")
            << QSize(3200, 1080) << right << both << 1.0 << QRect(1920, 0, 1280, 1024);
        QTest::newRow("the desktop at 150 %, right screen")
            << QSize(3200, 1620) << QRect(1280, 0, 853, 1080) << QRect(0, 0, 2133, 1080) << 1.5
            << QRect(1920, 0, 1280, 1620);
        QTest::newRow("desktop starting left of zero") << QSize(3200, 1080) << QRect(-1280, 0, 1280, 1024)
                                                       << QRect(-1280, 0, 3200, 1080) << 1.0 << QRect(0, 0, 1280, 1024);
        QTest::newRow("the screen at 200 %") << QSize(3840, 2160) << left << both << 2.0 << QRect(0, 0, 3840, 2160);
        QTest::newRow("a size of neither: whole") << QSize(800, 600) << right << both << 1.0 << QRect(0, 0, 800, 600);
        QTest::newRow("no picture") << QSize() << left << left << 1.0 << QRect();
    }

    void areaOfScreen()
    {
        QFETCH(QSize, picture);
        QFETCH(QRect, screen);
        QFETCH(QRect, desktop);
        QFETCH(qreal, ratio);
        QFETCH(QRect, area);
        QCOMPARE(screengrab::areaOfScreen(picture, screen, desktop, ratio), area);
    }
};

FB_TEST_MAIN(TestScreenGrab)
#include "tst_screengrab.moc"
