#!/usr/bin/env bash
# Before a commit: format everything, then build and run all tests.  --tidy adds clang-tidy over changed sources.
set -euo pipefail
cd "$(dirname "$0")/.."
tools/format.sh
./test
if [ "${1:-}" = --tidy ]; then
  mapfile -t changed < <(git diff --name-only HEAD -- '*.cpp'; git ls-files --others --exclude-standard '*.cpp')
  if [ ${#changed[@]} -gt 0 ]; then
    "$(command -v clang-tidy-14 || command -v clang-tidy)" -p build/test --quiet "${changed[@]}"
  fi
fi
