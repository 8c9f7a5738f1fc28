#!/usr/bin/env bash
# Makes the wheel of the Python package, installs it in a fresh virtual environment, and uses it there:
# it must carry every library that not each Linux has.
#   scripts/check-wheel.sh [WHEEL]        with a WHEEL, the one that is there
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages python3 python3-venv python3-numpy python3-pandas binutils
python=/usr/bin/python3  # as Debian has it, for which its packages are
wheel=${1:-$(scripts/make-wheel.sh)}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$python" -m venv "$work/venv"
"$work/venv/bin/pip" install --quiet --no-index "$wheel"
package=$(cd "$work" && venv/bin/python -c 'import kvfound; print(kvfound.__path__[0])')

# Where the libraries of the system are hidden, only what the wheel carries is left to be found.
everywhere='^(lib(c|dl|gcc_s|m|pthread|rt|stdc\+\+)\.so|ld-linux|linux-vdso)'
for library in "$package"/*.so*; do
  while read -r name place; do
    [[ $name =~ $everywhere || $place == "$package"/* ]] ||
      { echo "$(basename "$library") finds $name at $place, not in the wheel" >&2; exit 1; }
  done < <(ldd "$library" | awk '{ name = $1; sub(".*/", "", name); print name, ($2 == "=>" ? $3 : $1) }')
  if readelf -d "$library" | grep -E 'R(UN)?PATH' | grep -vF "[\$ORIGIN]"; then
    echo "$(basename "$library") looks elsewhere" >&2
    exit 1
  fi
done

# Without numpy and pandas first, as the environment is; then with those of Debian.
version=$(sed -n 's/^ *VERSION //p' CMakeLists.txt)
cp -r examples "$work/examples"
(
  cd "$work"
  venv/bin/python - "$version" <<'PYTHON'
import importlib.metadata
import pathlib
import sys

import kvfound

assert kvfound.__version__ == importlib.metadata.version("kvfound") == sys.argv[1]
files = {path.name for path in importlib.metadata.files("kvfound")}
assert {"LICENSE", "THIRD-PARTY-NOTICES.md", "py.typed", "_core.pyi"} <= files, files
carried = [name for name in files if ".so." in name]
licences = list((pathlib.Path(kvfound.__file__).parent / "licenses").iterdir())
assert len(carried) == len(licences) > 0, (carried, licences)
assert "site-packages" in kvfound.__file__
model = kvfound.open("examples/model.xml")
model[3].area = (1500, 1500, 16000)
model.save()
assert [row["areaZ"] for row in kvfound.open("examples/model.xml").to_dicts()][2] == 16000.0
assert not kvfound.open(pathlib.Path("examples/soil.csv")).check()
model.report("model.html")
PYTHON
  debian=$(/usr/bin/python3 -c 'import numpy; print(numpy.__path__[0].removesuffix("/numpy"))')
  export PYTHONPATH=$debian
  venv/bin/python examples/python/winkler_beam.py >/dev/null
  venv/bin/python examples/python/raft.py >/dev/null
  venv/bin/python examples/python/soil_layers.py soil >/dev/null
)
echo "The wheel works in a fresh virtual environment: $(basename "$wheel")"
