#!/usr/bin/env python3
"""Fails when a room of the workbench includes one that does not lie below it.

    rooms.py FOLDER    the folder of the workbench
"""

import pathlib
import re
import sys

# What each room stands on; what lies below that lies below it, too.
STANDS_ON = {
    "text": [],
    "files": [],
    "foundations": ["text"],
    "spreadsheets": ["files", "foundations"],
    "documents": ["spreadsheets"],
    "checks": ["documents"],
    "comparing": ["documents"],
    "models": ["comparing"],
    "report": ["checks", "comparing"],
    "results": ["checks", "comparing"],
}

# Beside rooms: the library, its platform, and libraries of others.
OUTSIDE = ["found", "kv"]


def list_below(room):
    below = {room}
    for other in STANDS_ON[room]:
        below |= list_below(other)
    return below


def find_faults(folder):
    for path in sorted(folder.glob("*/*.*")):
        room = path.parent.name
        if room not in STANDS_ON:
            yield f"{path}: is in no room that is known"
            continue
        allowed = list_below(room) | set(OUTSIDE)
        for included in re.findall(r'^#include "([^"]*)"', path.read_text(), re.MULTILINE):
            if included.partition("/")[0] not in allowed:
                yield f"{path}: {room} does not stand on {included}"


def main():
    faults = list(find_faults(pathlib.Path(sys.argv[1])))
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
