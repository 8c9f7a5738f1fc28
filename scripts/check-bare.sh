#!/usr/bin/env bash
# Passes scripts on a bare machine: a Debian with nothing but its essential packages, made by debootstrap in
# a folder of its own, with the last commit unpacked in it as a source archive has it, without .git.
#   scripts/check-bare.sh [SCRIPT...]     scripts/run.sh and scripts/test.sh when left out
# Needs the rights of root. Packages come from where those of this machine do. A script that does not end within
# KVFOUND_BARE_MINUTES, 120 when left out, has failed.
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
echo "127.0.0.1 localhost" >"$machine/etc/hosts"  # the installer of Debian writes it, debootstrap does not
mkdir "$machine/kvfound"
git archive HEAD | tar -x -C "$machine/kvfound"

# What scripts need to reach the network as this machine does, which a bare one cannot know: the registry of
# npm, proxies, and whose certificates are trusted.
settings=()
if [ -z "${npm_config_registry:-}" ] && command -v npm >/dev/null; then
  npm_config_registry=$(npm config get registry 2>/dev/null)
fi
for name in npm_config_registry http_proxy https_proxy no_proxy; do
  [ -z "${!name:-}" ] || settings+=("$name=${!name}")
done
certificates=${NODE_EXTRA_CA_CERTS:-/etc/ssl/certs/ca-certificates.crt}
if [ -e "$certificates" ]; then
  cp "$certificates" "$machine/etc/certificates.pem"
  settings+=(NODE_EXTRA_CA_CERTS=/etc/certificates.pem)
fi

# There are no pseudo-terminals, nor any other variable of this shell.
minutes=${KVFOUND_BARE_MINUTES:-120}
for script in "$@"; do
  echo "--- $script on a bare machine"
  status=0
  # unshare takes no notice of anything milder, and all that it has started ends with it.
  timeout --signal=KILL "${minutes}m" \
    unshare --mount-proc --pid --fork --kill-child --root="$machine" --wd=/kvfound \
    env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin "${settings[@]}" "$script" </dev/null || status=$?
  [ $status -ne 137 ] || echo "$script was killed, as whatever does not end within $minutes minutes is." >&2
  [ $status -eq 0 ] || { echo "A bare machine does not pass $script." >&2; exit 1; }
  echo "--- $script passed, $SECONDS s so far"
done
echo "A bare machine passes $*."
