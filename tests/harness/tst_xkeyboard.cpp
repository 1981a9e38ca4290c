// The X server every XVFB test runs on (tools/run-under-x.sh) has its keyboard map
// settled before the test starts: a key a test fakes changes no keymap, so the window
// manager never drops its key grabs (Alt+F4 and the like) in the middle of a test.
#include "support/testenv.h"

#include <QApplication>
#include <QProcess>
#include <QtTest>

#include <X11/XKBlib.h>
#include <X11/Xlib.h>

class TestXKeyboard : public QObject
{
    Q_OBJECT

private slots:
    void fakedKeyChangesNoKeyboardMap()
    {
        Display *display = XOpenDisplay(nullptr);
        QVERIFY(display);
        int opcode = 0;
        int xkbEventBase = 0;
        int errorBase = 0;
        int major = XkbMajorVersion;
        int minor = XkbMinorVersion;
        QVERIFY(XkbQueryExtension(display, &opcode, &xkbEventBase, &errorBase, &major, &minor));
        const unsigned long changes = XkbNewKeyboardNotifyMask | XkbMapNotifyMask;
        QVERIFY(XkbSelectEvents(display, XkbUseCoreKbd, changes, changes));
        XSync(display, False);

        QProcess xdotool;
        xdotool.start("xdotool", {"key", "shift"});
        QVERIFY(xdotool.waitForFinished(kEventWaitMs));
        QCOMPARE(xdotool.exitCode(), 0);
        // xdotool's own connection is closed, so the server has handled its keys and
        // queued any notice of them to us; this round trip brings those notices in.
        XSync(display, False);

        QStringList notices;
        while (XPending(display) > 0) {
            XEvent event;
            XNextEvent(display, &event);
            if (event.type == MappingNotify)
                notices << "MappingNotify";
            else if (event.type == xkbEventBase) {
                const int kind = reinterpret_cast<XkbAnyEvent *>(&event)->xkb_type;
                notices << (kind == XkbNewKeyboardNotify ? "XkbNewKeyboardNotify" : "XkbMapNotify");
            }
        }
        XCloseDisplay(display);
        QCOMPARE(notices, QStringList());
    }
};

FB_TEST_MAIN(TestXKeyboard)
#include "tst_xkeyboard.moc"
