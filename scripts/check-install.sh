#!/usr/bin/env bash
# Builds and runs a host in each of the four ways that README.md names: from an installed tree, of shared
# and of static libraries, through the CMake package and through pkg-config, with the project below it,
# and with companion libraries of its own.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/release.sh

install_packages make pkg-config
build_release
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# build NAME SOURCE [CMAKE-OPTION...]
build() {
  cmake -S "$2" -B "$work/$1" -G Ninja -DCMAKE_BUILD_TYPE=Release "${@:3}" >"$work/log"
  cmake --build "$work/$1" >"$work/log" || { cat "$work/log" >&2; return 1; }
}

# expect WAY LINE COMMAND...
expect() {
  "${@:3}" | grep -qx "$2" || { echo "A host does not work through $1." >&2; exit 1; }
}

check_host() {
  expect "$1" "15 foundations, 12 kept" "$2" examples/model.xml examples/beddings.xml "$work/saved"
}

# check_tree KIND BUILD: installed elsewhere than it was configured for.
check_tree() {
  local kind=$1 prefix=$work/$1/prefix lib
  cmake --install "$2" --prefix "$prefix" >/dev/null
  build "$kind/package" tests/consume/package -DCMAKE_PREFIX_PATH="$prefix"
  check_host "the CMake package, $kind" "$work/$kind/package/minimal_host"

  lib=$(dirname "$(find "$prefix" -name pkgconfig)")
  cp -r tests/consume/pkg-config "$work/$kind"
  PKG_CONFIG_PATH=$lib/pkgconfig \
    make -s -C "$work/$kind/pkg-config" -f Makefile VPATH="$PWD/examples" minimal_host CXX=g++
  LD_LIBRARY_PATH=$lib check_host "pkg-config, $kind" "$work/$kind/pkg-config/minimal_host"
}

check_tree shared "$release"
expect "the installed program" "12 foundations, largest stiffness 350730.6658962116" \
  "$work/shared/prefix/bin/kvfound" show examples/model.xml

build static-libraries . -DBUILD_SHARED_LIBS=OFF -DKVFOUND_TOOLS=OFF -DKVFOUND_EXAMPLES=OFF
check_tree static "$work/static-libraries"

build subproject tests/consume/subproject
build subproject tests/consume/subproject  # once more, with the cache that the first has left
check_host "add_subdirectory" "$work/subproject/minimal_host"

build own_platform tests/consume/own_platform
expect "companion libraries of its own" "Gravel: 62500 after calls of the host's own libraries" \
  "$work/own_platform/own_platform_host"
echo "Hosts work through the CMake package, add_subdirectory, pkg-config, and with libraries of their own."
