#!/usr/bin/env bash
# Draws the pictures of the examples in Python again:
#   scripts/make-pictures.sh [FOLDER]
# They go to docs/pictures when no folder is named. KVFOUND_PYTHON_PATH names a folder that has the
# package kvfound; without it, the package is built.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

folder=${1:-docs/pictures}
install_packages python3-matplotlib python3-numpy python3-pandas
if [ -z "${KVFOUND_PYTHON_PATH:-}" ]; then
  install_packages "${build_packages[@]}" pybind11-dev python3-dev
  build=build/python
  cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DKVFOUND_PYTHON=ON -DKVFOUND_EXAMPLES=OFF \
    -DKVFOUND_TOOLS_TOGETHER=ON >/dev/null
  cmake --build "$build" --target kvfound-python >/dev/null
  KVFOUND_PYTHON_PATH=$build/tools/python
fi
mkdir -p "$folder"
settings=$(mktemp -d)  # matplotlib keeps its list of fonts there
trap 'rm -rf "$settings"' EXIT
# Python as Debian has it, for which its packages are.
for example in winkler_beam raft soil_layers; do
  PYTHONPATH=$KVFOUND_PYTHON_PATH MPLCONFIGDIR=$settings \
    /usr/bin/python3 -B "examples/python/$example.py" --picture "$folder/$example.png"
done
