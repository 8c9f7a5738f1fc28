#!/usr/bin/env bash
# Makes the reference of the public headers, build/doc/html/index.html, and fails when Doxygen warns of
# anything in them or when a link of a document leads nowhere.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages doxygen python3
rm -rf build/doc
mkdir -p build/doc
version=$(sed -n 's/^ *VERSION \([0-9.]*\)$/\1/p' CMakeLists.txt)
{ cat docs/Doxyfile; echo "PROJECT_NUMBER = $version"; } | doxygen -
find docs -name "*.md" -exec python3 -B tests/docs/links.py ./*.md {} +
