#!/bin/bash
# Builds the program and runs the whole test suite: the normal build, the
# AddressSanitizer + UndefinedBehaviorSanitizer build, then every extra lane in
# tools/lanes/. Needs the packages of tools/install-deps.sh.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
jobs=$(nproc)
export CCACHE_BASEDIR="$root"
export CTEST_OUTPUT_ON_FAILURE=1

lane() { echo; echo "=== $* ==="; }

lane "build"
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo -DFB_BUILD_TESTS=ON -DFB_BUILD_BENCH=ON
cmake --build build -j"$jobs"

lane "tests"
(cd build && ctest -j"$jobs" --timeout 600 --no-tests=error)

lane "sanitizer build (ASan + UBSan)"
cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=Debug -DFB_SANITIZE=ON -DFB_BUILD_TESTS=ON -DFB_BUILD_BENCH=OFF
cmake --build build-asan -j"$jobs"

lane "tests under ASan + UBSan"
(cd build-asan && ASAN_OPTIONS=detect_leaks=1:abort_on_error=0:strict_string_checks=1:suppressions="$root/tools/asan.supp" \
    UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 ctest -j"$jobs" --timeout 900 --no-tests=error)

for script in tools/lanes/*.sh; do
    [ -e "$script" ] || continue
    lane "lane $(basename "$script" .sh)"
    bash "$script" "$root/build"
done
echo
echo "all lanes passed"
