#!/usr/bin/env bash
# Installs what is missing, builds kvfound and shows the foundations of a document:
#   scripts/run.sh [FILE]        FILE is examples/model.xml when left out
set -euo pipefail
file=$(realpath -- "${1:-$(dirname "$0")/../examples/model.xml}")
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/release.sh

build_release
exec "$release/tools/cli/kvfound" show "$file"
