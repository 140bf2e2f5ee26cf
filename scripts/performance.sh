#!/usr/bin/env bash
# Times everything beside its peers and writes the table of docs/performance.md anew, with the machine's facts:
# performance.sh [threads]. Takes ten minutes on a machine that does nothing else, and 6 GiB of memory.
set -euo pipefail
cd "$(dirname "$0")/.."
threads=${1:-$(nproc)}
page=docs/performance.md

scripts/install-dependencies.sh performance
cmake --preset release ${MOXELCORE_CMAKE_OPTIONS:-}
cmake --build --preset release --target moxelcore_peers

fact() { lscpu | sed -n "s/^$1: *//p" | head -1; }
version() { dpkg-query -W -f '${Version}' "$1"; }

facts() {
    echo "| | |"
    echo "|---|---|"
    echo "| processor | $(fact 'Model name'), $(nproc) cores; L1d $(fact 'L1d cache'), L2 $(fact 'L2 cache'), L3 $(fact 'L3 cache') |"
    echo "| memory | $(awk '/MemTotal/ { printf "%.0f GiB", $2 / 1048576 }' /proc/meminfo) |"
    echo "| system | $(. /etc/os-release && echo "$PRETTY_NAME"), g++ $(g++ -dumpfullversion) -O3, oneTBB $(version libtbb-dev) |"
    echo "| threads | $threads |"
    echo "| commit | $(git rev-parse --short HEAD) |"
}

results=$(mktemp)
trap 'rm -f "$results"' EXIT
{
    facts
    echo
    build/release/benchmarks/peers/moxelcore_peers "$threads"
} | tee "$results"

sed -i -e '/^<!-- measured -->$/,/^<!-- end -->$/ { /^<!-- measured -->$/ { p; r '"$results"'
    }; /^<!-- end -->$/ p; d }' "$page"
