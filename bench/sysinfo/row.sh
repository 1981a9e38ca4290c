#!/bin/bash
# System information: the Linux description and the whole summary job on this
# machine, and the GUI thread's longest event-loop stall while the worker runs.
set -euo pipefail
build=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -m 700 "$work/runtime"
export TMPDIR=$work XDG_RUNTIME_DIR=$work/runtime QT_QPA_PLATFORM=offscreen
"$build/bench/sysinfo/bench_sysinfo" "${FB_BENCH_RUNS:-15}"
