#!/usr/bin/env bash
# Makes the manual and fails when Doxygen warns of anything in the public headers, when a link leads
# nowhere, and when the reference lacks a function.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages python3
scripts/build-docs.sh
mapfile -t documents < <(find . -maxdepth 1 -name '*.md'; find docs -name '*.md')
python3 -B tests/docs/links.py "${documents[@]}"
python3 -B tests/docs/check_site.py build/site .
