#!/usr/bin/env bash
# Builds the documentation site in build/docs/html. Whatever Doxygen or Sphinx warns of fails it, a broken link before
# all; so does a page that tells other than its class record does, when there is a build of the library to ask.
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/release

scripts/install-dependencies.sh docs
if [ -f "$build/CMakeCache.txt" ]; then
    cmake --build --preset release --target moxelcore_host_tests
    "$build/testing/host/moxelcore_host_tests" --gtest_brief=1 --gtest_filter='AlgorithmPages.*'
else
    echo "There is no $build: the pages are not compared with the class records."
fi
rm -rf build/docs
mkdir -p build/docs
doxygen docs/site/Doxyfile
/usr/bin/python3 -m sphinx -W --keep-going -n -q -c docs/site -d build/docs/pages . build/docs/html
echo "Look at build/docs/html/index.html"
