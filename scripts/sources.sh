# Sourced by the scripts that look at sources one by one.

# list_sources PATTERN...: the project's files that fit one of the patterns, each ended by a zero byte. `*`
# stands for folders, too. Asks no version control: a source archive has none.
list_sources() {
  local patterns=() pattern
  for pattern in "$@"; do patterns+=(-o -path "./$pattern"); done
  find . \( -path ./.git -o -path ./build -o -path './build-*' -o -path ./out \) -prune -o -type f \( "${patterns[@]:1}" \) -print0 |
    sort -z
}
