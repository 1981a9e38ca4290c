#!/bin/bash
# Builds the program and starts it. Without a display it starts under Xvfb and says so.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
export CCACHE_BASEDIR="$root"
# Its own build folder (the "program" preset): the test build in build/ keeps its options.
cmake --preset program >/dev/null
cmake --build --preset program -j"$(nproc)" --target feedbackagent
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
    echo "No display found: starting feedbackagent under Xvfb (a virtual X server with openbox)."
    echo "Nothing will appear on screen; close it with Ctrl+C."
    exec tools/run-under-x.sh build-program/feedbackagent "$@"
fi
exec build-program/feedbackagent "$@"
