#!/usr/bin/env bash
# Passes scripts on a bare machine: a Debian with nothing but its essential packages, made by debootstrap in
# a folder of its own, with the last commit unpacked in it as a source archive has it, without .git.
#   scripts/check-bare.sh [SCRIPT...]     scripts/run.sh and scripts/test.sh when left out
# Needs the rights of root. Packages come from where those of this machine do.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

[ "$(id -u)" -eq 0 ] || exec sudo "$0" "$@"
[ $# -gt 0 ] || set -- scripts/run.sh scripts/test.sh
install_packages debootstrap git

release=bookworm
list_archives() {
  apt-get indextargets --format "$1" "Identifier: Packages" "Origin: Debian" "${@:2}"
}
mirror=$(list_archives "\$(REPO_URI)" "Codename: $release" | head -n 1)
[ -n "$mirror" ] || { echo "apt knows no package lists of Debian's $release." >&2; exit 1; }

machine=$(mktemp -d)
trap 'rm -rf --one-file-system "$machine"' EXIT
quietly debootstrap --variant=minbase "$release" "$machine" "$mirror"
list_archives "deb \$(REPO_URI) \$(RELEASE) \$(COMPONENT)" >"$machine/etc/apt/sources.list"
mkdir "$machine/kvfound"
git archive HEAD | tar -x -C "$machine/kvfound"

# There are no pseudo-terminals, nor any variable of this shell.
for script in "$@"; do
  echo "--- $script on a bare machine"
  unshare --mount-proc --pid --fork --kill-child --root="$machine" --wd=/kvfound \
    env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin "$script"
done
echo "A bare machine passes $*."
