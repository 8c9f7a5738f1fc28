#!/usr/bin/env bash
# Installs what is missing, makes the page for browsers and passes its tests:
#   scripts/test-web.sh [NODE-TEST-OPTION...]
# What it saves is compared with what the program writes, so that is built, too, in the tree of
# scripts/test.sh. KVFOUND_BUILD names another build folder than build/test.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages "${build_packages[@]}"
command -v node >/dev/null || install_packages nodejs
scripts/build-web.sh
build=${KVFOUND_BUILD:-build/test}
cmake --preset test -B "$build" >/dev/null
cmake --build "$build" --target kvfound-cli

KVFOUND_ENGINE=$(realpath build/web/tools/web/engine.wasm)
KVFOUND_PROGRAM=$(realpath "$build/tools/cli/kvfound")
export KVFOUND_ENGINE KVFOUND_PROGRAM
node --expose-gc --test "$@" tests/web/engine/*.test.mjs
