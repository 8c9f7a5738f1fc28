#!/usr/bin/env bash
# Measures which lines and branches the tests reach: every one of src/ must be, and of the workbench
# every line and 95 of 100 branches, since there the compiler has some of its own, which destroy what
# an exception leaves. Other branches that only an exception takes are not counted; nor are those of
# the keys and lists that are made once and stay, which only a second thread takes. The report of each
# line is build/coverage/index.html.
# The program is left out: its tests run it where no counts can be written. Of all
# scripts, only this one compiles sources of the workbench one by one, so that none leans on another's headers.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages "${test_packages[@]}" gcovr
build=build/coverage
rm -rf "$build"  # what an earlier build reached must not count
cmake --preset coverage
cmake --build --preset coverage
ctest --preset coverage --parallel "$(nproc)"

report() {
  gcovr --root . "$build" --exclude-throw-branches --exclude-unreachable-branches \
    --exclude-branches-by-pattern '.*static const (auto|Fields::Field)\* const \w+ = .*' "$@"
}
report --filter include/ --filter platform/ --filter src/ --filter tools/workbench/ --html-details "$build/index.html" \
  --txt --print-summary
report --filter src/ --branches --fail-under-line 100 --fail-under-branch 100
report --filter tools/workbench/ --branches --fail-under-line 100 --fail-under-branch 95
