#!/bin/sh
# Runs one command on a private Xvfb display with openbox as window manager, which
# gives the program real activation, minimise and full screen. Used by tests that
# need X; the exit status is the command's.
set -eu
if [ "${FB_IN_XVFB:-}" != 1 ]; then
    FB_IN_XVFB=1 exec xvfb-run -a -s "-screen 0 1920x1080x24 -nolisten tcp" "$0" "$@"
fi
openbox --sm-disable >/dev/null 2>&1 &
wm=$!
# Wait for the window manager to announce itself before the test maps windows.
i=0
while [ $i -lt 100 ] && ! xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; do
    sleep 0.05
    i=$((i + 1))
done
status=0
"$@" || status=$?
kill "$wm" 2>/dev/null || true
wait "$wm" 2>/dev/null || true
exit $status
