#!/usr/bin/env bash
# Compares the binary interface of the libraries with that of release 1.0, which abi/ describes: a
# host that was built with it must go on working without being built again.
#   scripts/check-abi.sh [--update]
# --update makes what is built now the description; never after the release.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages "${build_packages[@]}" abigail-tools
build=build/abi
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKVFOUND_TOOLS=OFF -DKVFOUND_EXAMPLES=OFF \
  -DCMAKE_CXX_FLAGS="-ffile-prefix-map=$PWD/=" >/dev/null
cmake --build "$build" >/dev/null

for library in src/libkvfound platform/libkvplatform; do
  description=abi/$(basename $library).abi
  current=$build/$(basename $library).abi
  abidw --suppressions cmake/abi.suppr --headers-dir include --headers-dir platform/include \
    --drop-private-types --no-show-locs --no-corpus-path --no-comp-dir-path --no-write-default-sizes \
    --out-file "$current" "$build/$library.so"
  if [ "${1:-}" = --update ]; then
    cp "$current" "$description"
    continue
  fi
  # What was added since does no harm.
  if ! abidiff --leaf-changes-only --no-added-syms "$description" "$current" >"$build/report"; then
    cat "$build/report" >&2
    echo "$library.so no longer fits hosts that were built with 1.0." >&2
    exit 1
  fi
done
echo "The libraries fit hosts that were built with 1.0."
