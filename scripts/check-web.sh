#!/usr/bin/env bash
# Lints the scripts and the style sheets of pages, and checks the types of those of the page for browsers.
# The linters come from npm, once.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/npm.sh
. scripts/sources.sh

install_packages esbuild
packages=(eslint@9.39.1 @eslint/js@9.39.1 stylelint@16.25.0 stylelint-config-recommended@16.0.0
  typescript@5.9.3)
folder=build/lint
install_npm_packages "$folder" "${packages[@]}"

export NODE_PATH=$PWD/$folder/node_modules
list_sources '*.js' | xargs -0 "$folder/node_modules/.bin/eslint" --max-warnings 0
# Those of the page for browsers use what others of them declare: they are looked at as one.
list_sources '*.css' | grep -zv '^./tools/web/' |
  xargs -0 "$folder/node_modules/.bin/stylelint" --config-basedir "$folder"
esbuild tools/web/page/main.css --bundle --log-level=warning --outfile="$folder/page.css"
"$folder/node_modules/.bin/stylelint" --config-basedir "$folder" "$folder/page.css"
"$folder/node_modules/.bin/tsc" --project tools/web/jsconfig.json
