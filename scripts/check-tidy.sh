#!/usr/bin/env bash
# Runs clang-tidy over the library, the platform, the programs, the core of the Python package, the engine
# of the page for browsers, the tests and the fuzz targets, with the headers of each. Left out are the
# benchmarks, the hosts in tests/consume, samples in documents and what is compiled on Windows only.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages "${test_packages[@]}" "${python_build_packages[@]}" clang-tidy
build=build/tidy
cmake -S . -B "$build" -G Ninja -DCMAKE_EXPORT_COMPILE_COMMANDS=ON -DCMAKE_UNITY_BUILD=ON -DKVFOUND_TESTS=ON \
  -DKVFOUND_TESTS_TOGETHER=ON -DKVFOUND_TOOLS_TOGETHER=ON -DKVFOUND_PYTHON=ON -DKVFOUND_WEB=ON \
  -DPython_EXECUTABLE=/usr/bin/python3 >/dev/null
python3 -B scripts/tidy.py "$build"
