#!/bin/bash
# Prints the benchmark table. Usage: bench/run.sh [build-dir]
# Each bench/<topic>/row.sh is called with the build folder and prints one or more
# table rows "| measure | value | unit | how |". Figures are measured, never asserted.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=${1:-$here/../build}
build=$(cd "$build" && pwd)
echo "| measure | value | unit | how |"
echo "|---|---|---|---|"
for row in "$here"/*/row.sh; do
    bash "$row" "$build" || echo "| $(basename "$(dirname "$row")") | failed | | exit $? |"
done
