#!/usr/bin/env bash
# Makes the Debian packages of this system's processor:
#   scripts/make-packages.sh [FOLDER]        FOLDER is build/packages when left out
# They are built in a copy, so that nothing stands among the sources.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages "${python_build_packages[@]}" build-essential debhelper dh-python dpkg-dev fakeroot
mkdir -p "${1:-build/packages}"
folder=$(realpath "${1:-build/packages}")
version=$(dpkg-parsechangelog -S Version)
grep -qx "  VERSION $version" CMakeLists.txt ||
  { echo "debian/changelog is about $version, CMakeLists.txt is not." >&2; exit 1; }

sources=$folder/sources
rm -rf "$sources" "$folder"/*.{deb,buildinfo,changes}
mkdir "$sources"
tar -c --exclude ./build --exclude ./.git --exclude __pycache__ . | tar -x -C "$sources"
jobs=$(nproc)
export DEB_BUILD_OPTIONS="noautodbgsym nocheck parallel=$jobs"
export DEB_CXXFLAGS_STRIP=-g
(cd "$sources" && dpkg-buildpackage --build=binary --no-sign) >"$folder/log" 2>&1 ||
  { tail -40 "$folder/log" >&2; exit 1; }
rm -rf "$sources"
ls "$folder"/*.deb
