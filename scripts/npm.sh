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
  # Where no registry answers, npm alone would go on trying in silence.
  quietly timeout --kill-after=10 "${KVFOUND_NPM_SECONDS:-600}" npm install --loglevel=error --prefer-offline \
    --no-audit --no-fund --ignore-scripts --fetch-retries=1 --fetch-timeout=60000 --prefix "$folder" "$@" ||
    { echo "npm did not install $*: see above, or no registry of npm answers here." >&2; return 1; }
  echo "$*" >"$folder/packages"
}

# install_axe: installs axe-core, which judges how pages can be used, as the script $axe.
axe=build/axe/node_modules/axe-core/axe.min.js
install_axe() {
  install_npm_packages build/axe axe-core@4.14.1
}
