#!/bin/bash
# Start-up: time from process start to the main window mapped under Xvfb, against a
# bare QMainWindow of the same size shown by a tiny program in the same run; peak RSS of both.
set -euo pipefail
build=$1
root=$(cd "$(dirname "$0")/../.." && pwd)
runs=${FB_BENCH_RUNS:-7}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export HOME=$work/home XDG_CONFIG_HOME=$work/config TMPDIR=$work/tmp QT_XCB_GL_INTEGRATION=none
mkdir -p "$HOME" "$XDG_CONFIG_HOME" "$TMPDIR"

measure() { # program -> lines "ms rss"
    for _ in $(seq "$runs"); do "$build/bench/startup/bench_time_to_window" "$@"; done
}
median() { sort -n | awk '{a[NR]=$1} END {print (NR%2) ? a[(NR+1)/2] : (a[NR/2]+a[NR/2+1])/2}'; }

FB_IN_XVFB=1 xvfb-run -a -s "-screen 0 1920x1080x24" bash -c "
    openbox --sm-disable >/dev/null 2>&1 &
    sleep 0.5
    $(declare -f measure)
    build='$build' runs=$runs
    measure '$build/bench/startup/bench_bare_window' > '$work/bare.txt'
    measure '$build/feedbackagent' > '$work/agent.txt'
" >/dev/null 2>&1

bare_ms=$(cut -d' ' -f1 "$work/bare.txt" | median)
agent_ms=$(cut -d' ' -f1 "$work/agent.txt" | median)
bare_rss=$(cut -d' ' -f2 "$work/bare.txt" | median)
agent_rss=$(cut -d' ' -f2 "$work/agent.txt" | median)
ratio=$(awk -v a="$agent_ms" -v b="$bare_ms" 'BEGIN {printf "%.2f", a / b}')
echo "| start-up to window mapped, feedbackagent | $agent_ms | ms (median of $runs) | Xvfb 1920x1080 + openbox |"
echo "| start-up to window mapped, bare QMainWindow | $bare_ms | ms (median of $runs) | same run |"
echo "| start-up ratio agent / bare | $ratio | x | |"
echo "| peak RSS, feedbackagent | $((agent_rss / 1024)) | MiB | wait4 ru_maxrss |"
echo "| peak RSS, bare QMainWindow | $((bare_rss / 1024)) | MiB | wait4 ru_maxrss |"
