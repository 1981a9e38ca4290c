#!/bin/bash
# Form state: one recompute of the whole form on the compose screen, for an empty and a
# complete bug report, and a keystroke (edit plus recompute) with and without gaps left.
set -euo pipefail
build=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export HOME=$work/home XDG_CONFIG_HOME=$work/config TMPDIR=$work/tmp QT_QPA_PLATFORM=offscreen
mkdir -p "$HOME" "$XDG_CONFIG_HOME" "$TMPDIR"
timeout 120 "$build/bench/formstate/bench_form_recompute" 2>/dev/null > "$work/out.txt"
value() { awk -v k="$1" '$1 == k {print $2}' "$work/out.txt"; }
how="median of 15 rounds x 400 calls, offscreen"
echo "| slot_set_control_states, empty bug report | $(value recompute_empty) | µs per call | $how |"
echo "| slot_set_control_states, complete bug report | $(value recompute_complete) | µs per call | $how |"
echo "| keystroke in edit_Description, other tabs incomplete | $(value keystroke_description_incomplete) | µs per key | $how |"
echo "| keystroke in line_Name, report complete | $(value keystroke_name_complete) | µs per key | $how |"
