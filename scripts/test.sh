#!/usr/bin/env bash
# Installs what is missing, builds all of it and runs every test: test.sh [preset]
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:-release}

purposes=()
[ "$preset" = fuzz ] && purposes=(fuzz)
scripts/install-dependencies.sh "${purposes[@]}"
cmake --preset "$preset" ${MOXELCORE_CMAKE_OPTIONS:-}
cmake --build --preset "$preset"
ctest --preset "$preset" -j 2
