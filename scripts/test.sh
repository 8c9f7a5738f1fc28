#!/usr/bin/env bash
# Installs what is missing, builds everything with all warnings as errors and runs all tests:
#   scripts/test.sh [CMAKE-OPTION...]
# KVFOUND_BUILD names another build folder than build/test.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages "${test_packages[@]}"
build=${KVFOUND_BUILD:-build/test}
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKVFOUND_TESTS=ON \
  -DKVFOUND_WARNINGS=ON "$@"
cmake --build "$build"
ctest --test-dir "$build" --output-on-failure --parallel "$(nproc)"
