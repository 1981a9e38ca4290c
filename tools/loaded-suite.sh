#!/bin/bash
# Runs the test suite of a build folder several times in a row while stress-ng keeps
# every core busy, as a loaded CI machine would, and prints each run's outcome and time.
# A test that fails here waits for something with a fixed sleep or too short a deadline.
#   tools/loaded-suite.sh [runs (default 5)] [build folder (default build)]
# Needs stress-ng (tools/deps/base.txt) and a build made by tools/test.sh.
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/tools/utf8-locale.sh"
runs=${1:-5}
build=$(cd "$root/${2:-build}" && pwd) || exit 2
command -v stress-ng >/dev/null || { echo "stress-ng is not installed"; exit 2; }

stress-ng --cpu "$(nproc)" --quiet &
stress=$!
trap 'kill "$stress" 2>/dev/null; wait "$stress" 2>/dev/null' EXIT

export CTEST_OUTPUT_ON_FAILURE=1
failed=0
for run in $(seq 1 "$runs"); do
    start=$(date +%s)
    log=$build/loaded-run-$run.log
    (cd "$build" && ctest -j"$(nproc)" --timeout 900 --no-tests=error) >"$log" 2>&1
    status=$?
    summary=$(grep -E 'tests passed|tests failed' "$log" | tail -n 1)
    echo "run $run: exit $status after $(($(date +%s) - start)) s: $summary"
    if [ "$status" -ne 0 ]; then
        failed=1
        grep -E '\*\*\*Failed|\*\*\*Timeout|\(Failed\)|\(Timeout\)' "$log"
    fi
done
exit "$failed"
