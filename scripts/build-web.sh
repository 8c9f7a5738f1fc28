#!/usr/bin/env bash
# Installs what is missing and makes the page for browsers, build/web/kvfound.html:
#   scripts/build-web.sh [CMAKE-OPTION...]
# One file, which needs no network.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/sysroot.sh

install_packages "${sysroot_packages[@]}" emscripten esbuild python3
build=$PWD/build/web
# Emscripten's own scripts need some of Debian's, whichever Node.js runs them.
export NODE_PATH=/usr/share/nodejs
sysroot_tests=no
make_sysroot "$build" --toolchain "$PWD/cmake/emscripten.cmake"
cmake --preset web "$@" >"$build/configure.log" || { cat "$build/configure.log" >&2; exit 1; }
cmake --build --preset web --target kvfound-web

page=tools/web/page
esbuild "$page/main.js" --bundle --minify --format=esm --target=es2022 --log-level=warning \
  --outfile="$build/main.js"
esbuild "$page/main.css" --bundle --minify --target=chrome100,firefox100 --log-level=warning --outfile="$build/main.css"
scripts/pack-web.py --page "$page/page.html" --script "$build/main.js" --style "$build/main.css" \
  --engine "$build/tools/web/engine.wasm" --report tools/workbench/report/report.js "$build/kvfound.html"
