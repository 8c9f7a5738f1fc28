# Sourced by the scripts that need packages from npm, behind packages.sh.

# ask_npm ARGUMENT...: runs npm. Where no registry answers, it alone would go on trying in silence.
ask_npm() {
  # Where npm is, it may be another one than Debian's, beside which that cannot be installed.
  command -v npm >/dev/null || install_packages npm
  timeout --kill-after=10 "${KVFOUND_NPM_SECONDS:-600}" npm "$@" --loglevel=error --prefer-offline \
    --fetch-retries=1 --fetch-timeout=60000 </dev/null ||
    { echo "npm $* failed: see above, or no registry of npm answers here." >&2; return 1; }
}

# install_npm_packages FOLDER NAME@VERSION...: installs them below FOLDER unless they are there.
install_npm_packages() {
  local folder=$1
  shift
  [ "$(cat "$folder/packages" 2>/dev/null)" != "$*" ] || return 0
  rm -rf "$folder"
  mkdir -p "$folder"
  quietly ask_npm install --no-audit --no-fund --ignore-scripts --prefix "$folder" "$@"
  echo "$*" >"$folder/packages"
}

# install_axe: installs axe-core, which judges how pages can be used, as the script $axe.
axe=build/axe/node_modules/axe-core/axe.min.js
install_axe() {
  install_npm_packages build/axe axe-core@4.14.1
}
