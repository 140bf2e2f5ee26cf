#!/usr/bin/env bash
# Runs the tests of what threads share under the thread sanitizer: tsan.sh [filter of GoogleTest]
# The sanitizer cannot see how Debian's oneTBB synchronises, and reports races where there are none. So one is built with
# the sanitizer, from Debian's own source package, in build/tsan-tbb. apt gets it there with lists of its own; those of
# the system stay as they are.
set -euo pipefail
cd "$(dirname "$0")/.."
tbb=$PWD/build/tsan-tbb

tests=(
    '*RunProtocol*' '*WatchedRun*' 'AlgoInfo*' 'Exception.*Threads'  # the frame
    '*Filter*' 'RowCaches*' 'Rows*' 'PassSequence*' 'LabelBand*'     # the engine
    '*Run.*' '*Runs.*' '*hread*' '*ancel*' '*rogress*' '*Callers*'   # the algorithms
    '-MorphologyRuns.stopWithinALeafOfAHugeElement'                  # which has a limit of time
)

getSources() {
    local options=(-o Dir::Etc::sourcelist="$tbb/sources.list" -o Dir::Etc::sourceparts=-
        -o Dir::State::lists="$tbb/lists" -o Dir::Cache="$tbb/cache" -o APT::Sandbox::User=)
    mkdir -p "$tbb/lists/partial" "$tbb/cache/archives/partial"
    # shellcheck disable=SC2016
    apt-get indextargets --format 'deb-src $(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' 'Origin: Debian' \
        >"$tbb/sources.list"
    if [ ! -s "$tbb/sources.list" ]; then
        echo "apt has no lists of Debian's packages: apt-get update gets them" >&2
        exit 1
    fi
    apt-get "${options[@]}" update
    (cd "$tbb" && apt-get "${options[@]}" source "$(dpkg-query -W -f '${source:Package}' libtbb-dev)")
}

# Strict makes errors of warnings: g++ warns of fences, which the sanitizer does not know.
buildTbb() {
    cmake -S "$tbb"/*tbb-*/ -B "$tbb/build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTBB_SANITIZE=thread \
        -DTBB_STRICT=OFF -DTBB_TEST=OFF -DTBBMALLOC_BUILD=OFF -DCMAKE_INSTALL_PREFIX="$tbb/installed"
    cmake --build "$tbb/build" -j 2 --target install
}

# The sanitizer's memory may not be where the system puts things at random.
atFixedAddresses() {
    if setarch -R true 2>/dev/null; then setarch -R "$@"; else "$@"; fi
}

scripts/install-dependencies.sh tsan
if [ ! -d "$tbb/installed" ]; then
    getSources
    buildTbb
fi
cmake --preset tsan -DTBB_DIR="$tbb/installed/lib/cmake/TBB" ${MOXELCORE_CMAKE_OPTIONS:-}
cmake --build --preset tsan --target moxelcore_unit_tests
filter=${1:-$(IFS=: && echo "${tests[*]}")}
TSAN_OPTIONS=second_deadlock_stack=1 atFixedAddresses build/tsan/testing/moxelcore_unit_tests --gtest_filter="$filter" --gtest_brief=1
