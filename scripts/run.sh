#!/usr/bin/env bash
# Installs what is missing, builds kvfound and shows the foundations of a document:
#   scripts/run.sh [FILE]        FILE is examples/model.xml when left out
set -euo pipefail
file=$(realpath -- "${1:-$(dirname "$0")/../examples/model.xml}")
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages "${build_packages[@]}"
build=build/release
log=$build/build.log
mkdir -p "$build"
{ cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release && cmake --build "$build"; } >"$log" 2>&1 ||
  { cat "$log" >&2; exit 1; }
exec "$build/tools/kvfound/kvfound" show "$file"
