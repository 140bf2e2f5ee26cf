#!/usr/bin/env bash
# Runs clang-tidy over the library's sources: lint.sh [build folder]
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build/release}

git ls-files 'Core/src/*.cpp' 'Math/src/*.cpp' 'PointOperations/src/*.cpp' 'Segmentation/src/*.cpp' 'apps/*.cpp' |
    xargs -P 2 -n 4 clang-tidy -p "$build" --quiet 2>/dev/null
