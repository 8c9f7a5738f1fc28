#!/usr/bin/env bash
# Makes the manual and fails when Doxygen warns of anything in the public headers, when a link leads nowhere,
# when the reference lacks a function, and when axe-core finds fault with a page in a browser. Leaves pictures
# in build/doc-pictures.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/npm.sh

install_packages chromium chromium-driver fonts-dejavu-core python3 python3-selenium
install_axe
scripts/build-docs.sh
mapfile -t documents < <(find . -maxdepth 1 -name '*.md'; find docs -name '*.md')
python3 -B tests/docs/links.py "${documents[@]}"
python3 -B tests/docs/check_site.py build/site .
# Python as Debian has it, for which its packages are.
PYTHONPATH=tests/cli/report_browser /usr/bin/python3 -B tests/docs/check_site_browser.py build/site "$axe" \
  build/doc-pictures
