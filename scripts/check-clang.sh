#!/usr/bin/env bash
# Builds everything with Clang, all warnings as errors, and runs all tests.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages clang
KVFOUND_BUILD=build/clang scripts/test.sh -DCMAKE_CXX_COMPILER=clang++
