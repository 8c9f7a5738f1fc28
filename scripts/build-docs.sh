#!/usr/bin/env bash
# Makes the manual, build/site/index.html, of the Markdown pages, the public headers and the manual page of
# the program. It can be read and searched where it lies; no server is needed.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages doxygen mandoc mkdocs python3 python3-pygments
folder=build/docs
rm -rf "$folder" build/site
mkdir -p "$folder"
doxygen docs/Doxyfile
version=$(sed -n 's/^ *VERSION \([0-9.]*\)$/\1/p' CMakeLists.txt)
# Python as Debian has it, for which its packages are.
/usr/bin/python3 -B docs/site/pages.py . "$folder/xml" "$folder/site" "$version"
/usr/bin/mkdocs build --quiet --config-file "$folder/site/mkdocs.yml"
rm "$folder"/site/site/sitemap.xml* # for servers that are searched, and never the same twice
mv "$folder/site/site" build/site
/usr/bin/python3 -B docs/site/search_index.py build/site
echo "The manual is build/site/index.html." >&2
