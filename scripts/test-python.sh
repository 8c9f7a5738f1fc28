#!/usr/bin/env bash
# Installs what is missing, builds the Python package in the tree of scripts/test.sh and runs its tests:
#   scripts/test-python.sh [--asan] [PYTEST-ARGUMENT...]
# With --asan the core is built with AddressSanitizer in a tree of its own, and told leaks of the
# interpreter are left out. KVFOUND_BUILD names another build folder than build/test,
# KVFOUND_PYTHON_STEPS how many random steps the tests of states take.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages "${python_packages[@]}"
# The interpreter of the system, since the packages are made for it.
python=/usr/bin/python3

# build FOLDER [CMAKE-OPTION...]
build() {
  cmake --preset test -B "$1" -DKVFOUND_PYTHON=ON -DPython_EXECUTABLE="$python" "${@:2}" >/dev/null
  cmake --build "$1" --target kvfound-python
  PYTHONPATH=$(realpath "$1")/tools/python
  export PYTHONPATH
}

if [ "${1:-}" = --asan ]; then
  shift
  # The sanitizer makes GCC warn of what is not so; the other tree shows warnings.
  build build/python-asan -DKVFOUND_SANITIZE=address -DKVFOUND_TESTS=OFF -DKVFOUND_TOOLS=OFF \
    -DKVFOUND_EXAMPLES=OFF -DKVFOUND_TOOLS_TOGETHER=ON -DKVFOUND_WARNINGS=OFF \
    -DCMAKE_VERIFY_INTERFACE_HEADER_SETS=OFF
  # The interpreter is not built with it, so the sanitizer is loaded first and sees all memory; the
  # libraries that throw come with it, or it would not find what catches.
  LD_PRELOAD="$(g++ -print-file-name=libasan.so) $(g++ -print-file-name=libstdc++.so)"
  export LD_PRELOAD PYTHONMALLOC=malloc
  export ASAN_OPTIONS=detect_leaks=1:malloc_context_size=2:strict_string_checks=1
  export LSAN_OPTIONS=suppressions=$PWD/tests/python/leaks.txt:print_suppressions=0
else
  build "${KVFOUND_BUILD:-build/test}"
fi
[ $# -gt 0 ] || set -- tests/python
exec "$python" -m pytest -p no:cacheprovider "$@"
