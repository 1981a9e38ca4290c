#!/bin/bash
# The Windows clipboard code (attachments/dib.cpp, attachments/dibclipboard_win.cpp)
# built with MinGW and run under Wine on Xvfb: for each case one process puts a
# picture on the clipboard, reads it back itself and keeps its window alive, while a
# second process reads it through the same reader and compares byte for byte and
# pixel for pixel. Usage: tools/lanes/wine-clipboard.sh [build-dir] (the build folder
# is not needed; the program is built into a temporary folder).
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)

if [ "${FB_WINECLIP_IN_X:-}" != 1 ]; then
    work=$(mktemp -d)
    trap 'rm -rf "$work"' EXIT
    start=$(date +%s.%N)
    x86_64-w64-mingw32-g++ -std=c++17 -O2 -Wall -Wextra -Werror -static -I"$root" \
        "$root/tools/wineclip/wineclip.cpp" "$root/attachments/dib.cpp" "$root/attachments/dibclipboard_win.cpp" \
        -luser32 -lgdi32 -o "$work/wineclip.exe"
    status=0
    FB_WINECLIP_IN_X=1 WORK="$work" xvfb-run -a -s "-screen 0 640x480x24 -nolisten tcp" bash "$0" || status=$?
    echo "wine clipboard lane: $(awk -v s="$start" -v e="$(date +%s.%N)" 'BEGIN {printf "%.1f", e - s}') s"
    exit $status
fi

# Inside Xvfb, with a fresh 64-bit prefix.
cd "$WORK"
export WINEPREFIX="$WORK/prefix" WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
wine=$(command -v wine64 || echo /usr/lib/wine/wine64)
[ -x "$wine" ] || wine=wine
"$wine" wineboot --init >/dev/null 2>&1 || true

failed=0
passed=0
cases=$("$wine" ./wineclip.exe list | tr -d '\r' | cut -f1)
for name in $cases; do
    rm -f ready stop
    "$wine" ./wineclip.exe serve "$name" ready stop > "serve-$name.txt" 2>&1 &
    server=$!
    for _ in $(seq 300); do
        [ -e ready ] && break
        kill -0 "$server" 2>/dev/null || break
        sleep 0.05
    done
    result=0
    if [ -e ready ]; then
        "$wine" ./wineclip.exe check "$name" > "check-$name.txt" 2>&1 || result=$?
    else
        echo "FAIL: $name: the serving process never became ready" > "check-$name.txt"
        result=1
    fi
    touch stop
    wait "$server" || result=$?
    if [ $result -eq 0 ]; then
        passed=$((passed + 1))
        echo "PASS: $name"
    else
        failed=$((failed + 1))
        echo "FAIL: $name"
        tr -d '\r' < "serve-$name.txt" | sed 's/^/  serve: /'
        tr -d '\r' < "check-$name.txt" | sed 's/^/  check: /'
    fi
done
"${wine%64}server" -k 2>/dev/null || wineserver -k 2>/dev/null || true
echo "wine clipboard cases: $passed of $((passed + failed)) passed"
[ $failed -eq 0 ] && [ $passed -gt 0 ]
