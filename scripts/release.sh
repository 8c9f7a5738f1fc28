# Sourced by the scripts that need the optimised build: makes it in $release.
release=build/release
build_release() {
  install_packages "${build_packages[@]}"
  local log=$release/build.log
  mkdir -p "$release"
  { cmake -S . -B "$release" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
      -DKVFOUND_TOOLS_TOGETHER=ON &&
    cmake --build "$release"; } >"$log" 2>&1 || { cat "$log" >&2; return 1; }
}
