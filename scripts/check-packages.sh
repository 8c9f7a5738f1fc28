#!/usr/bin/env bash
# Makes the Debian packages, installs them in a bare Debian that has nothing but what they depend on,
# runs the program there, and removes them again without a trace.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/release.sh

install_packages dpkg-dev file mmdebstrap
build_release
work=$(mktemp -d)
trap 'rm -rf --one-file-system "$work"' EXIT

(cd "$release" && cpack -G DEB -B "$work/build" >/dev/null)
packages=("$work"/build/*.deb)

# What they need besides one another.
needed=$(for package in "${packages[@]}"; do dpkg-deb -f "$package" Depends; echo ,; done |
  tr ',' '\n' | sed 's/^ *//; s/[ (].*$//; /kvfound/d; /^$/d' | sort -u | paste -sd,)

cat >"$work/try.sh" <<'END'
set -e
list_files() { find "$1" -xdev -not -path '*/var/*' -not -path '*/etc/ld.so.cache' | sort; }
list_files "$1" >"$2/before"
dpkg --root="$1" -i "$2"/build/*.deb
chroot "$1" ldconfig
for file in model.xml beddings.xml; do cp "$3/$file" "$1/tmp"; done
chroot "$1" kvfound show /tmp/model.xml | grep -qx '12 foundations, largest stiffness 350730.6658962116'
chroot "$1" kvfound diff /tmp/model.xml /tmp/model.xml
rm "$1"/tmp/*.xml
dpkg --root="$1" -P kvfound libkvfound-dev libkvfound1
list_files "$1" | diff "$2/before" -
END
mmdebstrap --variant=essential --include="$needed" --quiet \
  --customize-hook="sh $work/try.sh \"\$1\" $work $PWD/examples" bookworm /dev/null >"$work/log" 2>&1 ||
  { tail -20 "$work/log" >&2; exit 1; }
echo "The packages install, work and go without a trace: $(basename -a "${packages[@]}" | paste -sd' ')"
