#!/usr/bin/env bash
# Builds everything with Clang, all warnings as errors, and runs all tests under AddressSanitizer,
# LeakSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages "${test_packages[@]}" clang libclang-rt-dev
cmake --preset asan
cmake --build --preset asan
ctest --preset asan --parallel "$(nproc)"
