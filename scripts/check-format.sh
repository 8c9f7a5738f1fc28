#!/usr/bin/env bash
# Fails when a source file is not formatted as .clang-format says.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages clang-format
git ls-files -z '*.h' '*.cpp' | xargs -0 clang-format --dry-run --Werror
