#!/usr/bin/env bash
# Installs what is missing, makes the page for browsers and passes its tests:
#   scripts/test-web.sh [NODE-TEST-OPTION...]
# What it saves, in Chromium and in Firefox, is compared with what the program writes, so that is built, too, in the tree of
# scripts/test.sh. KVFOUND_BUILD names another build folder than build/test.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/npm.sh

install_packages "${build_packages[@]}" chromium chromium-driver firefox-esr fonts-dejavu-core \
  poppler-utils python3-selenium
command -v node >/dev/null || install_packages nodejs
scripts/build-web.sh
build=${KVFOUND_BUILD:-build/test}
cmake --preset test -B "$build" >/dev/null
cmake --build "$build" --target kvfound-cli

KVFOUND_ENGINE=$(realpath build/web/tools/web/engine.wasm)
KVFOUND_PROGRAM=$(realpath "$build/tools/cli/kvfound")
export KVFOUND_ENGINE KVFOUND_PROGRAM
node --expose-gc --test "$@" tests/web/engine/*.test.mjs

# The page itself, as users have it. Pictures of its states are left in build/web-pictures.
install_axe
install_npm_packages build/firefox puppeteer-core@24.10.0
page=build/web/kvfound.html
# Python as Debian has it, for which its packages are.
/usr/bin/python3 -B tests/web/page/check_page.py "$page" "$KVFOUND_PROGRAM" "$axe" build/web-pictures
NODE_PATH=$PWD/build/firefox/node_modules KVFOUND_PAGE=$(realpath "$page") KVFOUND_AXE=$(realpath "$axe") \
  node --test tests/web/page/firefox.mjs
