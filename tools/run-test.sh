#!/bin/sh
# Runs one test program and prints its exit status as the last line. CTest passes a
# test on QtTest's closing line and then ignores the exit status, so this line is
# what lets it fail a test that crashes or aborts after that line.
status=0
"$@" || status=$?
echo "fb-test-exit-status=$status"
exit $status
