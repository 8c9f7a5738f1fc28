#!/usr/bin/env bash
# Makes the manual and fails when Doxygen warns of anything in the public headers or when a link leads nowhere.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages python3
scripts/build-docs.sh
mapfile -t documents < <(find . -maxdepth 1 -name '*.md'; find docs -name '*.md')
python3 -B tests/docs/links.py "${documents[@]}"
