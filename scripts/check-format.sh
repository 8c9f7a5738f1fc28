#!/usr/bin/env bash
# Fails when a source file is not formatted as .clang-format says.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/sources.sh

install_packages clang-format
list_sources '*.h' '*.cpp' | xargs -0 clang-format --dry-run --Werror
