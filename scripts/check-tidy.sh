#!/usr/bin/env bash
# Runs clang-tidy over the library, the platform, the programs, the tests and the fuzz targets, with
# the headers of each. Tests that can be compiled together are looked at together, since most of the
# time goes into the headers that they share; using-declarations that are unused are not found there.
# Left out are the benchmarks, the hosts in tests/consume, samples in documents and what is compiled
# on Windows only.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/sources.sh

install_packages "${test_packages[@]}" clang-tidy
build=build/tidy
cmake -S . -B "$build" -G Ninja -DCMAKE_EXPORT_COMPILE_COMMANDS=ON -DKVFOUND_TESTS=ON \
  -DKVFOUND_TESTS_TOGETHER=ON >/dev/null
python3 scripts/tidy_units.py "$build" >"$build/test_units"

# tidy [OPTION...]: looks at the files that standard input names, a line each.
tidy() {
  xargs -d '\n' -n 1 -P "$(nproc)" clang-tidy -p "$build" --quiet "$@" \
    2> >(grep -v 'warnings generated' >&2)
}

list_sources 'src/*.cpp' 'platform/src/*.cpp' 'tools/*.cpp' 'examples/*.cpp' | tr '\0' '\n' | tidy
tidy --config-file=tests/.clang-tidy <"$build/test_units"
