#!/bin/sh
# Runs one command with the capture test pattern on the X root window of $DISPLAY, and
# gives the root its default background back afterwards. For the Windows capture tests
# under Wine: Wine's grab of the screen sees the X root, which a Windows program cannot
# paint itself. FB_ROOT_PATTERN_PAINTER is the painter (root_pattern.c, built for this
# machine); the exit status is the command's.
set -eu
painter=${FB_ROOT_PATTERN_PAINTER:?the root pattern painter}
"$painter"
status=0
"$@" || status=$?
"$painter" --default || true
exit $status
