#!/usr/bin/env bash
# From nothing to a result: installs what is missing, builds, makes a volume that looks like a CT of grains, marks the
# grains in it, and leaves the volume, the mask and a picture of both to look at.
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/release
results=build/quickstart

scripts/install-dependencies.sh
cmake --preset release
cmake --build --preset release --target moxel moxel_phantom moxel_picture
mkdir -p "$results"

"$build/apps/demo/moxel_phantom" "$results/grains.tif" --seed 1
"$build/apps/moxel/moxel" info "$results/grains.tif"
"$build/apps/moxel/moxel" run Threshold input="$results/grains.tif" lowLevel=17000 highLevel=65535 \
    output="$results/mask.tif"
"$build/apps/moxel/moxel" info "$results/mask.tif"
"$build/apps/demo/moxel_picture" "$results/grains.tif" "$results/mask.tif" "$results/picture.png"

echo
echo "Look at:"
ls -l "$results"
