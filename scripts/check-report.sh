#!/usr/bin/env bash
# Makes reports of the examples and of documents that are odd, large or empty, and looks at them in a
# browser; leaves pages and screenshots in build/report.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/release.sh

install_packages chromium chromium-driver fonts-dejavu-core python3-selenium tidy
build_release
rm -rf build/report
# Python as Debian has it, for which its packages are.
/usr/bin/python3 -B tests/cli/report_browser/check_pages.py "$release/tools/cli/kvfound" examples build/report
