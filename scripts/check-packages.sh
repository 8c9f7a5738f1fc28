#!/usr/bin/env bash
# Makes the Debian packages, has lintian look at them and at their source, builds a host with them, installs them in a bare
# Debian that has nothing but what they depend on, runs program and module there, upgrades the library alone,
# and removes all again without a trace.
#   scripts/check-packages.sh [FOLDER]        with a FOLDER, the packages that are there
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages "${build_packages[@]}" dpkg-dev file lintian mmdebstrap
# What is needed to build a package is needed to build at all.
diff <(sed -n '/^Build-Depends/,/^Standards/ s/^ \([a-z0-9-]*\).*/\1/p' debian/control | grep -v '^d[eh]') \
  <(printf '%s\n' "${python_build_packages[@]}" | grep -vx g++ | LC_ALL=C sort) ||
  { echo "debian/control and scripts/packages.sh differ in what building takes." >&2; exit 1; }
work=$(mktemp -d)
trap 'rm -rf --one-file-system "$work"' EXIT

[ $# -gt 0 ] || scripts/make-packages.sh >/dev/null
mkdir "$work/build"
cp "${1:-build/packages}"/*.deb "$work/build"
packages=("$work"/build/*.deb)
[ ${#packages[@]} -eq 5 ]
mkdir -p "$work/source/kvfound"
tar -c --exclude ./build --exclude ./.git . | tar -x -C "$work/source/kvfound"
(cd "$work/source" && quietly dpkg-source -b kvfound)
root=()
[ "$(id -u)" -ne 0 ] || root=(--allow-root)
lintian "${root[@]}" --display-info --pedantic --fail-on error,warning,info,pedantic \
  "${packages[@]}" "$work"/source/*.dsc

# A host, with the packages unpacked.
for package in "${packages[@]}"; do dpkg-deb -x "$package" "$work/unpacked"; done
cmake -S tests/consume/package -B "$work/host" -G Ninja -DCMAKE_PREFIX_PATH="$work/unpacked/usr" >/dev/null
cmake --build "$work/host" >/dev/null
"$work/host/minimal_host" examples/model.xml examples/beddings.xml "$work/saved" |
  grep -qx "15 foundations, 12 kept"

# The library as the next release may bring it.
mkdir "$work/newer"
dpkg-deb -R "$work"/build/libkvfound1_*.deb "$work/newer/tree"
sed -i 's/^Version: .*/&.1/' "$work/newer/tree/DEBIAN/control"
dpkg-deb --root-owner-group -b "$work/newer/tree" "$work/newer" >/dev/null

# What they need besides one another.
needed=$(for package in "${packages[@]}"; do dpkg-deb -f "$package" Depends; echo ,; done |
  tr ',' '\n' | sed 's/^ *//; s/[ (].*$//; /kvfound/d; /^$/d' | sort -u | paste -sd,)

cat >"$work/try.sh" <<'END'
set -ex
list_files() { find "$1" -xdev -not -path '*/var/*' -not -path '*/etc/ld.so.cache' | sort; }
show() {
  chroot "$1" kvfound show /tmp/model.xml | grep -qx '12 foundations, largest stiffness 350730.6658962116'
}
list_files "$1" >"$2/before"
dpkg --root="$1" -i "$2"/build/*.deb
for file in model.xml beddings.xml; do cp "$3/$file" "$1/tmp"; done
show "$1"
chroot "$1" kvfound diff /tmp/model.xml /tmp/model.xml
chroot "$1" python3 -c 'import kvfound; print(len(kvfound.open("/tmp/model.xml")))' | grep -qx 12
chroot "$1" bash -c '. /usr/share/bash-completion/completions/kvfound && complete -p kvfound'
zcat "$1/usr/share/man/man1/kvfound.1.gz" | grep -qi '^\.SH NAME'
ls "$1/usr/share/zsh/vendor-completions/_kvfound" "$1/usr/share/fish/vendor_completions.d/kvfound.fish"
ls "$1/usr/share/doc/kvfound/docs/guide/index.md" "$1/usr/share/doc/kvfound/examples/model.xml"
dpkg --root="$1" -P libkvfound-dev
dpkg --root="$1" -i "$2"/newer/*.deb
# dpkg does not ask whether the program wants the older one; apt does, and would remove the program.
APT_CONFIG=$MMDEBSTRAP_APT_CONFIG apt-get check
show "$1"
rm "$1"/tmp/*.xml
dpkg --root="$1" -P kvfound kvfound-doc python3-kvfound libkvfound1
list_files "$1" | diff "$2/before" -
END
mmdebstrap --variant=essential --include="$needed" --quiet \
  --customize-hook="sh $work/try.sh \"\$1\" $work $PWD/examples" bookworm /dev/null >"$work/log" 2>&1 ||
  { tail -20 "$work/log" >&2; exit 1; }
echo "The packages install, work and go without a trace: $(basename -a "${packages[@]}" | paste -sd' ')"
