#!/usr/bin/env bash
# Changes the sources of the library and of the platform at one point after the other, runs the unit
# tests each time and lists the changes that no test notices:
#   scripts/mutate.sh [--list] [--number N] [--minutes N] [--only REGEX]
# --list shows the changes and runs nothing, --number takes about so many, spread evenly over the
# files, --minutes takes as many in random order as are done by then, --only takes those whose
# "src/file:line: old  ->  new" has the expression in it. Ends with the figures and with the time that
# all changes would take, and with 1 when a change survives that docs/maintainers/mutation.md does not list.
# KVFOUND_BUILD names another folder than build/mutate, where results.txt has all changes in the end.
# The project itself is never touched.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages "${test_packages[@]}" python3
build=${KVFOUND_BUILD:-build/mutate}
mkdir -p "$build"
exec python3 scripts/mutate.py "$build" "$@"
