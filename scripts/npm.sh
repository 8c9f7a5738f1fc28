# Sourced by the scripts that need packages from npm, behind packages.sh.

# install_npm_packages FOLDER NAME@VERSION...: installs them below FOLDER unless they are there.
install_npm_packages() {
  local folder=$1
  shift
  [ "$(cat "$folder/packages" 2>/dev/null)" != "$*" ] || return 0
  # Where npm is, it may be another one than Debian's, beside which that cannot be installed.
  command -v npm >/dev/null || install_packages npm
  rm -rf "$folder"
  mkdir -p "$folder"
  npm install --silent --prefer-offline --no-audit --no-fund --ignore-scripts --prefix "$folder" "$@"
  echo "$*" >"$folder/packages"
}
