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

# install_axe: installs axe-core, which judges how pages can be used, as the script $axe.
axe=build/axe/node_modules/axe-core/axe.min.js
install_axe() {
  install_npm_packages build/axe axe-core@4.14.1
}
