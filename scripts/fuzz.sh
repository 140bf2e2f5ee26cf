#!/usr/bin/env bash
# Feeds the reader of model files mutations of the tests' golden files, for each of the three forms: fuzz.sh [seconds]
# Needs clang and its sanitizers' runtime. What it found before is kept in build/fuzz/corpus; a failing input stays in
# build/fuzz.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-20}
mostBytes=12000 # a third more than the largest seed
mostMegabytes=512

scripts/install-dependencies.sh fuzz
cmake --preset fuzz ${MOXELCORE_CMAKE_OPTIONS:-}
for form in mox txt xml; do
    cmake --build --preset fuzz --target moxelcore_fuzz_model_$form
done
for form in mox txt xml; do
    corpus=build/fuzz/corpus/$form
    mkdir -p "$corpus"
    build/fuzz/testing/fuzz/moxelcore_fuzz_model_$form "$corpus" Classification/test/golden -max_len=$mostBytes \
        -rss_limit_mb=$mostMegabytes -timeout=5 -max_total_time="$seconds" -seed=1 -print_final_stats=1 \
        -artifact_prefix=build/fuzz/$form-
done
