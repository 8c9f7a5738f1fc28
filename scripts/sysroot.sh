# Sourced by the scripts that build for other platforms: has what the project needs built like the
# project itself, and installed in a folder of its own. Without tests, where sysroot_tests is "no".
sysroot_packages=(cmake ninja-build googletest libfast-float-dev libfmt-dev libcli11-dev nlohmann-json3-dev)
sysroot_tests=yes

# fetch_source PACKAGE: the sources of Debian's package in build/apt, found through package lists beside
# those of the machine.
fetch_source() {
  local package=$1 apt=$PWD/build/apt key=/usr/share/keyrings/debian-archive-keyring.gpg
  mkdir -p "$apt/lists/partial"
  apt-get indextargets --format "deb-src [signed-by=$key] \$(REPO_URI) \$(RELEASE) \$(COMPONENT)" \
    "Identifier: Packages" "Origin: Debian" >"$apt/sources.list"
  [ -s "$apt/sources.list" ] || { echo "apt knows no package lists of Debian." >&2; return 1; }
  local options=(-qq -o "Dir::Etc::sourcelist=$apt/sources.list" -o Dir::Etc::sourceparts=/dev/null
    -o "Dir::State::lists=$apt/lists" -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=
    -o APT::Sandbox::User=root)
  apt-get "${options[@]}" update &&
    (cd "$apt" && apt-get "${options[@]}" source --download-only "$package") &&
    tar -xf "$apt/${package}"_*.orig.tar.gz -C "$apt"
}

# install_library NAME SOURCES BUILD [CMAKE-OPTION...]
install_library() {
  local build=$3/$1
  cmake -S "$2" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=OFF \
    -DCMAKE_POSITION_INDEPENDENT_CODE=ON -DCMAKE_INSTALL_PREFIX="$3/sysroot" "${@:4}" &&
    cmake --build "$build" && cmake --install "$build"
}

# Of the machine's headers those of libraries that consist of nothing else.
copy_headers() {
  local sysroot=$1
  mkdir -p "$sysroot/include" "$sysroot/lib/cmake/fmt" "$sysroot/share/cmake"
  cp -r /usr/include/{CLI,fast_float,fmt,nlohmann} "$sysroot/include"
  cp -r /usr/lib/cmake/FastFloat "$sysroot/lib/cmake"
  cp -r /usr/share/cmake/{CLI11,nlohmann_json} "$sysroot/share/cmake"
  # The package's own asks for the machine's library as well.
  cat >"$sysroot/lib/cmake/fmt/fmt-config.cmake" <<'END'
include_guard(GLOBAL)
add_library(fmt::fmt-header-only INTERFACE IMPORTED GLOBAL)
target_compile_definitions(fmt::fmt-header-only INTERFACE FMT_HEADER_ONLY=1)
target_include_directories(fmt::fmt-header-only INTERFACE "${CMAKE_CURRENT_LIST_DIR}/../../../include")
END
}

fill_sysroot() {
  local package
  for package in pugixml utf8proc simdjson libcsv; do
    compgen -G "build/apt/$package-*/" >/dev/null || fetch_source $package || return
  done
  for package in pugixml utf8proc; do install_library $package build/apt/$package-*/ "$@" || return; done
  install_library simdjson build/apt/simdjson-*/ "$@" -DSIMDJSON_ENABLE_THREADS=OFF || return
  # Its own build is for make and knows no toolchain of CMake.
  install_library libcsv cmake/libcsv "$@" -DLIBCSV_SOURCES="$(echo "$PWD"/build/apt/libcsv-*/)" || return
  copy_headers "$1/sysroot" || return
  [ $sysroot_tests = no ] || install_library googletest /usr/src/googletest "$@" -DBUILD_GMOCK=OFF
}

# make_sysroot BUILD [CMAKE-OPTION...]: BUILD/sysroot, unless it is there.
make_sysroot() {
  [ -e "$1/sysroot/complete" ] && return
  mkdir -p "$1"
  fill_sysroot "$@" >"$1/dependencies.log" 2>&1 || { cat "$1/dependencies.log" >&2; return 1; }
  touch "$1/sysroot/complete"
}
