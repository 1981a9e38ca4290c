#!/bin/bash
# Upload: one 100 MiB and one 1 GiB attachment sent through the real window (offscreen)
# to the loopback receiver, which reads and discards the body; curl -F posts the same
# file to the same receiver in the same run as the yardstick. Also the program's RSS
# growth during the send, which should not depend on the file's size.
set -euo pipefail
build=$1
runs=${FB_BENCH_RUNS:-3}
# The window holds TCP port 23709 while it runs; where we may, run in a network
# namespace of our own so that an agent or a test running next to us cannot clash.
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

for mib in 100 1024; do
    file=$work/scene-$mib.bin
    head -c $((mib * 1024 * 1024)) /dev/urandom >"$file"
    : >"$work/agent.txt"
    : >"$work/curl.txt"
    for _ in $(seq "$runs"); do
        # Only the figures line; the window's worker also writes section headers.
        "$driver" "$url" "$file" 2>>"$work/driver.log" | grep -E '^[0-9.]+ [0-9]+ [0-9]+$' >>"$work/agent.txt"
        curl -s -o /dev/null -w '%{time_total}\n' -F 'identity={ }' \
            -F "scene.bin=@$file;type=application/octet-stream" "$url" >>"$work/curl.txt"
    done
    agent_s=$(cut -d' ' -f1 "$work/agent.txt" | median)
    curl_s=$(median <"$work/curl.txt")
    idle_kib=$(cut -d' ' -f2 "$work/agent.txt" | median)
    growth_kib=$(awk '{print $3 - $2}' "$work/agent.txt" | median)
    agent_rate=$(awk -v m="$mib" -v s="$agent_s" 'BEGIN {printf "%.0f", m / s}')
    curl_rate=$(awk -v m="$mib" -v s="$curl_s" 'BEGIN {printf "%.0f", m / s}')
    ratio=$(awk -v a="$curl_s" -v b="$agent_s" 'BEGIN {printf "%.2f", a / b}')
    label="upload $mib MiB"
    echo "| $label, feedbackagent | $agent_rate | MiB/s (median of $runs) | Send to outcome box, loopback receiver discarding |"
    echo "| $label, curl -F | $curl_rate | MiB/s (median of $runs) | same file and receiver, same run |"
    echo "| $label, throughput agent / curl | $ratio | x | |"
    echo "| $label, RSS growth during the send | $((growth_kib / 1024)) | MiB (median) | VmHWM after minus VmRSS at Send (idle $((idle_kib / 1024)) MiB) |"
    rm -f "$file"
done
