#!/usr/bin/env bash
# Texture classification on files: textures.sh RADIUS FEATURES DIRECTIONS WIDTH BIN TEXTURE.png ...
# Learns the left halves, classifies a mosaic of the right halves, prints the shares of right voxels, and leaves the
# model, the labels and a picture in build/textures.
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/release
results=build/textures
radius=$1 features=$2 directions=$3 width=$4 bin=$5
shift 5

cmake --build --preset release --target moxel moxel_mosaic
mkdir -p "$results"
rm -f "$results"/*
"$build/apps/demo/moxel_mosaic" make "$results" "$@"

moxel() { "$build/apps/moxel/moxel" "$@"; }
moxel run CreateTextureClassification2D numOfClasses=$# radius="$radius" textureFeaturesGroup="$features" \
    directionCollection="$directions" binSizeCooccurrence="$width" binSizeHistogram="$bin" \
    classificationModel="$results/model.mox"
for ((i = 1; i <= $#; ++i)); do
    moxel run TextureTraining2D input="$results/lesson$i.png" mask="$results/mask$i.png" --interpretation mask=label \
        finalizeTraining="$([ $i -eq $# ] && echo true || echo false)" classificationModel="$results/model.mox"
done
moxel run ApplyClassification input="$results/mosaic.png" classificationModel="$results/model.mox" \
    classifiedImage="$results/labels.png"
"$build/apps/demo/moxel_mosaic" score "$results/labels.png" "$@" --radius "$radius"
"$build/apps/demo/moxel_mosaic" picture "$results/mosaic.png" "$results/labels.png" "$results/picture.png" --factor 4
