#!/bin/bash
# Start-up: the time from process start to the first paint of the main window (the
# first drawing into it that the X server sees) and to the window mapped, for the
# program against its own form alone on a bare QMainWindow (bench_form_alone: the same
# Designer form, images and style sheets, nothing else), under Xvfb + openbox. Each run
# starts one program, then the other, so that a change in the machine's load falls on
# both. Then the program's start-up marks (app/startuptrace.h) and the form alone's,
# from runs of their own with tracing on, and peak RSS. The same under Wine, in a warm
# prefix, when the Windows build is there (tools/lanes/win64.sh makes it).
set -euo pipefail
build=$1
root=$(cd "$(dirname "$0")/../.." && pwd)
runs=${FB_BENCH_RUNS:-11}
# The program holds TCP port 23709 while it runs (the single-instance guard); an agent
# or a test holding it meanwhile would make every run show the "already running" box.
# Where we may, run in a network namespace of our own.
if [ "${FB_BENCH_NETNS:-}" != 1 ] && [ "$(id -u)" = 0 ] && unshare -n true 2>/dev/null; then
    FB_BENCH_NETNS=1 exec unshare -n bash -c 'ip link set lo up && exec bash "$0" "$@"' "$0" "$@"
fi
if [ "${FB_BENCH_NETNS:-}" != 1 ] && ss -Hltn 'sport = :23709' 2>/dev/null | grep -q .; then
    echo "| start-up | not measured | | TCP port 23709 is held by another program; as root the row runs in a network namespace of its own |"
    exit 0
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export HOME=$work/home XDG_CONFIG_HOME=$work/config TMPDIR=$work/tmp QT_XCB_GL_INTEGRATION=none
mkdir -p "$HOME" "$XDG_CONFIG_HOME" "$TMPDIR" "$work/linux" "$work/wine"
timer=$build/bench/startup/bench_time_to_window

# Runs inside the X session: one discarded run of each program, then $runs alternated
# runs untraced (the headline figures), then $runs alternated runs with the start-up
# marks on. Each run leaves "<ms to map> <peak RSS KiB> <ms to first paint>" in
# <out>/<label>-<n>.txt, and a traced one its standard error in <label>-trace-<n>.txt.
# Usage: session <out> <label> <command...> -- <label> <command...>
session() {
    local out=$1 a b
    shift
    local -a first=() second=()
    a=$1
    shift
    while [ "$1" != -- ]; do first+=("$1"); shift; done
    shift
    b=$1
    shift
    second=("$@")
    "$timer" "${first[@]}" >/dev/null 2>&1 || true
    "$timer" "${second[@]}" >/dev/null 2>&1 || true
    for i in $(seq "$runs"); do
        "$timer" "${first[@]}" >"$out/$a-$i.txt" 2>/dev/null || true
        "$timer" "${second[@]}" >"$out/$b-$i.txt" 2>/dev/null || true
    done
    for i in $(seq "$runs"); do
        trace "$timer" "${first[@]}" >"$out/$a-traced-$i.txt" 2>"$out/$a-trace-$i.txt" || true
        trace "$timer" "${second[@]}" >"$out/$b-traced-$i.txt" 2>"$out/$b-trace-$i.txt" || true
    done
}
trace() {
    # Wine keeps QT_ variables from Windows programs and passes WINEQT_ ones on as QT_;
    # a windowed Windows program sends its messages to the debugger unless told otherwise.
    QT_LOGGING_RULES=feedbackagent.startup.debug=true WINEQT_LOGGING_RULES=feedbackagent.startup.debug=true \
        WINEQT_FORCE_STDERR_LOGGING=1 "$@"
}

# Figures: "median q1 q3 n" of the numbers on standard input (n = 0: no figure).
stats() {
    sort -n | awk '{a[NR] = $1}
        function at(p,   i, f) {i = 1 + (NR - 1) * p; f = int(i); return (f >= NR) ? a[NR] : a[f] + (i - f) * (a[f + 1] - a[f])}
        END {if (NR == 0) print "- - - 0"; else printf "%g %g %g %d\n", at(0.5), at(0.25), at(0.75), NR}'
}
field() { # out label column -> that column of every untraced run that finished
    cat "$1/$2"-[0-9]*.txt 2>/dev/null | awk -v c="$3" 'NF >= 3 && $c >= 0 {print $c}'
}
ratio() { awk -v a="$1" -v b="$2" 'BEGIN {if (b > 0) printf "%.2f", a / b; else print "-"}'; }
paired_ratio() { # out label-a label-b column -> median of the runs' a/b
    for i in $(seq "$runs"); do
        paste -d' ' "$1/$2-$i.txt" "$1/$3-$i.txt" 2>/dev/null |
            awk -v c="$4" 'NF >= 6 && $(c + 3) > 0 {print $c / $(c + 3)}'
    done | stats | awk '{printf "%.2f", $1}'
}
# The marks of one program: for each stage, in the order the program reaches them, the
# median over the traced runs of the milliseconds from main.
marks() { # out label name
    # A Windows program's standard error ends its lines with CR LF.
    cat "$1/$2"-trace-*.txt 2>/dev/null | tr -d '\r' | sed -n 's/^feedbackagent.startup: startup //p' |
        awk '{ms = $1; $1 = ""; stage = substr($0, 2); if (!(stage in seen)) {seen[stage] = 1; order[++n] = stage}
              values[stage] = values[stage] " " ms}
             END {for (i = 1; i <= n; ++i) print order[i] "\t" values[order[i]]}' |
        while IFS=$'\t' read -r stage values; do
            read -r med _ _ n < <(tr ' ' '\n' <<<"$values" | sed '/^$/d' | stats)
            echo "| start-up mark, $3: $stage | $med | ms from main (median of $n) | traced runs |"
        done
}
# Before main, and from the paint event to the X server: per traced run, the first
# paint the X server saw (from process start) less the program's own first-paint mark
# (from main).
before_main() { # out label
    for i in $(seq "$runs"); do
        local seen mark
        seen=$(awk 'NF >= 3 && $3 >= 0 {print $3}' "$1/$2-traced-$i.txt" 2>/dev/null || true)
        mark=$(tr -d '\r' 2>/dev/null <"$1/$2-trace-$i.txt" |
            sed -n 's/^feedbackagent.startup: startup \([0-9.]*\) first paint$/\1/p' || true)
        [ -n "$seen" ] && [ -n "$mark" ] && awk -v s="$seen" -v m="$mark" 'BEGIN {print s - m}'
    done | stats
}
report() { # out where how-suffix
    local out=$1 where=$2 note=$3
    local p_med p_q1 p_q3 p_n f_med f_q1 f_q3 f_n
    read -r p_med p_q1 p_q3 p_n < <(field "$out" agent 3 | stats)
    read -r f_med f_q1 f_q3 f_n < <(field "$out" form 3 | stats)
    echo "| start-up to first paint$where, feedbackagent | $p_med | ms (median of $p_n) | quartiles $p_q1–$p_q3; $note |"
    echo "| start-up to first paint$where, form alone | $f_med | ms (median of $f_n) | quartiles $f_q1–$f_q3; alternated with the program |"
    echo "| start-up ratio to first paint$where, program / form alone | $(ratio "$p_med" "$f_med") | x | median of the runs' own ratios: $(paired_ratio "$out" agent form 3) |"
    read -r p_med p_q1 p_q3 p_n < <(field "$out" agent 1 | stats)
    read -r f_med f_q1 f_q3 f_n < <(field "$out" form 1 | stats)
    echo "| start-up to window mapped$where, feedbackagent | $p_med | ms (median of $p_n) | quartiles $p_q1–$p_q3 |"
    echo "| start-up to window mapped$where, form alone | $f_med | ms (median of $f_n) | quartiles $f_q1–$f_q3 |"
    echo "| start-up ratio to window mapped$where, program / form alone | $(ratio "$p_med" "$f_med") | x | median of the runs' own ratios: $(paired_ratio "$out" agent form 1) |"
    marks "$out" agent "feedbackagent$where"
    marks "$out" form "form alone$where"
    read -r p_med _ _ p_n < <(before_main "$out" agent)
    read -r f_med _ _ f_n < <(before_main "$out" form)
    echo "| before main and after the paint event$where, feedbackagent | $p_med | ms (median of $p_n) | first paint seen by the X server less the first-paint mark |"
    echo "| before main and after the paint event$where, form alone | $f_med | ms (median of $f_n) | same |"
    read -r p_med _ _ _ < <(field "$out" agent 2 | stats)
    read -r f_med _ _ _ < <(field "$out" form 2 | stats)
    echo "| peak RSS$where, feedbackagent | $(awk -v k="$p_med" 'BEGIN {printf "%d", k / 1024}') | MiB | wait4 ru_maxrss |"
    echo "| peak RSS$where, form alone | $(awk -v k="$f_med" 'BEGIN {printf "%d", k / 1024}') | MiB | wait4 ru_maxrss |"
}

FB_IN_XVFB=1 xvfb-run -a -s "-screen 0 1920x1080x24" bash -c "
    openbox --sm-disable >/dev/null 2>&1 &
    sleep 0.5
    $(declare -f session trace)
    timer='$timer' runs=$runs
    session '$work/linux' form '$build/bench/startup/bench_form_alone' -- agent '$build/feedbackagent'
" >/dev/null 2>&1
report "$work/linux" "" "Xvfb 1920x1080 + openbox"

# Under Wine: a fresh prefix, its services kept up by one waiting process, so that every
# measured start finds the prefix warm. The clock runs from the start of the Wine loader;
# the peak RSS is the loader's process, which becomes the Windows program.
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
        $(declare -f session trace)
        timer='$timer' runs=$runs
        session '$work/wine' form '$wine' '$win/bench/startup/bench_form_alone.exe' -- agent '$wine' '$win/feedbackagent.exe'
        exec 3>&-
        wineserver -k
    " >/dev/null 2>&1
    report "$work/wine" " under Wine" "Wine $("$wine" --version 2>/dev/null | sed 's/^wine-//'), warm prefix, Xvfb + openbox"
fi
