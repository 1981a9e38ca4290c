#pragma once

#include <QElapsedTimer>
#include <QtGlobal>

class QString;

// The snapshot delay, in whole seconds as the delay field holds them.
namespace snapshotdelay {

// What the field shows until the user changes it, and what the settings file leaves out.
constexpr int kDefaultSeconds = 2;
// The longest delay: a larger field value is clamped to it, and waits are capped at it.
constexpr int kCeilingSeconds = 60;

QString defaultText();

// The field's text once its editing finishes: below 3 (and what is not a number) the
// default, which is also the floor; above the ceiling the ceiling; otherwise as typed.
// So 2 is the floor and the default, yet 3 is the smallest value kept as typed.
QString clamped(const QString &text);

} // namespace snapshotdelay

// Milliseconds to wait before a screen shot, from the text of the delay field: 0,
// empty or not a number wait the default, and the wait is capped at the ceiling even
// for a value that was never clamped. A negative value, which only a hand-edited
// settings file can bring, waits for nothing.
int screenShotDelayMs(const QString &delayText);

// Whether the window is out of the way once the delay is over. The window manager
// iconifies asynchronously, so the window may still be on the screen for a moment
// after its state says minimised; and some never iconify at all (no window manager,
// tiling ones such as i3 or sway, Wayland compositors that ignore the request). The
// flow then takes the window off the screen itself after a bounded wait.
class MinimiseWait
{
public:
    // Time the window manager gets, after the delay, to take a minimised window off
    // the screen. The delay itself has already given it two seconds or more, and the
    // iconify animations of the common desktops take less than half a second, so a
    // window still shown by then will not be iconified.
    static constexpr qint64 kWindowManagerGraceMs = 1000;

    enum class Step {
        CheckAgain, // look again in 100 ms
        Withdraw, // hide the window, then look again
        Grab, // the screen shows what the user wants to capture
    };

    // flowMinimised: the flow itself asked for the minimise (Take Screen Shot), as
    // opposed to a re-check reached otherwise; only then does the wait end on its own.
    // sinceFirstCheckMs: time since the first check after the delay.
    static Step next(bool minimised, bool exposed, bool flowMinimised, bool withdrawn, qint64 sinceFirstCheckMs);

    // One wait, as the window goes through it: begun when the flow minimises the
    // window, checked each time the timer fires, over once the screen is grabbed.
    void begin();
    Step check(bool minimised, bool exposed);
    void end();

private:
    bool m_flowMinimised = false;
    bool m_withdrawn = false;
    QElapsedTimer m_sinceFirstCheck;
};
