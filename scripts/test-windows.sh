#!/usr/bin/env bash
# Installs what is missing, builds everything for Windows with MinGW-w64 and all warnings as errors, and
# runs the tests under Wine:
#   scripts/test-windows.sh [CMAKE-OPTION...]
# KVFOUND_BUILD names another build folder than build/windows. Its folder bin has all that a Windows
# machine needs to run kvfound.exe and the tests.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/sysroot.sh

install_packages "${sysroot_packages[@]}" g++-mingw-w64-x86-64-posix wine64
compiler=x86_64-w64-mingw32-g++-posix
mkdir -p "${KVFOUND_BUILD:-build/windows}"
build=$(realpath "${KVFOUND_BUILD:-build/windows}")
sysroot=$build/sysroot
make_sysroot "$build" --toolchain "$PWD/cmake/mingw-w64.cmake"

# --- Build

cmake --preset windows -B "$build" -DCMAKE_FIND_ROOT_PATH="$sysroot" "$@"
cmake --build "$build"
cmake --install "$build" --prefix "$build/installed" >/dev/null
cmake -S tests/consume/package -B "$build/consumer" -G Ninja --toolchain "$PWD/cmake/mingw-w64.cmake" \
  -DCMAKE_FIND_ROOT_PATH="$build/installed"
cmake --build "$build/consumer"
cp "$build"/consumer/minimal_host.exe "$build/bin/consumer.exe"
for library in libstdc++-6 libgcc_s_seh-1 libwinpthread-1; do
  cp "$("$compiler" -print-file-name=$library.dll)" "$build/bin"
done
ls "$build"/bin/{kvfound.dll,kvplatform.dll,kvfound.exe}

# --- Tests

export WINEPREFIX=$build/wine WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml=
export LC_ALL=C.UTF-8  # file names may hold any character
trap '/usr/lib/wine/wineserver64 -k || true' EXIT
mkdir -p "$WINEPREFIX"
# Started beforehand: ctest waits for all that a test has started, and these services stay.
/usr/lib/wine/wineserver64 -p
/usr/lib/wine/wine64 wineboot -i >/dev/null 2>&1
/usr/lib/wine/wine64 "$build/bin/consumer.exe" examples/model.xml examples/beddings.xml "$build/saved" |
  tr -d '\r' | grep -x "15 foundations, 12 kept"
ctest --test-dir "$build" --output-on-failure --parallel "$(nproc)"
