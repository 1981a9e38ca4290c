#!/bin/bash
# Lane: the sources are formatted as .clang-format says (tools/format.sh fixes them).
set -euo pipefail
exec bash "$(dirname "$0")/../format.sh" --check
