#!/bin/sh
# Fails when something in the archive is made before main() or goes when the program ends:
#   nothing_to_construct.sh ARCHIVE
nm --demangle "$1" | awk '
  /\.o:$/ { object = $1 }
  /_GLOBAL__sub_I|__cxa_atexit/ { print object, $NF; found = 1 }
  END { exit NR == 0 || found }' >&2
