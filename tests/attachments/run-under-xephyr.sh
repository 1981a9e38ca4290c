#!/bin/sh
# Runs one command on a nested X server with two 800x600 monitors side by side:
# Xephyr with two screens joined by Xinerama, openbox as window manager, and Qt told
# to skip XRandR so that it takes the Xinerama monitors as its screens. Needs a host
# X server (run it under tools/run-under-x.sh); the exit status is the command's.
set -eu
. "$(dirname "$0")/await-display.sh"
fdfile=$(mktemp)
trap 'rm -f "$fdfile"' EXIT
Xephyr -displayfd 3 +xinerama -screen 800x600 -screen 800x600 -ac -br -noreset -nolisten tcp \
    3>"$fdfile" >/dev/null 2>&1 &
server=$!
display=$(await_display "$fdfile")
if [ -z "$display" ]; then
    echo "run-under-xephyr: Xephyr did not start" >&2
    kill "$server" 2>/dev/null || true
    exit 1
fi
DISPLAY=$display openbox --sm-disable >/dev/null 2>&1 &
wm=$!
i=0
while [ $i -lt 100 ] && ! DISPLAY=$display xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; do
    sleep 0.05
    i=$((i + 1))
done
status=0
DISPLAY=$display QT_XCB_NO_XRANDR=1 "$@" || status=$?
kill "$wm" "$server" 2>/dev/null || true
wait "$wm" 2>/dev/null || true
wait "$server" 2>/dev/null || true
exit $status
