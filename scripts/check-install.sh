#!/usr/bin/env bash
# Installs into an empty folder, then builds and runs the example host against what was installed,
# once through the CMake package and once through pkg-config.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages "${build_packages[@]}" pkg-config
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake -S . -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$work/prefix" \
  -DCMAKE_INSTALL_LIBDIR=lib >/dev/null
cmake --build "$work/build" >/dev/null
cmake --install "$work/build" >/dev/null

check() {
  "$1" examples/model.xml examples/beddings.xml "$work/saved" | grep -qx "13 foundations, 10 kept" ||
    { echo "$1 failed" >&2; exit 1; }
}

cmake -S tests/consume/package -B "$work/package" -G Ninja -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
cmake --build "$work/package" >/dev/null
check "$work/package/minimal_host"

export PKG_CONFIG_PATH=$work/prefix/lib/pkgconfig LD_LIBRARY_PATH=$work/prefix/lib
# shellcheck disable=SC2046
g++ -std=c++17 examples/minimal_host.cpp -o "$work/minimal_host" $(pkg-config --cflags --libs kvfound)
check "$work/minimal_host"
echo "The installed library serves hosts through CMake and through pkg-config."
