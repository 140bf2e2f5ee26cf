#!/usr/bin/env bash
# Feeds mutations of the kept corpora to what reads bytes that anyone may have made, and to what draws runs of every
# class from them: fuzz.sh [seconds] [target ...]
# Each target runs that many seconds, all of them unless some are named. Needs clang and its sanitizers' runtime. What a
# run found is kept in build/fuzz/corpus and is where the next begins; a failing input stays in build/fuzz/findings.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-20}
targets=("${@:2}")
mostMegabytes=1024

if [ "${#targets[@]}" -eq 0 ]; then
    targets=(model_mox model_txt model_xml image_png image_tiff tiff_description points_file property_text host_text
        enumeration_text every_class)
fi

seedsOf() {
    case $1 in
    model_*) echo Classification/test/golden ;;
    *) echo "testing/fuzz/corpus/$1" ;;
    esac
}

mostBytesOf() {
    case $1 in
    model_*) echo 12000 ;; # a third more than the largest seed
    *) echo 4000 ;;
    esac
}

scripts/install-dependencies.sh fuzz
cmake --preset fuzz ${MOXELCORE_CMAKE_OPTIONS:-}
cmake --build --preset fuzz --target "${targets[@]/#/moxelcore_fuzz_}"
mkdir -p build/fuzz/findings
for target in "${targets[@]}"; do
    corpus=build/fuzz/corpus/$target
    mkdir -p "$corpus"
    echo "--- $target"
    build/fuzz/testing/fuzz/moxelcore_fuzz_"$target" "$corpus" "$(seedsOf "$target")" -seed=1 \
        -max_total_time="$seconds" -max_len="$(mostBytesOf "$target")" -timeout=20 -rss_limit_mb=$mostMegabytes \
        -print_final_stats=1 -artifact_prefix="build/fuzz/findings/$target-"
done
