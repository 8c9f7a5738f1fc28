#!/usr/bin/env bash
# Makes reports of the examples and of documents that are odd, large or empty, and looks at them in a
# browser, on paper and as a text browser shows them; leaves pages and pictures in build/report.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/release.sh
. scripts/npm.sh

install_packages chromium chromium-driver fonts-dejavu-core poppler-utils python3-selenium tidy w3m
install_axe
build_release
rm -rf build/report
# Python as Debian has it, for which its packages are.
/usr/bin/python3 -B tests/cli/report_browser/check_pages.py "$release/tools/cli/kvfound" examples \
  "$axe" build/report
