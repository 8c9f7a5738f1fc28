#!/usr/bin/env bash
# Runs clang-tidy over the library, the platform and the programs.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages "${build_packages[@]}" clang-tidy
build=build/tidy
cmake -S . -B "$build" -G Ninja -DCMAKE_EXPORT_COMPILE_COMMANDS=ON >/dev/null
git ls-files -z 'src/*.cpp' 'platform/src/*.cpp' 'tools/*.cpp' 'examples/*.cpp' |
  xargs -0 -n 1 -P "$(nproc)" clang-tidy -p "$build" --quiet 2> >(grep -v 'warnings generated' >&2)
