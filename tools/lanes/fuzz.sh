#!/bin/bash
# Fuzzing lane: builds the libFuzzer targets of fuzz/ with clang in build-fuzz/ and runs
# each for a bounded time. $1 (the normal build folder) is not needed: the targets are
# compiled with the fuzzer's instrumentation in a folder of their own.
#   FB_FUZZ_SECONDS  time per target (default 60)
# A crash, a sanitizer report or a broken round trip fails the lane; the input that
# caused it is kept as build-fuzz/artifacts/<target>/crash-*.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
. "$root/tools/utf8-locale.sh"
build=$root/build-fuzz
seconds=${FB_FUZZ_SECONDS:-60}
export CCACHE_BASEDIR=$root

CC=clang CXX=clang++ cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DFB_FUZZ=ON -DFB_BUILD_TESTS=OFF -DFB_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" -j"$(nproc)" --target fuzz_launchoptions fuzz_settingsload fuzz_clipboardblock fuzz_dumpsummary

# A private network namespace keeps the settings target's window off the guard port of
# a program or test running beside it, and keeps e-mail checks of fuzzed addresses away
# from real name servers.
isolate=()
if unshare -rn true 2>/dev/null; then
    isolate=(unshare -rn)
else
    echo "note: no private network namespace available; fuzzing in the shared one"
fi

# ASan keeps up to 256 MiB of freed memory in quarantine; a small one lets the 512 MiB
# limit of the outside-bytes targets measure what the target itself holds.
export ASAN_OPTIONS=quarantine_size_mb=16
export LSAN_OPTIONS=suppressions=$root/tools/lsan.supp:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1

# fuzz <target> <name> [libFuzzer options...]: runs a target on the seed corpus
# fuzz/corpus/<name> (and fuzz/<name>.dict where there is one).
fuzz() {
    local target=$1 name=$2
    shift 2
    local corpus=$build/corpus/$name artifacts=$build/artifacts/$name log=$build/$target.log
    local options=(-max_total_time="$seconds" -timeout=10 -print_final_stats=1 -artifact_prefix="$artifacts/")
    [ -f "$root/fuzz/$name.dict" ] && options+=(-dict="$root/fuzz/$name.dict")
    mkdir -p "$corpus" "$artifacts"
    echo "--- $target: ${seconds}s"
    local status=0
    "${isolate[@]}" "$build/fuzz/$target" "${options[@]}" "$@" "$corpus" "$root/fuzz/corpus/$name" >"$log" 2>&1 || status=$?
    if [ "$status" -ne 0 ]; then
        tail -n 60 "$log"
        echo "$target failed (exit $status); inputs kept in $artifacts"
        return "$status"
    fi
    local runs
    runs=$(awk '/^stat::number_of_executed_units/ {print $2}' "$log")
    echo "$target: $runs inputs run, no crash; corpus $(find "$corpus" -type f | wc -l) files"
}

fuzz fuzz_launchoptions launchoptions -rss_limit_mb=2048
fuzz fuzz_settingsload settingsload -rss_limit_mb=2048
# The readers of outside bytes: a size bomb (an allocation or a process beyond 512 MiB)
# counts as a failure.
fuzz fuzz_clipboardblock clipboardblock -rss_limit_mb=512 -malloc_limit_mb=512
fuzz fuzz_dumpsummary dumpsummary -rss_limit_mb=512 -malloc_limit_mb=512
