#!/bin/bash
# Builds the program and runs the whole test suite: the normal build, the
# AddressSanitizer + UndefinedBehaviorSanitizer build, then every extra lane in
# tools/lanes/. Needs the packages of tools/install-deps.sh.
#
# Every lane runs even when an earlier one failed (a lane whose build failed is
# skipped), so one run tells about all of them; the status is nonzero when any failed.
# The last lines are a table of each lane's outcome and time.
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/tools/utf8-locale.sh"
cd "$root"
jobs=$(nproc)
export CCACHE_BASEDIR="$root"
export CTEST_OUTPUT_ON_FAILURE=1

summary=()
failed=0
# lane <name> <command...>: runs one lane, records its outcome and time.
lane() {
    local name=$1
    shift
    echo
    echo "=== $name ==="
    local start status
    start=$(date +%s)
    "$@"
    status=$?
    local outcome=passed
    if [ "$status" -ne 0 ]; then
        outcome="FAILED (exit $status)"
        failed=1
    fi
    summary+=("$(printf '%-40s %6d s  %s' "$name" $(($(date +%s) - start)) "$outcome")")
    return "$status"
}
skipped() {
    summary+=("$(printf '%-40s %6s    %s' "$1" - "skipped: $2")")
    failed=1
}

# The configure presets of CMakePresets.json: linux (build/), asan (build-asan/).
build_normal() {
    cmake --preset linux && cmake --build --preset linux -j"$jobs"
}
test_normal() {
    (cd build && ctest -j"$jobs" --timeout 600 --no-tests=error)
}
build_sanitized() {
    cmake --preset asan && cmake --build --preset asan -j"$jobs"
}
test_sanitized() {
    (cd build-asan &&
        ASAN_OPTIONS=detect_leaks=1:abort_on_error=0:strict_string_checks=1:suppressions="$root/tools/asan.supp" \
            UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 ctest -j"$jobs" --timeout 900 --no-tests=error)
}

normal_build=0
if lane "build" build_normal; then
    normal_build=1
    lane "tests" test_normal
else
    skipped "tests" "the build failed"
fi
if lane "sanitizer build (ASan + UBSan)" build_sanitized; then
    lane "tests under ASan + UBSan" test_sanitized
else
    skipped "tests under ASan + UBSan" "the sanitizer build failed"
fi
for script in tools/lanes/*.sh; do
    [ -e "$script" ] || continue
    if [ "$normal_build" = 1 ]; then
        lane "lane $(basename "$script" .sh)" bash "$script" "$root/build"
    else
        skipped "lane $(basename "$script" .sh)" "the build failed"
    fi
done

echo
echo "lane times:"
printf '%s\n' "${summary[@]}"
if [ "$failed" -ne 0 ]; then
    echo "some lanes failed"
    exit 1
fi
echo "all lanes passed"
