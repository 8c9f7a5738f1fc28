#!/usr/bin/env bash
# Makes the zip archive for Windows, with all that a machine needs to run the program, and a host to be
# built with MinGW-w64:
#   scripts/make-windows.sh BUILD ZIP
# BUILD/sysroot is kept for the next time. Times in the archive are SOURCE_DATE_EPOCH, if that is set.
set -euo pipefail
build=$(mkdir -p "$1" && realpath "$1")
zip=$(realpath "$2")
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/sysroot.sh

install_packages "${sysroot_packages[@]}" g++-mingw-w64-x86-64-posix zip
toolchain=$PWD/cmake/mingw-w64.cmake
compiler=x86_64-w64-mingw32-g++-posix
make_sysroot "$build" --toolchain "$toolchain"

tree=$build/tree/$(basename "$zip" .zip)
rm -rf "$build/build" "$build/tree"
mkdir -p "$tree/bin"
# Neither the time nor the place of the build gets into what is built.
{ cmake -S . -B "$build/build" -G Ninja --toolchain "$toolchain" -DCMAKE_FIND_ROOT_PATH="$build/sysroot" \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS="-ffile-prefix-map=$PWD=. -ffile-prefix-map=$build=." \
    -DCMAKE_SHARED_LINKER_FLAGS=-Wl,--no-insert-timestamp -DCMAKE_EXE_LINKER_FLAGS=-Wl,--no-insert-timestamp \
    -DKVFOUND_EXAMPLES=OFF -DKVFOUND_TOOLS_TOGETHER=ON &&
  cmake --build "$build/build" &&
  cmake --install "$build/build" --prefix "$tree" --strip; } >"$build/log" 2>&1 ||
  { tail -40 "$build/log" >&2; exit 1; }

for library in libstdc++-6 libgcc_s_seh-1 libwinpthread-1; do
  cp "$("$compiler" -print-file-name=$library.dll)" "$tree/bin"
done
x86_64-w64-mingw32-strip "$tree"/bin/lib*.dll
# The licences of what is inside, and of the compiler's runtime.
licences=$tree/share/doc/KvFound
cp /usr/share/common-licenses/{Apache-2.0,LGPL-2.1,GPL-3} "$licences"
cp /usr/share/doc/gcc-mingw-w64-base/copyright "$licences/libstdc++-6 and libgcc_s_seh-1.txt"
cp /usr/share/doc/mingw-w64-x86-64-dev/copyright "$licences/libwinpthread-1.txt"
cp -r examples "$tree"
rm "$tree/examples/CMakeLists.txt"

find "$tree" -exec touch -h -d "@${SOURCE_DATE_EPOCH:-$(date +%s)}" {} +
chmod -R u=rwX,go=rX "$tree"
rm -f "$zip"
(cd "$build/tree" && find . -type f | cut -c 3- | LC_ALL=C sort | TZ=UTC zip -q -X -9 "$zip" -@)
