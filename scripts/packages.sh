# Sourced by the other scripts: installs the Debian packages named as arguments that are missing.
install_packages() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' ||
      missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  local root=()
  [ "$(id -u)" -eq 0 ] || root=(sudo)
  echo "Installing ${missing[*]} ..." >&2
  export DEBIAN_FRONTEND=noninteractive
  "${root[@]}" apt-get update -qq >&2
  "${root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
}

build_packages=(g++ cmake ninja-build libpugixml-dev libfast-float-dev libfmt-dev libutf8proc-dev libcli11-dev
  nlohmann-json3-dev libsimdjson-dev libcsv-dev)
test_packages=("${build_packages[@]}" libgtest-dev librapidcheck-dev libxml2-dev libxml2-utils locales mandoc python3
  python3-jsonschema zsh fish)
python_packages=("${build_packages[@]}" pybind11-dev python3-dev python3-pytest python3-hypothesis python3-numpy
  python3-pandas python3-matplotlib mypy)
