#!/usr/bin/env bash
# Installs what is missing, builds everything for Windows with MinGW-w64 and all warnings as errors, and
# runs the tests under Wine:
#   scripts/test-windows.sh [CMAKE-OPTION...]
# KVFOUND_BUILD names another build folder than build/windows. Its folder bin has all that a Windows
# machine needs to run kvfound.exe and the tests.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages cmake ninja-build g++-mingw-w64-x86-64-posix wine64 googletest libfast-float-dev \
  libfmt-dev libcli11-dev nlohmann-json3-dev
compiler=x86_64-w64-mingw32-g++-posix
mkdir -p "${KVFOUND_BUILD:-build/windows}"
build=$(realpath "${KVFOUND_BUILD:-build/windows}")
sysroot=$build/sysroot
log=$build/dependencies.log

# --- What the project needs, in a folder of its own: of the machine's headers only those of libraries
# that consist of nothing else.

# The sources of Debian's package, found through package lists beside those of the machine.
fetch_pugixml() {
  local apt=$build/apt key=/usr/share/keyrings/debian-archive-keyring.gpg
  mkdir -p "$apt/lists/partial"
  apt-get indextargets --format "deb-src [signed-by=$key] \$(REPO_URI) \$(RELEASE) \$(COMPONENT)" \
    "Identifier: Packages" "Origin: Debian" >"$apt/sources.list"
  [ -s "$apt/sources.list" ] || { echo "apt knows no package lists of Debian." >&2; return 1; }
  local options=(-qq -o "Dir::Etc::sourcelist=$apt/sources.list" -o Dir::Etc::sourceparts=/dev/null
    -o "Dir::State::lists=$apt/lists" -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=
    -o APT::Sandbox::User=root)
  apt-get "${options[@]}" update
  (cd "$apt" && apt-get "${options[@]}" source --download-only pugixml)
  tar -xf "$apt"/pugixml_*.orig.tar.gz -C "$apt"
}

# install_library NAME SOURCES [CMAKE-OPTION...]
install_library() {
  local name=$1 sources=$2
  shift 2
  cmake -S "$sources" -B "$build/$name" -G Ninja --toolchain "$PWD/cmake/mingw-w64.cmake" \
    -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=OFF -DCMAKE_INSTALL_PREFIX="$sysroot" "$@"
  cmake --build "$build/$name"
  cmake --install "$build/$name"
}

install_dependencies() {
  fetch_pugixml
  install_library pugixml "$build"/apt/pugixml-*/
  install_library googletest /usr/src/googletest -DBUILD_GMOCK=OFF
  mkdir -p "$sysroot/include" "$sysroot/lib/cmake" "$sysroot/share/cmake"
  cp -r /usr/include/CLI /usr/include/fast_float /usr/include/fmt /usr/include/nlohmann "$sysroot/include"
  cp -r /usr/lib/cmake/FastFloat "$sysroot/lib/cmake"
  cp -r /usr/share/cmake/CLI11 /usr/share/cmake/nlohmann_json "$sysroot/share/cmake"
  mkdir "$sysroot/lib/cmake/fmt"
  # The package's own asks for the machine's library as well.
  cat >"$sysroot/lib/cmake/fmt/fmt-config.cmake" <<'END'
add_library(fmt::fmt-header-only INTERFACE IMPORTED)
target_compile_definitions(fmt::fmt-header-only INTERFACE FMT_HEADER_ONLY=1)
target_include_directories(fmt::fmt-header-only INTERFACE "${CMAKE_CURRENT_LIST_DIR}/../../../include")
END
}

if [ ! -e "$sysroot/complete" ]; then
  install_dependencies >"$log" 2>&1 || { cat "$log" >&2; exit 1; }
  touch "$sysroot/complete"
fi

# --- Build

printf '%s\n' include/found/*.h platform/include/kv/*.h |
  xargs -P "$(nproc)" -I{} "$compiler" -std=c++17 -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror \
    -fsyntax-only -Iinclude -Iplatform/include -include {} -x c++ /dev/null
cmake --preset windows -B "$build" -DCMAKE_FIND_ROOT_PATH="$sysroot" -DCMAKE_CXX_FLAGS_RELEASE=-O1 \
  -DKVFOUND_TESTS_TOGETHER=ON "$@"
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
