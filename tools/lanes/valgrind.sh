#!/bin/bash
# Memcheck lane: every test that needs no X server or Wayland desktop, run under valgrind's memcheck in the
# normal build ($1). A memcheck error makes the test's process exit 99, which fails it.
# tools/valgrind.supp holds only reports from Qt's and fontconfig's own code, each named
# with why; harness/memcheck_canary (in the normal suite) proves that a program error
# still comes through. Leaks are the sanitizer lane's.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
build=$(cd "${1:?usage: $0 BUILD_DIR}" && pwd)
command -v valgrind >/dev/null || { echo "valgrind is not installed (tools/deps/valgrind.txt)"; exit 1; }

# QRegularExpression's PCRE2 JIT writes machine code that memcheck cannot follow
# (reports with no frames at all); the interpreter matches the same.
export QT_ENABLE_REGEXP_JIT=0
export FB_TEST_VALGRIND="valgrind --tool=memcheck --error-exitcode=99 --leak-check=no --num-callers=40 --suppressions=$root/tools/valgrind.supp"
cd "$build"
ctest -j"$(nproc)" --timeout 1800 --label-exclude 'x11|wayland|harness' --no-tests=error
