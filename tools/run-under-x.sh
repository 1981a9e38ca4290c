#!/bin/sh
# Runs one command on a private Xvfb display with openbox as window manager, which
# gives the program real activation, minimise and full screen. Used by tests that
# need X; the exit status is the command's.
#
# FB_X_WINDOW_MANAGER chooses another desktop: "i3" (a tiling window manager that
# never iconifies) or "none" (a bare X server, where nothing is ever minimised).
# A window manager that does not come up is an error here, reported with what it said.
set -eu
manager=${FB_X_WINDOW_MANAGER:-openbox}
case $manager in
openbox | i3 | none) ;;
*)
    echo "run-under-x: unknown window manager '$manager' (openbox, i3 or none)" >&2
    exit 2
    ;;
esac
if [ "${FB_IN_XVFB:-}" != 1 ]; then
    FB_IN_XVFB=1 exec xvfb-run -a -s "-screen 0 1920x1080x24 -nolisten tcp" "$0" "$@"
fi
wm_log=$(mktemp)
wm=
trap 'rm -f "$wm_log"' EXIT

wm_announced() {
    xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'
}

# Starts the window manager and waits up to ten seconds for it to announce itself.
start_wm() {
    if [ "$manager" = i3 ]; then
        i3 -c "$(dirname "$0")/i3-test.config" >>"$wm_log" 2>&1 &
    else
        openbox --sm-disable >>"$wm_log" 2>&1 &
    fi
    wm=$!
    i=0
    while [ $i -lt 200 ]; do
        wm_announced && return 0
        kill -0 "$wm" 2>/dev/null || return 1
        sleep 0.05
        i=$((i + 1))
    done
    return 1
}

if [ "$manager" != none ] && ! start_wm; then
    echo "run-under-x: $manager did not come up on $DISPLAY; trying once more" >&2
    kill "$wm" 2>/dev/null || true
    wait "$wm" 2>/dev/null || true
    if ! start_wm; then
        echo "run-under-x: no window manager on $DISPLAY; $manager said:" >&2
        cat "$wm_log" >&2
        kill "$wm" 2>/dev/null || true
        exit 1
    fi
fi

# The first key that xdotool fakes makes the server's core keyboard take the XTEST
# device's keymap. Every client then hears that the keyboard map changed, and openbox
# answers by dropping and re-making all its key grabs; a key that a test sends while
# openbox is between the two (Alt+F4, say) goes to the window instead and is lost.
# One harmless key now, before the command's first window exists, makes that change
# happen here; openbox handles its events in order, so it has its grabs back before
# it manages any window of the command.
if ! xdotool key shift; then
    echo "run-under-x: could not send a key to $DISPLAY" >&2
    kill "$wm" 2>/dev/null || true
    exit 1
fi

status=0
"$@" || status=$?
if [ -n "$wm" ]; then
    if ! kill -0 "$wm" 2>/dev/null; then
        echo "run-under-x: $manager ended while the test ran; it said:" >&2
        cat "$wm_log" >&2
    fi
    kill "$wm" 2>/dev/null || true
    wait "$wm" 2>/dev/null || true
fi
exit $status
