#!/usr/bin/env bash
# Lints the scripts and the style sheets of pages. The linters come from npm, once.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/npm.sh

packages=(eslint@9.39.1 @eslint/js@9.39.1 stylelint@16.25.0 stylelint-config-recommended@16.0.0)
folder=build/web
install_npm_packages "$folder" "${packages[@]}"

export NODE_PATH=$PWD/$folder/node_modules
git ls-files -z '*.js' | xargs -0 "$folder/node_modules/.bin/eslint" --max-warnings 0
git ls-files -z '*.css' | xargs -0 "$folder/node_modules/.bin/stylelint" --config-basedir "$folder"
