#!/bin/sh
# Runs one test program and prints its exit status as the last line. CTest passes a
# test on QtTest's closing line and then ignores the exit status, so this line is
# what lets it fail a test that crashes or aborts after that line.
# FB_TEST_VALGRIND, when set, is the command the program runs under (the memcheck lane).
status=0
# shellcheck disable=SC2086
${FB_TEST_VALGRIND:-} "$@" || status=$?
echo "fb-test-exit-status=$status"
exit $status
