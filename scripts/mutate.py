"""The work of mutate.sh: copies the project, changes the copy point by point, builds and tests it."""

import argparse
import collections
import json
import math
import os
import pathlib
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import time
from typing import NamedTuple

from mutations import Source

COPIED = ("CMakeLists.txt", "cmake", "examples", "fuzz", "include", "platform", "src", "tests", "tools")
OPTIONS = ("-DKVFOUND_TESTS=ON", "-DKVFOUND_TOOLS=OFF", "-DKVFOUND_EXAMPLES=OFF",
           "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0 -D_GLIBCXX_ASSERTIONS",
           # The programs need no new link when only the shared library is new.
           "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON")
SOURCES = ("src", "platform/src")
# The platform has tests of its own; those of the library see little of it, but where memory runs out.
PLATFORM_FOLDERS = ("tests/platform/", "tests/xml_suite/")
PLATFORM_TESTS = ["tests/platform/platform_tests", "tests/xml_suite/xml_suite_tests",
                  "tests/faults/memory_fault_tests"]
TEST_PROGRAM = re.compile(r"^(tests/\w+/\w+_tests): CXX", re.MULTILINE)
# Data: a test compares all of it with what the system's own conversion says.
TABLE = re.compile(r"^constexpr [\w:]+ \w+\[\] =.*?;$", re.MULTILINE | re.DOTALL)
TABLES_OF_DATA = "platform/src/code_pages.cpp"
SLOW = 0.05  # seconds that a test takes which runs after all others
WAITING = 20  # times the seconds of the processor that a test may take: it may wait for other programs
MEMORY_LIMIT = 4 << 30  # a change can make a loop that never stops allocating


class Mutant(NamedTuple):
    path: str  # src/... or platform/src/...
    line: int
    change: str  # old  ->  new, and which one where a file has the like several times
    text: str  # of the whole changed file

    def __str__(self):
        return f"{self.path}:{self.line}: {self.change}"


def find_mutants(path):
    text = pathlib.Path(path).read_text()
    counts = collections.Counter()
    tables = [match.span() for match in TABLE.finditer(text)] if str(path) == TABLES_OF_DATA else []
    for change in Source(text).changes():
        if any(first <= change.start < last for first, last in tables):
            continue
        first = text.rfind("\n", 0, change.start) + 1
        last = text.find("\n", change.end)
        lines = [text[first:last], text[first:change.start] + change.text + text[change.end:last]]
        old, new = (" ".join(line.split()) for line in lines)
        if old == new:
            continue
        shown = f"{old}  ->  {new}"
        counts[shown] += 1
        shown += f"  #{counts[shown]}" if counts[shown] > 1 else ""
        changed = text[:change.start] + change.text + text[change.end:]
        yield Mutant(str(path), text.count("\n", 0, change.start) + 1, shown, changed)


def find_every_mutant():
    """The mutants of each file."""
    paths = [path for folder in SOURCES for path in sorted(pathlib.Path(folder).rglob("*"))
             if path.suffix in (".cpp", ".h")]
    return [list(find_mutants(path)) for path in paths]


def choose_mutants(files, options):
    only = re.compile(options.only)
    files = [[mutant for mutant in mutants if only.search(str(mutant))] for mutants in files]
    total = sum(map(len, files))
    wanted = min(options.number or total, total)
    chosen = []
    for mutants in files:
        count = -(-len(mutants) * wanted // total) if total else 0  # rounded up: no file without any
        chosen += [mutants[i * len(mutants) // count] for i in range(count)]
    if options.minutes:  # which are soon over: what is done by then must be a fair sample
        random.Random(0).shuffle(chosen)
    return chosen


def find_known(files):
    """Path and change of what docs/maintainers/mutation.md lists: indented, under the path as a heading."""
    known = set()
    path = None
    for line in pathlib.Path("docs/maintainers/mutation.md").read_text().splitlines():
        if line.startswith("#"):
            path = line.split()[-1]
        elif line.startswith("    ") and path.startswith(SOURCES):
            known.add((path, line.strip()))
    outdated = known - {(mutant.path, mutant.change) for mutants in files for mutant in mutants}
    if outdated:
        sys.exit("\n".join(["docs/maintainers/mutation.md lists what is no change of the sources:",
                            *(f"{path}: {change}" for path, change in sorted(outdated))]))
    return known


def copy_project(target):
    """Writes only what differs, so that a second run builds little."""
    wanted = {}
    for name in COPIED:
        top = pathlib.Path(name)
        for path in [top] if top.is_file() else top.rglob("*"):
            if path.is_file():
                wanted[target / path] = path.read_bytes()
    for path in target.rglob("*"):
        if path.is_file() and path not in wanted:
            path.unlink()
    for path, content in wanted.items():
        path.parent.mkdir(parents=True, exist_ok=True)
        if not path.exists() or path.read_bytes() != content:
            path.write_bytes(content)


def limit(seconds):
    """What the process that calls it may take of the processor and of memory."""
    resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds))
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def is_platform(mutant):
    return mutant.path.startswith("platform/")


class Stage(NamedTuple):
    """A part of the tests of a program."""
    filter: str
    seconds: float  # that it takes over the unchanged sources


class Workshop:
    def __init__(self, folder):
        self.tree = folder / "tree"
        self.build = folder / "build"
        self.log = open(folder / "tests.log", "w")
        self.temporary = folder / "tmp"
        self.report = folder.resolve() / "tests.json"
        self.stages = {}  # of each test program: its tests without the slow ones, then these

    def prepare(self, mutants):
        copy_project(self.tree)
        subprocess.run(["cmake", "-S", self.tree, "-B", self.build, "-G", "Ninja", *OPTIONS],
                       check=True, stdout=subprocess.DEVNULL)
        programs = self.find_programs(mutants)
        subprocess.run(["ninja", "-C", self.build, *programs], check=True)
        for program in programs:
            if not self.passes(program, Stage("*", 600), [f"--gtest_output=json:{self.report}"]):
                sys.exit(f"{program} fails without any change; see {self.log.name}")
            self.stages[program] = make_stages(json.loads(self.report.read_text()))

    def find_programs(self, mutants):
        programs = []
        if any(is_platform(mutant) for mutant in mutants):
            programs += PLATFORM_TESTS
        if not all(is_platform(mutant) for mutant in mutants):
            targets = subprocess.run(["ninja", "-C", self.build, "-t", "targets", "all"],
                                     check=True, capture_output=True, text=True).stdout
            programs += [program for program in TEST_PROGRAM.findall(targets)
                         if not program.startswith(PLATFORM_FOLDERS)]
        return list(dict.fromkeys(programs))

    def builds(self, target):
        return subprocess.run(["ninja", "-C", self.build, target], stdout=self.log,
                              stderr=subprocess.STDOUT).returncode == 0

    def passes(self, program, stage, options=()):
        shutil.rmtree(self.temporary, ignore_errors=True)
        self.temporary.mkdir(parents=True)
        environment = {**os.environ, "TMPDIR": str(self.temporary.resolve()),
                       "LOCPATH": str((self.build / "tests/locales").resolve())}
        command = [str((self.build / program).resolve()), "--gtest_fail_fast", "--gtest_brief=1",
                   f"--gtest_filter={stage.filter}", *options]
        seconds = math.ceil(10 + 5 * stage.seconds)
        run = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=self.log,
                               stderr=subprocess.STDOUT, env=environment, cwd=self.temporary,
                               start_new_session=True, preexec_fn=lambda: limit(seconds))
        try:
            return run.wait(WAITING * seconds) == 0
        except subprocess.TimeoutExpired:
            os.killpg(run.pid, signal.SIGKILL)
            run.wait()
            return False

    def order_programs(self, mutant):
        if is_platform(mutant):
            return PLATFORM_TESTS
        mirroring = f"tests/{pathlib.Path(mutant.path).parts[1]}/"
        programs = [program for program in self.stages if not program.startswith(PLATFORM_FOLDERS)]
        return sorted(programs, key=lambda p: (not p.startswith(mirroring),
                                               sum(stage.seconds for stage in self.stages[p])))

    def judge(self, mutant):
        """What becomes of the mutant: "invalid" when it does not build, "killed" or "survived"."""
        self.log.write(f"=== {mutant}\n")
        self.log.flush()
        file = self.tree / mutant.path
        original = file.read_text()
        file.write_text(mutant.text)
        try:
            for program in self.order_programs(mutant):
                if not self.builds(program):
                    return "invalid"
                if not all(self.passes(program, stage) for stage in self.stages[program]):
                    return "killed"
            return "survived"
        finally:
            file.write_text(original)


def make_stages(report):
    seconds = {f"{suite['name']}.{test['name']}": float(test["time"].rstrip("s"))
               for suite in report["testsuites"] for test in suite["testsuite"]}
    slow = {test: taken for test, taken in seconds.items() if taken > SLOW}
    if not slow:
        return [Stage("*", sum(seconds.values()))]
    return [Stage("-" + ":".join(slow), sum(seconds.values()) - sum(slow.values())),
            Stage(":".join(slow), sum(slow.values()))]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--number", type=int, default=0)
    parser.add_argument("--minutes", type=float, default=0)
    parser.add_argument("--only", default="")
    options = parser.parse_args()

    files = find_every_mutant()
    mutants = choose_mutants(files, options)
    if options.list:
        print(*mutants, sep="\n")
        return 0

    known = find_known(files)
    workshop = Workshop(options.folder)
    workshop.prepare(mutants)
    started = time.monotonic()
    everything = open(options.folder / "results.txt", "w")
    results = {}
    unknown = 0
    for number, mutant in enumerate(mutants, 1):
        if options.minutes and time.monotonic() - started > 60 * options.minutes:
            break
        result = workshop.judge(mutant)
        results.setdefault(mutant.path, []).append(result)
        print(f"{result:8} {mutant}", file=everything, flush=True)
        if result == "survived":
            isKnown = (mutant.path, mutant.change) in known
            unknown += not isKnown
            print(f"{'equivalent' if isKnown else 'SURVIVED'} {mutant}", flush=True)
        if sys.stderr.isatty():
            print(f"{number} of {len(mutants)}", end="\r", file=sys.stderr)

    print(f"\n{'file':40} {'mutants':>8} {'killed':>8} {'survived':>8}")
    every = [result for found in results.values() for result in found]
    for path, found in [*sorted(results.items()), ("total", every)]:
        killed, survived = found.count("killed"), found.count("survived")
        print(f"{path:40} {killed + survived:8} {killed:8} {survived:8}")
    print(f"{every.count('invalid')} more changes do not build; {unknown} survivors are not in"
          " docs/maintainers/mutation.md")
    minutes = (time.monotonic() - started) / 60
    total = sum(map(len, files))
    print(f"{len(every)} of all {total} changes took {minutes:.0f} minutes; all would take about"
          f" {minutes * total / max(len(every), 1):.0f}")
    return 1 if unknown else 0


sys.exit(main())
