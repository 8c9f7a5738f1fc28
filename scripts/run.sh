#!/usr/bin/env bash
# Installs what is missing, builds kvfound and shows the foundations of a document:
#   scripts/run.sh [FILE]        FILE is examples/model.xml when left out
set -euo pipefail
file=$(realpath -- "${1:-$(dirname "$0")/../examples/model.xml}")
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/release.sh

program=$release/tools/cli/kvfound
[ -e "$program" ] || echo "Building kvfound, once, which takes a few minutes ..." >&2
build_release
exec "$program" show "$file"
