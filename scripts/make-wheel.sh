#!/usr/bin/env bash
# Makes the wheel of the Python package for this system's processor and Python:
#   scripts/make-wheel.sh [FOLDER]        FOLDER is build/wheel/dist when left out
# Times in it are SOURCE_DATE_EPOCH, if that is set.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages "${python_build_packages[@]}" python3-build python3-setuptools python3-wheel
mkdir -p "${1:-build/wheel/dist}" build/wheel
folder=$(realpath "${1:-build/wheel/dist}")
rm -f "$folder"/kvfound-*.whl
# The place of the build does not get into what is built, nor does who builds it into its permissions.
umask 022
export KVFOUND_CMAKE_OPTIONS="-DCMAKE_CXX_FLAGS=-ffile-prefix-map=$PWD=. ${KVFOUND_CMAKE_OPTIONS:-}"
log=build/wheel/build.log
# Python as Debian has it, for which its packages are.
/usr/bin/python3 -m build --no-isolation --wheel --outdir "$folder" tools/python >"$log" 2>&1 ||
  { tail -30 "$log" >&2; exit 1; }
ls "$folder"/kvfound-*.whl
