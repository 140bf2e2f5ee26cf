#!/usr/bin/env bash
# Installs what the build needs and the system lacks: install-dependencies.sh [checks] [docs] [fuzz] [tsan]
# With "checks" also what the checks of CI need; with another word, what the script of that name needs.
set -euo pipefail

required=(
    g++ cmake ninja-build pkg-config
    libboost-dev libboost-serialization-dev libboost-filesystem-dev
    libtbb-dev libeigen3-dev libcpuid-dev
    libgtest-dev libgmock-dev librapidcheck-dev libbenchmark-dev
    libtiff-dev libpng-dev zlib1g-dev libcli11-dev nlohmann-json3-dev
)
checks=(git clang-format clang-tidy)
docs=(doxygen python3-sphinx python3-myst-parser python3-breathe furo)
fuzz=(clang libclang-rt-14-dev)
tsan=(dpkg-dev util-linux)

missing() {
    for package in "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q "ok installed" || echo "$package"
    done
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

wanted=("${required[@]}")
for purpose in "$@"; do
    declare -n packages=$purpose
    wanted+=("${packages[@]}")
done
mapfile -t absent < <(missing "${wanted[@]}")
if [ "${#absent[@]}" -eq 0 ]; then
    exit 0
fi
echo "Installing: ${absent[*]}"
as_root apt-get update -qq
as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${absent[@]}" >/dev/null
