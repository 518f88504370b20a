#!/usr/bin/env bash
# Formats every source file;  --check only says which ones would change.
set -euo pipefail
cd "$(dirname "$0")/.."
formatter=$(command -v clang-format-14 || command -v clang-format)
mapfile -t files < <(git ls-files --cached --others --exclude-standard '*.h' '*.cpp')
if [ "${1:-}" = --check ]; then exec "$formatter" --dry-run -Werror "${files[@]}"; fi
exec "$formatter" -i "${files[@]}"
