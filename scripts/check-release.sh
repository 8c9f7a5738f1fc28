#!/usr/bin/env bash
# Makes a release twice, the second time in another place and without a cache, and fails unless both are
# the same, byte for byte. Then installs or builds each part: a host with the archive of the sources, the
# Debian packages, the wheel, program and host of the archive for Windows under Wine.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages "${build_packages[@]}" git unzip wine64 g++-mingw-w64-x86-64-posix
version=$(sed -n 's/^  VERSION //p' CMakeLists.txt)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# What the libraries for Windows stand on is built once: only what is ours is judged.
release=build/release-$version
KVFOUND_RELEASE_COMMIT=$(git rev-parse HEAD)  # whatever is committed meanwhile
export KVFOUND_RELEASE_COMMIT
scripts/make-release.sh "$release" >/dev/null
mkdir -p "$work/build/windows"
cp -r build/release-build/windows/sysroot "$work/build/windows"
CCACHE_DISABLE=1 KVFOUND_RELEASE_BUILD=$work/build scripts/make-release.sh "$work/again" >/dev/null
diff -r "$release" "$work/again"
(cd "$release" && sha256sum --check --quiet SHA256SUMS)
release=$(realpath "$release")

# expect WAY LINE COMMAND...
expect() {
  "${@:3}" 2>"$work/errors" | tr -d '\r' | grep -qx "$2" ||
    { echo "$1 of the release does not work." >&2; cat "$work/errors" >&2; exit 1; }
}

# --- Sources

cmake -S tests/consume/fetch_content -B "$work/host" -G Ninja -DCMAKE_UNITY_BUILD=ON \
  -DKVFOUND_SOURCE="URL;$release/kvfound-$version.tar.gz" >/dev/null
cmake --build "$work/host" >/dev/null
expect "The archive of the sources" "15 foundations, 12 kept" \
  "$work/host/minimal_host" examples/model.xml examples/beddings.xml "$work/saved"

# --- Debian

scripts/check-packages.sh "$release"

# --- Python

scripts/check-wheel.sh "$release"/kvfound-*.whl

# --- Windows

unzip -q "$release/kvfound-$version-windows-x86_64.zip" -d "$work"
tree=$work/kvfound-$version-windows-x86_64
for notice in LICENSE THIRD-PARTY-NOTICES.md Apache-2.0 LGPL-2.1; do
  [ -s "$tree/share/doc/KvFound/$notice" ]
done
cmake -S tests/consume/package -B "$work/windows-host" -G Ninja \
  --toolchain "$PWD/cmake/mingw-w64.cmake" -DCMAKE_FIND_ROOT_PATH="$tree" >/dev/null
cmake --build "$work/windows-host" >/dev/null
cp "$work/windows-host/minimal_host.exe" "$tree/bin"

export WINEPREFIX=$work/wine WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml=
trap '/usr/lib/wine/wineserver64 -k || true; rm -rf "$work"' EXIT
mkdir "$WINEPREFIX"
/usr/lib/wine/wine64 wineboot -i >/dev/null 2>&1
expect "The program for Windows" "12 foundations, largest stiffness 350730.6658962116" \
  /usr/lib/wine/wine64 "$tree/bin/kvfound.exe" show "$tree/examples/model.xml"
expect "The libraries for Windows" "15 foundations, 12 kept" \
  /usr/lib/wine/wine64 "$tree/bin/minimal_host.exe" examples/model.xml examples/beddings.xml "$work/saved"
echo "Two releases are the same, and each part works: $(cd "$release" && echo *)"
