#!/usr/bin/env bash
# Builds everything with Clang, all warnings as errors, and runs all tests under AddressSanitizer,
# LeakSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages clang libclang-rt-dev
export ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1
export UBSAN_OPTIONS=print_stacktrace=1
KVFOUND_BUILD=build/sanitize scripts/test.sh -DCMAKE_CXX_COMPILER=clang++ -DKVFOUND_SANITIZE=address,undefined \
  -DKVFOUND_TESTS_TOGETHER=ON
