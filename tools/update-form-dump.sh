#!/bin/bash
# Writes tests/form/data/mainwindow.dump anew from the form as it is now. The test
# form/form_layout compares the Designer form with that file line by line, so after a
# change to form/mainwindow.ui (or to a resource image the form shows):
#
#   tools/update-form-dump.sh [build-dir]    (default: build, configured with the linux preset)
#   git diff tests/form/data/mainwindow.dump  shows what the change did to the built form;
#                                            commit the file with the form.
#
# It builds the test program and runs it through CTest with FB_FORM_DUMP_WRITE naming the
# file, so the record is made with the test's own platform (offscreen), fonts and locale.
# Builds take turns with other builds on the machine through /tmp/fb-build.lock.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/tools/utf8-locale.sh"
cd "$root"
build=${1:-build}
dump=$root/tests/form/data/mainwindow.dump
export CCACHE_BASEDIR="$root"
if [ ! -f "$build/CMakeCache.txt" ]; then
    if [ "$build" != build ]; then
        echo "update-form-dump: $build is not a configured build folder" >&2
        exit 2
    fi
    cmake --preset linux >/dev/null
fi
flock /tmp/fb-build.lock cmake --build "$build" -j2 --target tst_form_layout
before=$(mktemp)
trap 'rm -f "$before"' EXIT
cp "$dump" "$before" 2>/dev/null || true
FB_FORM_DUMP_WRITE=$dump ctest --test-dir "$build" -R '^form/form_layout$' --output-on-failure
if cmp -s "$before" "$dump"; then
    echo "update-form-dump: $dump is unchanged"
else
    git --no-pager diff --stat -- "$dump"
    echo "update-form-dump: rewrote $dump; git diff shows what changed"
fi
