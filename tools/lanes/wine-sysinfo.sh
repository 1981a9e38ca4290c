#!/bin/bash
# Windows lane of the diagnostics dump. Builds the walker with the COM reader as
# a Windows console program (mingw-w64, static), runs it under Wine in a fresh
# prefix on an Xvfb display (without one Wine's provider fails some display
# properties), and reads the dump it writes with the Linux build's summary writer
# (fb-sysinfo). Checks the dump's structure and the summary's fields against
# Wine's provider: names and types, not values. Then runs it once more with the
# provider's DLL switched off, which must give the error line and an empty dump.
#
# Usage: tools/lanes/wine-sysinfo.sh BUILD_DIR   (packages: tools/deps/wine.txt)
# Wine's ALSA complaints on stderr are noise; its audio driver stays on, because
# the provider's Initialize fails without it.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
build=$(cd "${1:?usage: $0 BUILD_DIR}" && pwd)
summarize=$build/tools/fb-sysinfo
fixture=$root/tests/sysinfo/data/wine-dxdiag.txt
lane_start=$(date +%s.%N)
seconds_since() { awk -v a="$1" -v b="$(date +%s.%N)" 'BEGIN {printf "%.1f", b - a}'; }

work=$(mktemp -d)
export WINEPREFIX=$work/prefix WINEDEBUG=-all
cleanup() {
    wineserver -k >/dev/null 2>&1 || true
    rm -rf "$work"
    echo "wine-sysinfo lane, with cleaning up: $(seconds_since "$lane_start") s"
}
trap cleanup EXIT

failures=0
pass() { echo "PASS: $*"; }
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }
check() { # description, command...
    local what=$1
    shift
    if "$@"; then pass "$what"; else fail "$what"; fi
}

[ -x "$summarize" ] || { echo "FAIL: $summarize not built"; exit 1; }

# 1. The Windows program: the same walker sources as the Linux build.
exe=$work/dxdiagdump.exe
x86_64-w64-mingw32-g++ -std=c++17 -O2 -Wall -Wextra -Werror -static -I"$root" \
    "$root/tools/dxdiagdump/main.cpp" \
    "$root/sysinfo/dxdiagreader_win.cpp" \
    "$root/sysinfo/dxdiagdump.cpp" \
    "$root/sysinfo/dxdiagcontainer.cpp" \
    -lole32 -loleaut32 -o "$exe"
pass "built dxdiagdump.exe with x86_64-w64-mingw32-g++ -static"

winpath() { echo "Z:${1//\//\\}"; }
run_wine() { # dump file, stdout file, then environment assignments
    local dump=$1 out=$2
    shift 2
    env "$@" xvfb-run -a -s "-screen 0 1280x1024x24 -nolisten tcp" \
        wine "$exe" "$(winpath "$dump")" >"$out" 2>>"$work/wine-stderr.txt"
}

# 2. Under Wine. The first start fills the fresh prefix, which takes most of the time.
dump=$work/kvfba_dxdiag.txt
wine_start=$(date +%s.%N)
status=0
run_wine "$dump" "$work/stdout.txt" || status=$?
echo "first run in a fresh prefix (includes creating it): $(seconds_since "$wine_start") s"
check "dxdiagdump.exe exits 0 (the provider gave its root)" test "$status" -eq 0
tr -d '\r' <"$work/stdout.txt" >"$work/stdout-lf.txt"
rule=--------------------------------------
check "stdout holds both section headers with 38-hyphen rules" \
    grep -Pzq "\n$rule\nDxDiag_SystemInfo\n$rule\n\n$rule\nDxDiag_DisplayDevices\n$rule\n" "$work/stdout-lf.txt"
check "the dump file is not empty" test -s "$dump"
check "the dump has CRLF line ends (text-mode stream)" grep -q $'\r$' "$dump"
cp "$dump" "$build/wine-dxdiag.txt" 2>/dev/null || true

tr -d '\r' <"$dump" >"$work/dump-lf.txt"
# Each property line reduced to index, name and the kind of its value.
signature() {
    awk '
        /^ *[0-9]+: [A-Za-z0-9_]+: / {
            match($0, /^ *[0-9]+: [A-Za-z0-9_]+: /)
            head = substr($0, 1, RLENGTH); value = substr($0, RLENGTH + 1)
            kind = "text"
            if (value ~ /^-?[0-9]+$/) kind = "number"
            else if (value == "TRUE" || value == "FALSE") kind = "bool"
            else if (value ~ /^UNHANDLED VARIANT TYPE \([0-9]+\)$/) kind = value
            print head kind; next
        }
        /^\([0-9]+ properties\)$/ { print "(properties)"; next }
        /^\([0-9]+ child container\(s\)\)$/ { print $0; next }
        /^Container [0-9]+ / { print $0; next }
        /^$/ { next }
        { print "OTHER: " $0 }
    ' "$1"
}
if signature "$work/dump-lf.txt" | grep -q '^OTHER: '; then
    fail "lines the walker does not write:"; signature "$work/dump-lf.txt" | grep '^OTHER: ' | head -5
else
    pass "every line is a property, count, child-count or container line"
fi
for expected in "dwOSMajorVersion: number" "dwDirectXVersionMajor: number" "bDebug: bool" \
    "szDirectXVersionLongEnglish: text" "szPhysicalMemoryEnglish: text" "szProcessorEnglish: text" \
    "szOSExLongEnglish: text" "szDeviceName: text" "szDisplayModeEnglish: text" "szDriverVersion: text" \
    "b3DAccelerationEnabled: bool" "dwWidth: number"; do
    check "property $expected" grep -q ": $expected\$" <(signature "$work/dump-lf.txt")
done
check "two sections: system (no children) and displays (at least one child)" \
    grep -Pzq "^\(properties\)\n(.*\n)*\(0 child container\(s\)\)\n\(properties\)\n\([1-9][0-9]* child container\(s\)\)\nContainer 0 '0'\n" \
    <(signature "$work/dump-lf.txt")
tr -d '\r' <"$fixture" >"$work/fixture-lf.txt"
if diff <(signature "$work/fixture-lf.txt") <(signature "$work/dump-lf.txt") >"$work/signature.diff"; then
    pass "names and value kinds match the recorded dump tests/sysinfo/data/wine-dxdiag.txt"
else
    fail "names or value kinds differ from the recorded dump:"
    head -20 "$work/signature.diff"
fi

# 3. The summary of Wine's dump, read by the Linux build.
summary=$("$summarize" "$dump")
echo "summary: $summary"
field='"[^"]*"'
check "summary has the five fields in Wine's order" \
    grep -Eq "^\{ \"DirectXVersion\" : $field, \"PhysicalMemory\" : $field, \"Processor\" : $field, \"OS\" : $field, \"Display\" : $field \}\$" <<<"$summary"
# The values alone, a display's parts one a line (they are joined by a plain "; ").
values=$(grep -Eo '" : "[^"]*"' <<<"$summary" | sed -e 's/^" : "//' -e 's/"$//' -e 's/; /\n/g')
if grep -q '[ ()\\]' <<<"$values"; then
    fail "a value holds a blank, backslash or parenthesis: not percent-encoded"
else
    pass "values are percent-encoded (no blank, backslash or parenthesis left)"
fi
check "physical memory reads as <n>MB RAM" grep -Eq '"PhysicalMemory" : "[0-9]+MB%20RAM"' <<<"$summary"
check "the display starts with its device name \\\\.\\DISPLAYn" grep -Eq '"Display" : "%5C%5C.%5CDISPLAY[0-9]+; ' <<<"$summary"
check "Wine's stray '= \"' before the DirectX version is sent as it stands" \
    grep -q '"DirectXVersion" : "%3D%20%22DirectX' <<<"$summary"
readable=$("$summarize" --readable "$dump")
check "the readable form has one line per field" test "$(wc -l <<<"$readable")" -eq 5

# 4. The provider's DLL switched off: CoCreateInstance fails.
dump2=$work/failed_dxdiag.txt
status=0
run_wine "$dump2" "$work/stdout2.txt" WINEDLLOVERRIDES=dxdiagn=d || status=$?
check "without the provider dxdiagdump.exe exits 3 (no root)" test "$status" -eq 3
check "the error line reaches stdout" grep -q 'DxDiag Error: Unable to create provider instance' "$work/stdout2.txt"
check "no section headers without the root" bash -c '! grep -q DxDiag_SystemInfo "$1"' _ "$work/stdout2.txt"
check "the dump file exists and is empty" test -f "$dump2" -a ! -s "$dump2"
check "its summary is '{  }'" test "$("$summarize" "$dump2")" = "{  }"

if [ "$failures" -ne 0 ]; then
    echo "wine-sysinfo: $failures check(s) failed"
    exit 1
fi
echo "wine-sysinfo: all checks passed"
