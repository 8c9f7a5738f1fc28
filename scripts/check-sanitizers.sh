#!/usr/bin/env bash
# Runs all tests under AddressSanitizer, LeakSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."

export ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1
export UBSAN_OPTIONS=print_stacktrace=1
KVFOUND_BUILD=build/sanitize scripts/test.sh -DKVFOUND_SANITIZE=address,undefined
