#!/usr/bin/env bash
# Builds and runs hosts in each of the ways that README.md names: from an installed tree, of shared and
# of static libraries, through the CMake package and through pkg-config, with the project below them,
# fetched from a folder and from a tag, as a plugin with libraries of its own, and with companion
# libraries of its own.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/release.sh

install_packages make pkg-config git
build_release
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# build NAME SOURCE [CMAKE-OPTION...]
build() {
  { cmake -S "$2" -B "$work/$1" -G Ninja -DCMAKE_BUILD_TYPE=Release "${@:3}" &&
    cmake --build "$work/$1"; } >"$work/log" 2>&1 || { cat "$work/log" >&2; return 1; }
}

# expect WAY LINE COMMAND...
expect() {
  "${@:3}" | grep -qx "$2" || { echo "A host does not work through $1." >&2; exit 1; }
}

check_host() {
  expect "$1" "15 foundations, 12 kept" "$2" examples/model.xml examples/beddings.xml "$work/saved"
}

# --- Installed

# check_tree KIND BUILD: installed elsewhere than it was configured for.
check_tree() {
  local kind=$1 prefix=$work/$1/prefix lib
  cmake --install "$2" --prefix "$prefix" >/dev/null
  for notice in LICENSE THIRD-PARTY-NOTICES.md; do
    cmp $notice "$prefix/share/doc/KvFound/$notice"
  done
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

# --- Below a host

# expect_installed BUILD FILE...: what the host installs, and nothing else.
expect_installed() {
  cmake --install "$work/$1" --prefix "$work/$1/prefix" >/dev/null
  diff <(printf '%s\n' "${@:2}") <(cd "$work/$1/prefix" && find . ! -type d | LC_ALL=C sort | cut -c 3-) ||
    { echo "The host $1 installs something else than it wants." >&2; exit 1; }
}

version=$(sed -n 's/^  VERSION //p' CMakeLists.txt)
# shellcheck disable=SC2016  # the loader knows what $ORIGIN is
build subproject tests/consume/subproject -DCMAKE_INSTALL_LIBDIR=lib -DCMAKE_INSTALL_RPATH='$ORIGIN/../lib'
build subproject tests/consume/subproject  # once more, with the cache that the first has left
check_host "add_subdirectory" "$work/subproject/minimal_host"
expect_installed subproject bin/minimal_host lib/libkv{found,platform}.so.{"${version%%.*}","$version"}
check_host "add_subdirectory, installed" "$work/subproject/prefix/bin/minimal_host"

# A host that compiles several sources together has ours compiled so, too.
mkdir "$work/sources"
tar -c --exclude ./build --exclude ./.git . | tar -x -C "$work/sources"
fetch() {
  build "$1" tests/consume/fetch_content -DCMAKE_UNITY_BUILD=ON -DKVFOUND_SOURCE="$2"
  check_host "FetchContent, $1" "$work/$1/minimal_host"
  expect_installed "$1" bin/minimal_host
}
fetch folder "SOURCE_DIR;$work/sources"
git=(git -C "$work/sources" -c user.name=KvFound -c user.email=kvfound@example.org -c init.defaultBranch=main)
"${git[@]}" init -q
"${git[@]}" add -A
"${git[@]}" commit -q -m "Release"
"${git[@]}" tag release
fetch tag "GIT_REPOSITORY;$work/sources;GIT_TAG;release"

build loose tests/consume/loose
expect "add_subdirectory, with options of its own" '.* FXAREA="nan" FYAREA="-inf" FZAREA="-0" .*' "$work/loose/loose_host"

build guest tests/consume/guest
printf '<?xml version="1.0"?>\n<SMOD>\n' >"$work/broken.xml"
expect "a plugin" "350731 -2 -1" "$work/guest/guest_host" examples/model.xml "$work/broken.xml" "$work/none.xml"
expect "a plugin that hides all else" "largestStiffness" \
  sh -c "nm -D --defined-only '$work/guest/libplugin.so' | cut -d' ' -f3 | paste -sd' '"
expect_installed guest plugins/libplugin.so

build guest-libraries tests/consume/guest -DKVFOUND_INSTALL=ON
check_tree guest-installing "$work/guest-libraries"

# --- Companion libraries of the host

build own_platform tests/consume/own_platform
expect "companion libraries of its own" "Gravel: 62500 after calls of the host's own libraries" \
  "$work/own_platform/own_platform_host"
echo "Hosts work through the CMake package, add_subdirectory, FetchContent, pkg-config, as plugins, and" \
  "with libraries of their own."
