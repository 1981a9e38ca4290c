#!/bin/bash
# Start-up: time from process start to the main window mapped under Xvfb, against the
# program's own form alone on a bare QMainWindow (bench_form_alone) in the same run; peak RSS of both.
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
    measure '$build/bench/startup/bench_form_alone' > '$work/bare.txt'
    measure '$build/feedbackagent' > '$work/agent.txt'
    for i in \$(seq $runs); do
        QT_LOGGING_RULES=feedbackagent.startup.debug=true '$build/bench/startup/bench_time_to_window' \
            '$build/feedbackagent' 2>'$work/trace-'\$i'.txt' >/dev/null
    done
" >/dev/null 2>&1

bare_ms=$(cut -d' ' -f1 "$work/bare.txt" | median)
agent_ms=$(cut -d' ' -f1 "$work/agent.txt" | median)
bare_rss=$(cut -d' ' -f2 "$work/bare.txt" | median)
agent_rss=$(cut -d' ' -f2 "$work/agent.txt" | median)
ratio=$(awk -v a="$agent_ms" -v b="$bare_ms" 'BEGIN {printf "%.2f", a / b}')
echo "| start-up to window mapped, feedbackagent | $agent_ms | ms (median of $runs) | Xvfb 1920x1080 + openbox |"
echo "| start-up to window mapped, form alone | $bare_ms | ms (median of $runs) | same run |"
echo "| start-up ratio agent / form alone | $ratio | x | |"
# Where the time goes: the program's own start-up marks (app/startuptrace.h), each the
# median over the traced runs of the milliseconds from main to that mark. What comes
# before main (loading and linking the libraries) is not in them.
cat "$work"/trace-*.txt | sed -n 's/^feedbackagent.startup: startup //p' |
    awk '{ms = $1; $1 = ""; stage = substr($0, 2); if (!(stage in seen)) {seen[stage] = 1; order[++n] = stage}
          values[stage] = values[stage] " " ms}
         END {for (i = 1; i <= n; ++i) print order[i] "\t" values[order[i]]}' |
    while IFS=$'\t' read -r stage values; do
        echo "| start-up mark: $stage | $(tr ' ' '\n' <<<"$values" | sed '/^$/d' | median) | ms from main (median) | QT_LOGGING_RULES=feedbackagent.startup.debug=true |"
    done
echo "| peak RSS, feedbackagent | $((agent_rss / 1024)) | MiB | wait4 ru_maxrss |"
echo "| peak RSS, form alone | $((bare_rss / 1024)) | MiB | wait4 ru_maxrss |"

# The same under Wine, when the Windows build is there (tools/lanes/win64.sh makes it):
# a fresh prefix, its services kept up by one waiting process, then each program
# started the same number of times. The clock runs from the start of the Wine loader.
win=${FB_BENCH_WIN64_BUILD:-$root/build-win64}
qt_prefix=$(sed -n 's/^FB_WIN_QT_PREFIX:PATH=//p' "$win/CMakeCache.txt" 2>/dev/null || true)
wine=$(command -v wine64 || echo /usr/lib/wine/wine64)
if [ -x "$wine" ] && [ -f "$win/feedbackagent.exe" ] && [ -f "$win/bench/startup/bench_form_alone.exe" ] &&
    [ -n "$qt_prefix" ]; then
    export WINEPREFIX=$work/prefix WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
    export WINEPATH="Z:$qt_prefix/bin;Z:/usr/lib/gcc/x86_64-w64-mingw32/12-posix;Z:/usr/x86_64-w64-mingw32/lib"
    FB_IN_XVFB=1 xvfb-run -a -s "-screen 0 1920x1080x24" bash -c "
        openbox --sm-disable >/dev/null 2>&1 &
        wineboot --init >/dev/null 2>&1; wineserver -w
        mkfifo '$work/hold'
        '$wine' cmd <'$work/hold' >/dev/null 2>&1 &
        exec 3>'$work/hold'
        $(declare -f measure)
        build='$build' runs=$runs
        measure '$wine' '$win/bench/startup/bench_form_alone.exe' > '$work/wine-bare.txt'
        measure '$wine' '$win/feedbackagent.exe' > '$work/wine-agent.txt'
        exec 3>&-
        wineserver -k
    " >/dev/null 2>&1
    wine_bare_ms=$(cut -d' ' -f1 "$work/wine-bare.txt" | median)
    wine_agent_ms=$(cut -d' ' -f1 "$work/wine-agent.txt" | median)
    wine_ratio=$(awk -v a="$wine_agent_ms" -v b="$wine_bare_ms" 'BEGIN {printf "%.2f", a / b}')
    echo "| start-up to window mapped under Wine, feedbackagent.exe | $wine_agent_ms | ms (median of $runs) | Wine $("$wine" --version 2>/dev/null | sed 's/^wine-//'), warm prefix, Xvfb + openbox |"
    echo "| start-up to window mapped under Wine, form alone | $wine_bare_ms | ms (median of $runs) | same run |"
    echo "| start-up ratio under Wine, agent / form alone | $wine_ratio | x | |"
fi
