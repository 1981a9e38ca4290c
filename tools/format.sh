#!/bin/bash
# Formats every tracked C and C++ file with the rules of .clang-format.
#   tools/format.sh          rewrites the files in place
#   tools/format.sh --check  changes nothing; lists what differs and fails if anything does
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
formatter=clang-format-14
mapfile -t files < <(git -c safe.directory="$root" ls-files '*.c' '*.cpp' '*.h')
if [ "${1:-}" = "--check" ]; then
    # --Werror turns each difference into an error naming its file and line.
    "$formatter" --dry-run --Werror "${files[@]}"
    echo "format: ${#files[@]} files as .clang-format wants them"
else
    "$formatter" -i "${files[@]}"
fi
