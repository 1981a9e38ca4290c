#!/bin/sh
# Runs one Windows test program under Wine and shows its QtTest log on standard output.
# A Windows program that has no console window gets QtTest's log sent to the debugger
# (OutputDebugString) instead of standard output, and under Wine there is no console,
# so the log goes to a file that is shown as it grows. The exit status is the test's.
#
# What the program writes to its own standard output and error is kept in a file and
# shown after the log: Wine's service processes, started by whichever program needs
# them first, inherit those descriptors and outlive the test, and CTest would wait for
# them to close its pipe.
#
# FB_WINE_LOGPIXELS, when set, is the display scaling the test runs at, in dots per
# inch as Windows keeps it (96 is 100 %, 120 is 125 %, 144 is 150 %, 192 is 200 %):
# the prefix's user setting is changed for the test and put back after it. The
# setting is the prefix's, so such a test must run alone (fb_add_test's SERIAL).
#
# Usage: wine-test.sh <wine> <test.exe> [test arguments]
set -eu
wine=$1
shift
log_dir=$(mktemp -d)
desktop_key='HKCU\Control Panel\Desktop'
cleanup() {
    if [ -n "${FB_WINE_LOGPIXELS:-}" ]; then
        "$wine" reg delete "$desktop_key" /v LogPixels /f >/dev/null 2>&1 || true
    fi
    rm -rf "$log_dir"
}
trap cleanup EXIT
if [ -n "${FB_WINE_LOGPIXELS:-}" ]; then
    "$wine" reg add "$desktop_key" /v LogPixels /t REG_DWORD /d "$FB_WINE_LOGPIXELS" /f >/dev/null 2>&1
fi
log=$log_dir/log.txt
console=$log_dir/console.txt
: >"$log"
"$wine" "$@" -o "Z:$log,txt" >"$console" 2>&1 </dev/null &
test_pid=$!
# --pid: tail ends, after a last read, once the test has ended.
tail -n +1 -f --pid="$test_pid" "$log" &
tail_pid=$!
status=0
wait "$test_pid" || status=$?
wait "$tail_pid" || true
if [ -s "$console" ]; then
    echo "--- the program's standard output and error:"
    cat "$console"
fi
exit $status
