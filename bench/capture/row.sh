#!/bin/bash
# Capture overlay: one drag step of the enhanced band at 3840 x 2160 (mouse move
# handled and overlay repainted), offscreen and on a 3840x2160 Xvfb; median of 300.
set -euo pipefail
build=$1
program=$build/bench/capture/bench_capture_drag
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export HOME=$work XDG_CONFIG_HOME=$work TMPDIR=$work XDG_RUNTIME_DIR=$work/runtime QT_XCB_GL_INTEGRATION=none
mkdir -m 700 "$work/runtime"

QT_QPA_PLATFORM=offscreen "$program" > "$work/offscreen.txt"
FB_IN_XVFB=1 QT_QPA_PLATFORM=xcb xvfb-run -a -s "-screen 0 3840x2160x24" "$program" > "$work/xcb.txt" 2>/dev/null

row() { # file scenario label how
    read -r _ median p90 steps paints < <(grep "^$2 " "$1")
    echo "| capture $3 | $median | µs (median of $steps; p90 $p90) | $4; band painted $paints times a step |"
}
row "$work/offscreen.txt" move-label "drag step, label move 600x400, 3840x2160" "offscreen, move + processEvents"
row "$work/offscreen.txt" resize-corner "drag step, corner resize, 3840x2160" "offscreen, move + processEvents"
row "$work/xcb.txt" move-label "drag step, label move 600x400, 3840x2160 X" "Xvfb 3840x2160, incl. flush to X"
row "$work/xcb.txt" resize-corner "drag step, corner resize, 3840x2160 X" "Xvfb 3840x2160, incl. flush to X"
row "$work/xcb.txt" full-repaint "full overlay repaint, 3840x2160 X" "Xvfb, QWidget::repaint of the whole overlay"
