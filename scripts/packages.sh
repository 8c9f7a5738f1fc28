# Sourced by the other scripts.

# quietly COMMAND...: what it says is shown only when it fails.
quietly() {
  local log status=0
  log=$(mktemp)
  "$@" >"$log" 2>&1 </dev/null || { status=$?; cat "$log" >&2; }
  rm -f "$log"
  return $status
}

# install_packages PACKAGE...: installs those of the Debian packages that are missing.
install_packages() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' ||
      missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  local root=()
  [ "$(id -u)" -eq 0 ] || root=(sudo)
  root+=(env DEBIAN_FRONTEND=noninteractive)
  echo "Installing ${missing[*]} ..." >&2
  local install=("${root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}")
  # The package lists are fetched only when they are not there or name versions that are gone.
  "${install[@]}" >/dev/null 2>&1 </dev/null && return
  quietly "${root[@]}" apt-get update -qq
  quietly "${install[@]}"
}

build_packages=(g++ cmake ninja-build libpugixml-dev libfast-float-dev libfmt-dev libutf8proc-dev libcli11-dev
  nlohmann-json3-dev libsimdjson-dev libcsv-dev)
test_packages=("${build_packages[@]}" libgtest-dev librapidcheck-dev libxml2-dev libxml2-utils libxerces-c-samples
  locales mandoc python3 python3-jsonschema zsh fish)
python_build_packages=("${build_packages[@]}" pybind11-dev python3-dev)
python_packages=("${python_build_packages[@]}" python3-pytest python3-hypothesis python3-numpy
  python3-pandas python3-matplotlib mypy)
