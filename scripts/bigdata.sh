#!/usr/bin/env bash
# Runs threshold, erosion and labeling on images of more than 4 GiB. Takes 9 GiB of memory and a few minutes.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh
cmake --preset release ${MOXELCORE_CMAKE_OPTIONS:-}
cmake --build --preset release --target moxelcore_big_tests
build/release/testing/moxelcore_big_tests
