#!/bin/bash
# The Windows lane: Qt for Windows (built once per machine by tools/windows/build-qt.sh
# and cached outside the checkout), the program and its tests cross-built with the
# win64 preset, and the suite run through CTest under Wine, in a fresh prefix, on Xvfb
# with openbox. Tests that need what only Linux has are listed by CTest as disabled,
# labelled linux-only. Usage: tools/lanes/win64.sh [linux-build-dir] (not needed: the
# lane has its own build folder, build-win64). Run as root: the Qt build installs the
# packages it needs.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
. "$root/tools/utf8-locale.sh"
cd "$root"
lane_start=$(date +%s)
seconds_since() { echo $(($(date +%s) - $1)); }

if [ "${FB_WIN64_IN_X:-}" != 1 ]; then
    FB_WIN_QT_PREFIX=$(bash tools/windows/build-qt.sh | tail -n 1)
    export FB_WIN_QT_PREFIX
    echo "win64: Qt for Windows in $FB_WIN_QT_PREFIX ($(seconds_since "$lane_start") s)"
    build_start=$(date +%s)
    export CCACHE_BASEDIR="$root"
    cmake --preset win64 >/dev/null
    cmake --build --preset win64 -j"$(nproc)"
    echo "win64: built in $(seconds_since "$build_start") s"
    status=0
    FB_WIN64_IN_X=1 tools/run-under-x.sh bash "$0" || status=$?
    echo "win64 lane: $(seconds_since "$lane_start") s"
    exit $status
fi

# On the lane's X server, in a fresh 64-bit prefix that goes with the lane. No .NET
# and no Gecko, which the program does not use. The sound drivers stay: the DirectX
# diagnostics provider lists the sound devices, and fails to start without a driver.
work=$(mktemp -d)
export WINEPREFIX=$work/prefix WINEARCH=win64 WINEDEBUG=-all
# The account's name is the profile folder's, under which the settings, the temporary
# folder and the machine summary's dump live: one with letters outside ASCII, as many
# users' names have, so that every Windows test runs in such a profile.
export USER="Jürgen Ñúñez"
export WINEDLLOVERRIDES="mscoree,mshtml="
hold=$work/hold
cleanup() {
    exec 3>&- 2>/dev/null || true
    wineserver -k >/dev/null 2>&1 || true
    rm -rf "$work"
}
trap cleanup EXIT
prefix_start=$(date +%s)
wineboot --init >/dev/null 2>&1
wineserver -w
# One Windows process that lives as long as the lane (a command prompt reading a pipe
# that stays open) keeps Wine's own services up from here on: started now, they
# belong to no test, and each test starts without waiting for them.
mkfifo "$hold"
wine64_cmd=$(command -v wine64 || echo /usr/lib/wine/wine64)
"$wine64_cmd" cmd <"$hold" >/dev/null 2>&1 &
exec 3>"$hold"
wineserver -p # kept up between tests, so each test starts quickly
echo "win64: a fresh Wine prefix in $(seconds_since "$prefix_start") s"
# FB_WIN64_CTEST_ARGS: further CTest options for a run by hand (-R attachments, say).
# shellcheck disable=SC2086
ctest --preset win64 -j"$(nproc)" ${FB_WIN64_CTEST_ARGS:-}
