#!/bin/sh
# Compares the symbols that a shared library exports with a list: compare.sh LIBRARY LIST
# With --update the list becomes what the library exports: compare.sh --update LIBRARY LIST
list() { nm --dynamic --defined-only --demangle "$1" | cut -c 20- | LC_ALL=C sort -u; }

if [ "$1" = --update ]; then
  list "$2" >"$3"
else
  list "$1" | diff -u "$2" - || { echo "$1 exports something else than $2 lists" >&2; exit 1; }
fi
