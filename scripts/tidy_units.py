"""Prepares clang-tidy of the tests: scripts/tidy_units.py BUILD

Leaves one compile command for each file in BUILD/compile_commands.json, since several targets
share files, and prints the tests and fuzz targets that clang-tidy has to look at. A group of files
that the build compiles together is one of them.
"""

import json
import pathlib
import re
import sys

build = pathlib.Path(sys.argv[1]).resolve()
root = pathlib.Path(__file__).resolve().parents[1]
database = build / "compile_commands.json"

commands = {}
for command in json.loads(database.read_text()):
    commands.setdefault(command["file"], command)
database.write_text(json.dumps(list(commands.values())))

groups = [file for file in commands if "/Unity/" in file]
grouped = {file for group in groups
           for file in re.findall('#include "(.*)"', pathlib.Path(group).read_text())}
alone = [file for file in commands
         if file.startswith((f"{root}/tests/", f"{root}/fuzz/")) and file not in grouped]
print("\n".join(groups + alone))
