#!/usr/bin/env bash
# Installs what is missing, builds everything with all warnings as errors and runs all tests:
#   scripts/test.sh [CMAKE-OPTION...]
# KVFOUND_BUILD names another build folder than build/test.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages "${test_packages[@]}"
build=${KVFOUND_BUILD:-build/test}
cmake --preset test -B "$build" "$@"
cmake --build "$build"
ctest --test-dir "$build" --output-on-failure --parallel "$(nproc)"
