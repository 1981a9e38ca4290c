#!/bin/bash
# Upload: attachments sent through the real window (offscreen) to the loopback receiver,
# which reads and discards the body, alternated with curl -F posting the same file to
# the same receiver in the same run as the yardstick.
# - Plain loopback, 100 MiB and 1 GiB: throughput, the program's RSS growth during the
#   send (which should not depend on the file's size), processor time per GiB, and the
#   worst lateness of a timer on the GUI thread, next to the same timer with no send.
# - Shaped links (a token bucket on the loopback of a private network namespace):
#   64 MiB at 100 Mbit/s and 256 MiB at 1 Gbit/s: time against curl's and processor
#   seconds per GiB sent, the program's and curl's.
set -euo pipefail
build=$1
runs=${FB_BENCH_RUNS:-3}
# The window holds TCP port 23709 while it runs; where we may, run in a network
# namespace of our own so that an agent or a test running next to us cannot clash,
# and so that shaping its loopback touches nothing else.
if [ "${FB_BENCH_NETNS:-}" != 1 ] && [ "$(id -u)" = 0 ] && unshare -n true 2>/dev/null; then
    FB_BENCH_NETNS=1 exec unshare -n bash -c 'ip link set lo up && exec bash "$0" "$@"' "$0" "$@"
fi
driver=$build/bench/upload/bench_upload_driver
receiver=$(find "$build" -maxdepth 3 -type f -name fb_httpreceiver | head -n 1)
work=$(mktemp -d)
export HOME=$work/home XDG_CONFIG_HOME=$work/config TMPDIR=$work/tmp QT_QPA_PLATFORM=offscreen
mkdir -p "$HOME" "$XDG_CONFIG_HOME" "$TMPDIR"

"$receiver" --discard >"$work/receiver.log" &
receiver_pid=$!
trap 'kill $receiver_pid 2>/dev/null || true; rm -rf "$work"' EXIT
for _ in $(seq 100); do grep -q '^listening' "$work/receiver.log" && break; sleep 0.05; done
url="http://127.0.0.1:$(awk '/^listening/ {print $2}' "$work/receiver.log")/"

median() { sort -n | awk '{a[NR]=$1} END {print (NR%2) ? a[(NR+1)/2] : (a[NR/2]+a[NR/2+1])/2}'; }
calc() { awk "BEGIN {printf \"$1\", $2}"; }

# send_both <file> [--lateness]: one send by the program, then one by curl. Appends
# "seconds idle-KiB peak-KiB cpu-seconds lateness-ms" to agent.txt and
# "seconds cpu-seconds" to curl.txt.
send_both() {
    # Only the figures line; the window's worker also writes section headers.
    "$driver" "$url" "$@" 2>>"$work/driver.log" | grep -E '^[0-9.]+ [0-9]+ [0-9]+ [0-9.]+ [0-9.]+$' >>"$work/agent.txt"
    /usr/bin/time -f '%U %S' -o "$work/curl-cpu.txt" curl -s -o /dev/null -w '%{time_total}\n' \
        -F 'identity={ }' -F "scene.bin=@$1;type=application/octet-stream" "$url" >"$work/curl-time.txt"
    echo "$(cat "$work/curl-time.txt") $(awk '{print $1 + $2}' "$work/curl-cpu.txt")" >>"$work/curl.txt"
}

# measure <MiB> [--lateness]: alternated sends of a file of that size; leaves the medians in
# agent_s, curl_s, agent_cpu_gib, curl_cpu_gib, growth_kib, idle_kib, late_ms.
measure() {
    local mib=$1
    file=$work/scene-$mib.bin
    head -c $((mib * 1024 * 1024)) /dev/urandom >"$file"
    : >"$work/agent.txt"
    : >"$work/curl.txt"
    for _ in $(seq "$runs"); do send_both "$file" "${@:2}"; done
    rm -f "$file"
    agent_s=$(cut -d' ' -f1 "$work/agent.txt" | median)
    curl_s=$(cut -d' ' -f1 "$work/curl.txt" | median)
    agent_cpu_gib=$(awk -v m="$mib" '{print $4 * 1024 / m}' "$work/agent.txt" | median)
    curl_cpu_gib=$(awk -v m="$mib" '{print $2 * 1024 / m}' "$work/curl.txt" | median)
    idle_kib=$(cut -d' ' -f2 "$work/agent.txt" | median)
    growth_kib=$(awk '{print $3 - $2}' "$work/agent.txt" | median)
    late_ms=$(cut -d' ' -f5 "$work/agent.txt" | median)
}

# The timer that measures the GUI thread's lateness wakes that thread itself, so the
# processor time on the plain loopback includes it; the shaped rows run without it.
for mib in 100 1024; do
    measure "$mib" --lateness
    label="upload $mib MiB"
    echo "| $label, feedbackagent | $(calc %.0f "$mib / $agent_s") | MiB/s (median of $runs) | Send to outcome box, loopback receiver discarding |"
    echo "| $label, curl -F | $(calc %.0f "$mib / $curl_s") | MiB/s (median of $runs) | same file and receiver, alternated |"
    echo "| $label, throughput agent / curl | $(calc %.2f "$curl_s / $agent_s") | x | |"
    echo "| $label, processor time per GiB, feedbackagent / curl | $(calc %.2f "$agent_cpu_gib") / $(calc %.2f "$curl_cpu_gib") | s/GiB (median) | user + system, whole process during the send, lateness timer included |"
    echo "| $label, RSS growth during the send | $((growth_kib / 1024)) | MiB (median) | VmHWM after minus VmRSS at Send (idle $((idle_kib / 1024)) MiB) |"
done
# The last measure was the 1 GiB one: its timer lateness, then the same timer with no send.
idle_late_ms=$(for _ in $(seq "$runs"); do "$driver" --idle 3 2>/dev/null | grep -E '^[0-9.]+ ' ; done | cut -d' ' -f5 | median)
echo "| GUI thread, worst lateness of a 5 ms timer during the 1 GiB send | $late_ms | ms (median of $runs) | Qt::PreciseTimer on the window's thread |"
echo "| GUI thread, worst lateness of the same timer, no send | $idle_late_ms | ms (median of $runs) | window shown, 3 s |"

# Shaped links: a token bucket filter on the loopback (this kernel has no netem). Only
# in our own namespace: never shape a loopback that others use.
if [ "${FB_BENCH_NETNS:-}" = 1 ] && command -v tc >/dev/null; then
    for link in "100mbit 64 256kb" "1gbit 256 1mb"; do
        read -r rate mib burst <<<"$link"
        tc qdisc replace dev lo root tbf rate "$rate" burst "$burst" latency 50ms
        measure "$mib"
        label="upload $mib MiB at ${rate/bit/bit\/s}"
        echo "| $label, time agent / curl | $(calc %.2f "$agent_s / $curl_s") | x (median of $runs each) | $(calc %.2f "$agent_s") s against $(calc %.2f "$curl_s") s, alternated; tbf burst $burst on a private loopback |"
        echo "| $label, processor time per GiB, feedbackagent | $(calc %.2f "$agent_cpu_gib") | s/GiB (median) | user + system, whole process during the send |"
        echo "| $label, processor time per GiB, curl -F | $(calc %.2f "$curl_cpu_gib") | s/GiB (median) | same |"
        echo "| $label, processor time agent / curl | $(calc %.2f "$agent_cpu_gib / $curl_cpu_gib") | x | |"
    done
    tc qdisc del dev lo root
else
    echo "| upload on shaped links | skipped | | needs root, unshare -n and tc |"
fi
