"""Runs clang-tidy over all sources of a build: scripts/tidy.py BUILD

Sources that the build compiles together are put into one file, BUILD/units/..., since most of the time
goes into the headers that they share. They are not included: the static analyzer looks at the main
file only, and unused using-declarations are found nowhere else.
"""

import bisect
import concurrent.futures
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[1]
FOLDERS = ("src", "platform/src", "tools", "examples", "tests", "fuzz")
TEST_FOLDERS = ("tests", "fuzz")
TEST_CONFIGURATION = ROOT / "tests/.clang-tidy"


def is_below(source, folders):
    return any(source.is_relative_to(ROOT / folder) for folder in folders)


class Unit:
    """Sources that are looked at together; one is looked at where it is."""

    def __init__(self, sources, command, folder):
        self.sources = sources
        self.starts = []  # the line before the first of each source
        self.file = sources[0] if len(sources) == 1 else self.join(folder)
        arguments = shlex.split(command["command"])
        arguments[arguments.index(command["file"])] = str(self.file)
        # As if each source were still beside the headers of its folder.
        arguments += [f"-iquote{folder}" for folder in dict.fromkeys(source.parent for source in sources)]
        self.command = {"directory": command["directory"], "file": str(self.file), "arguments": arguments}

    def join(self, folder):
        texts = []
        lines = 0
        for source in self.sources:
            texts.append(source.read_text())
            self.starts.append(lines)
            lines += texts[-1].count("\n")
        name = "-".join(self.sources[0].relative_to(ROOT).with_suffix("").parts)
        file = folder / f"{name}-and-{len(self.sources) - 1}-more.cpp"
        file.write_text("".join(texts))
        return file

    def is_test(self):
        return is_below(self.sources[0], TEST_FOLDERS)

    def measure(self):
        """How long it takes, roughly: the analyzer does not look at tests."""
        return sum(source.stat().st_size for source in self.sources) * (1 if self.is_test() else 10)

    def locate(self, match):
        """A line of the file as one of its source."""
        line = int(match[1])
        index = bisect.bisect_left(self.starts, line) - 1
        return f"{self.sources[index]}:{line - self.starts[index]}:"

    def check(self, folder):
        """What clang-tidy finds, and whether that is nothing."""
        options = [f"--config-file={TEST_CONFIGURATION}"] if self.is_test() else []
        result = subprocess.run(["clang-tidy", "-p", folder, "--quiet", *options, self.file],
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        text = result.stdout
        if result.returncode != 0:
            text += re.sub(r".*warnings? generated\.\n", "", result.stderr)
        if self.starts:
            text = re.sub(re.escape(str(self.file)) + r":(\d+):", self.locate, text)
        return text, result.returncode == 0


def make_units(build, folder):
    units = []
    seen = set()
    for command in json.loads((build / "compile_commands.json").read_text()):
        file = pathlib.Path(command["file"])
        sources = [file]
        if "/Unity/" in command["file"]:
            sources = [pathlib.Path(name) for name in re.findall('#include "(.*)"', file.read_text())]
        for are_tests in (False, True):
            own = [source for source in sources
                   if source not in seen and is_below(source, FOLDERS)
                   and is_below(source, TEST_FOLDERS) == are_tests and not source.is_relative_to(build)]
            if own:
                units.append(Unit(own, command, folder))
                seen.update(own)
    return sorted(units, key=Unit.measure, reverse=True)


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    folder = build / "units"
    folder.mkdir(exist_ok=True)
    units = make_units(build, folder)
    (folder / "compile_commands.json").write_text(json.dumps([unit.command for unit in units]))
    failed = False
    with concurrent.futures.ThreadPoolExecutor(len(os.sched_getaffinity(0))) as pool:
        for text, is_clean in pool.map(lambda unit: unit.check(folder), units):
            sys.stdout.write(text)
            failed = failed or not is_clean
    count = sum(len(unit.sources) for unit in units)
    print(f"clang-tidy has looked at {count} sources in {len(units)} units.")
    sys.exit(failed)


if __name__ == "__main__":
    main()
