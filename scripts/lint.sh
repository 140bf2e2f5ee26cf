#!/usr/bin/env bash
# Runs clang-tidy over the library's sources: lint.sh [build folder]
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build/release}

# The build's warning options are g++'s: clang knows not all of them, and means more by -Wconversion.
git ls-files '*/src/*.cpp' 'apps/*.cpp' |
    xargs -P 2 -n 4 clang-tidy -p "$build" --quiet --extra-arg=-Wno-unknown-warning-option \
        --extra-arg=-Wno-unknown-pragmas --extra-arg=-Wno-sign-conversion 2>/dev/null
