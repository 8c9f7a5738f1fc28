#!/usr/bin/env bash
# Lints the scripts and the style sheets of pages, and checks the types of those of the page for browsers.
# The linters come from npm, once.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/npm.sh
. scripts/sources.sh

packages=(eslint@9.39.1 @eslint/js@9.39.1 stylelint@16.25.0 stylelint-config-recommended@16.0.0
  typescript@5.9.3)
folder=build/lint
install_npm_packages "$folder" "${packages[@]}"

export NODE_PATH=$PWD/$folder/node_modules
list_sources '*.js' | xargs -0 "$folder/node_modules/.bin/eslint" --max-warnings 0
list_sources '*.css' | xargs -0 "$folder/node_modules/.bin/stylelint" --config-basedir "$folder"
"$folder/node_modules/.bin/tsc" --project tools/web/jsconfig.json
