#!/bin/sh
# Runs one Windows command under Wine on two monitors side by side: a private Xvfb whose
# screen holds two XRandR monitors (1920x1200 at the origin, 1280x1024 to its right),
# openbox, the capture test pattern on the root, and a private copy of the Wine prefix
# told to take its monitors from those (UseXRandR off: Wine then reads the monitors
# list, where the XRandR outputs of Xvfb would give it one screen). Nothing of the
# lane's own X server or prefix changes, so other tests may run beside this one.
# FB_ROOT_PATTERN_PAINTER is the pattern painter (root_pattern.c); the exit status is
# the command's.
set -eu
. "$(dirname "$0")/await-display.sh"
painter=${FB_ROOT_PATTERN_PAINTER:?the root pattern painter}
lane_prefix=${WINEPREFIX:-$HOME/.wine}
work=$(mktemp -d)
server=
wm=
stop() {
    WINEPREFIX=$work/prefix wineserver -k >/dev/null 2>&1 || true
    [ -z "$wm" ] || kill "$wm" 2>/dev/null || true
    [ -z "$server" ] || kill "$server" 2>/dev/null || true
    wait 2>/dev/null || true
    rm -rf "$work"
}
trap stop EXIT

Xvfb -displayfd 3 -screen 0 3200x1200x24 +extension RANDR -noreset -nolisten tcp \
    3>"$work/display" >"$work/xvfb.log" 2>&1 &
server=$!
DISPLAY=$(await_display "$work/display")
if [ -z "$DISPLAY" ]; then
    echo "run-wine-on-two-monitors: Xvfb did not start" >&2
    cat "$work/xvfb.log" >&2
    exit 1
fi
export DISPLAY
xrandr --setmonitor FB-A 1920/518x1200/324+0+0 screen >/dev/null
xrandr --setmonitor FB-B 1280/338x1024/270+1920+0 none >/dev/null
openbox --sm-disable >"$work/openbox.log" 2>&1 &
wm=$!
i=0
while [ $i -lt 200 ] && ! xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; do
    sleep 0.05
    i=$((i + 1))
done
"$painter"

# The prefix as the lane made it (the account's name, its profile folder), apart.
cp -a "$lane_prefix" "$work/prefix"
export WINEPREFIX=$work/prefix
wine reg add 'HKCU\Software\Wine\X11 Driver' /v UseXRandR /t REG_SZ /d N /f >/dev/null 2>&1
# At 100 %: the copy may hold the display scaling of a scaled test that ran before,
# since the lane's Wine server writes its registry to disk only now and then.
wine reg delete 'HKCU\Control Panel\Desktop' /v LogPixels /f >/dev/null 2>&1 || true
# Wine keeps the monitors it found for as long as its server runs.
wineserver -k
wineserver -w
status=0
"$@" || status=$?
exit $status
