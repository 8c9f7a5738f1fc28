#!/usr/bin/env bash
# Installs what is missing, builds the Python package in the tree of scripts/test.sh and runs its tests:
#   scripts/test-python.sh [PYTEST-ARGUMENT...]
# KVFOUND_BUILD names another build folder than build/test, KVFOUND_PYTHON_STEPS how many random
# steps the tests of states take.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages "${python_packages[@]}"
build=${KVFOUND_BUILD:-build/test}
# The interpreter of the system, since the packages are made for it.
python=/usr/bin/python3
cmake --preset test -B "$build" -DKVFOUND_PYTHON=ON -DPython_EXECUTABLE="$python" >/dev/null
cmake --build "$build" --target kvfound-python
PYTHONPATH=$(realpath "$build")/tools/python exec "$python" -m pytest -p no:cacheprovider "${@:-tests/python}"
