#!/bin/bash
# Builds the program and starts it. Without a display it starts under Xvfb and says so.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
export CCACHE_BASEDIR="$root"
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo -DFB_BUILD_TESTS=OFF -DFB_BUILD_BENCH=OFF >/dev/null
cmake --build build -j"$(nproc)" --target feedbackagent
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
    echo "No display found: starting feedbackagent under Xvfb (a virtual X server with openbox)."
    echo "Nothing will appear on screen; close it with Ctrl+C."
    exec tools/run-under-x.sh build/feedbackagent "$@"
fi
exec build/feedbackagent "$@"
