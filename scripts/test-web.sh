#!/usr/bin/env bash
# Installs what is missing, makes the page for browsers and passes its tests:
#   scripts/test-web.sh [NODE-TEST-OPTION...]
# What it saves, in Chromium and in Firefox, is compared with what the program writes, so that is built, too, in the tree of
# scripts/test.sh. KVFOUND_BUILD names another build folder than build/test. Pictures of the page's states are left in
# build/web-pictures.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/npm.sh

install_packages "${test_packages[@]}" chromium chromium-driver firefox-esr fonts-dejavu-core \
  poppler-utils python3-selenium
command -v node >/dev/null || install_packages nodejs
install_axe
install_npm_packages build/firefox puppeteer-core@24.10.0
scripts/build-web.sh
build=${KVFOUND_BUILD:-build/test}
cmake --preset test -B "$build" >/dev/null
cmake --build "$build" --target kvfound-cli

KVFOUND_AXE=$(realpath "$axe")
KVFOUND_ENGINE=$(realpath build/web/tools/web/engine.wasm)
KVFOUND_PAGE=$(realpath build/web/kvfound.html)
KVFOUND_PROGRAM=$(realpath "$build/tools/cli/kvfound")
export KVFOUND_AXE KVFOUND_ENGINE KVFOUND_PAGE KVFOUND_PROGRAM

test_engine() { node --expose-gc --test "$@" tests/web/engine/*.test.mjs; }
# Python as Debian has it, for which its packages are.
test_in_chromium() {
  /usr/bin/python3 -B tests/web/page/check_page.py "$KVFOUND_PAGE" "$KVFOUND_PROGRAM" "$KVFOUND_AXE" build/web-pictures
}

# A browser waits for the other end of its tests much of the time, so both are at work at once.
log=build/web/firefox.log
NODE_PATH=$PWD/build/firefox/node_modules node tests/web/page/firefox.mjs >"$log" 2>&1 &
firefox=$!
trap 'kill "$firefox" 2>/dev/null || true' EXIT
failed=()
test_in_chromium || failed+=("in Chromium")
test_engine "$@" || failed+=("of its engine")
wait "$firefox" || failed+=("in Firefox")
trap - EXIT
cat "$log"
((${#failed[@]} == 0)) || { printf 'Tests of the page failed: %s\n' "${failed[@]}" >&2; exit 1; }
