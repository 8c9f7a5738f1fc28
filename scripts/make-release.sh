#!/usr/bin/env bash
# Makes what a release consists of from the last commit, into one folder:
#   scripts/make-release.sh [FOLDER]        FOLDER is build/release-VERSION when left out
# That is the archive of the sources, the Debian packages, the wheel for Python, a zip archive for Windows, the
# section of CHANGELOG.md, and checksums. The same commit gives the same bytes on every Debian 12 of one state.
# KVFOUND_RELEASE_BUILD names another folder to build in than build/release-build, KVFOUND_RELEASE_COMMIT another
# commit than the last.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages git zip
commit=${KVFOUND_RELEASE_COMMIT:-HEAD}
version=$(git show "$commit:CMakeLists.txt" | sed -n 's/^  VERSION //p')
name=kvfound-$version
folder=${1:-build/release-$version}
build=${KVFOUND_RELEASE_BUILD:-build/release-build}
mkdir -p "$folder" "$build"
folder=$(realpath "$folder")
build=$(realpath "$build")
if [ -n "$(git status --porcelain)" ]; then
  echo "What is not committed is not in the release." >&2
fi
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct "$commit")
export SOURCE_DATE_EPOCH TZ=UTC LC_ALL=C.UTF-8
umask 022

# --- Sources. All else is made from what is in the archive.

rm -rf "${build:?}/$name" "$folder"/{kvfound,libkvfound,python3-kvfound}*
git -c tar.umask=0022 archive --format=tar --prefix="$name/" "$commit" | gzip -n -9 >"$folder/$name.tar.gz"
tar --no-same-permissions -xf "$folder/$name.tar.gz" -C "$build"
# What is between this heading and the next.
awk -v heading="## $version " 'index($0, "## ") == 1 { inside = index($0, heading) == 1 } inside' \
  "$build/$name/CHANGELOG.md" >"$folder/RELEASE-NOTES.md"
[ -s "$folder/RELEASE-NOTES.md" ] || { echo "CHANGELOG.md has no section for $version." >&2; exit 1; }

# --- Packages

"$build/$name/scripts/make-packages.sh" "$build/packages" >/dev/null
cp "$build"/packages/*.deb "$folder"
"$build/$name/scripts/make-wheel.sh" "$folder" >/dev/null
"$build/$name/scripts/make-windows.sh" "$build/windows" "$folder/$name-windows-x86_64.zip"

(cd "$folder" && sha256sum -- {kvfound,libkvfound,python3-kvfound}* RELEASE-NOTES.md >SHA256SUMS)
rm -rf "${build:?}/$name"
cat "$folder/SHA256SUMS"
