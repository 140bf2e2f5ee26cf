#!/usr/bin/env bash
# Formats all sources, or with --check tells those that are not formatted.
set -euo pipefail
cd "$(dirname "$0")/.."

mapfile -t sources < <(git ls-files '*.h' '*.cpp')
if [ "${1:-}" = --check ]; then
    clang-format --dry-run --Werror "${sources[@]}"
else
    clang-format -i "${sources[@]}"
fi
