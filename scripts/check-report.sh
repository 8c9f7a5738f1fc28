#!/usr/bin/env bash
# Makes reports of the examples and of documents that are odd, large or empty, and looks at them in a
# browser; leaves pages and screenshots in build/report.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages "${build_packages[@]}" chromium chromium-driver fonts-dejavu-core python3 tidy
build=build/release
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$build" --target kvfound-cli
rm -rf build/report
python3 -B tests/tools/report_browser/check_pages.py "$build/tools/kvfound/kvfound" examples build/report
