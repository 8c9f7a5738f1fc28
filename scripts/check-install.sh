#!/usr/bin/env bash
# Builds and runs a host in each of the four ways that README.md names: from an installed tree
# through the CMake package and through pkg-config, with the project below it, and with companion
# libraries of its own.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages "${build_packages[@]}" make pkg-config
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# build NAME SOURCE [CMAKE-OPTION...]
build() {
  cmake -S "$2" -B "$work/$1" -G Ninja -DCMAKE_BUILD_TYPE=Release "${@:3}" >/dev/null
  cmake --build "$work/$1" >/dev/null
}

# expect WAY LINE COMMAND...
expect() {
  "${@:3}" | grep -qx "$2" || { echo "A host does not work through $1." >&2; exit 1; }
}

check_host() {
  expect "$1" "13 foundations, 10 kept" "$2" examples/model.xml examples/beddings.xml "$work/saved"
}

build tree . -DCMAKE_INSTALL_PREFIX="$work/prefix" -DCMAKE_INSTALL_LIBDIR=lib
cmake --install "$work/tree" >/dev/null

build package tests/consume/package -DCMAKE_PREFIX_PATH="$work/prefix"
check_host "the CMake package" "$work/package/minimal_host"

build subproject tests/consume/subproject
check_host "add_subdirectory" "$work/subproject/minimal_host"

build own_platform tests/consume/own_platform
expect "companion libraries of its own" "Gravel: 62500 after calls of the host's own libraries" \
  "$work/own_platform/own_platform_host"

export PKG_CONFIG_PATH=$work/prefix/lib/pkgconfig LD_LIBRARY_PATH=$work/prefix/lib
cp -r tests/consume/pkg-config "$work"
make -s -C "$work/pkg-config" -f Makefile VPATH="$PWD/examples" minimal_host CXX=g++ \
  >/dev/null
check_host "pkg-config" "$work/pkg-config/minimal_host"

expect "the installed program" "12 foundations, largest stiffness 350730.6658962116" \
  "$work/prefix/bin/kvfound" show examples/model.xml
echo "Hosts work through the CMake package, add_subdirectory, pkg-config, and with libraries of their own."
