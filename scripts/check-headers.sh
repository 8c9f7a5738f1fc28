#!/usr/bin/env bash
# Compiles every public header on its own, with all warnings as errors.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages g++ clang
for header in include/found/*.h platform/include/kv/*.h; do
  for compiler in g++ clang++; do
    $compiler -std=c++17 @cmake/warnings.txt -fsyntax-only -Iinclude -Iplatform/include -include "$header" \
      -x c++ /dev/null
  done
done
