"""The work of mutate.sh: copies the project, changes the copy point by point, builds and tests it."""

import argparse
import collections
import os
import pathlib
import re
import resource
import shutil
import signal
import subprocess
import sys
import time
from typing import NamedTuple

from mutations import Source

COPIED = ("CMakeLists.txt", "cmake", "fuzz", "include", "platform", "src", "tests")
OPTIONS = ("-DKVFOUND_TESTS=ON", "-DKVFOUND_TOOLS=OFF", "-DKVFOUND_EXAMPLES=OFF",
           "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0 -D_GLIBCXX_ASSERTIONS",
           # The programs need no new link when only the shared library is new.
           "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON")
TEST_PROGRAM = re.compile(r"^(tests/(?!platform/)\w+/\w+_tests): CXX", re.MULTILINE)
MEMORY_LIMIT = 4 << 30  # a change can make a loop that never stops allocating


class Mutant(NamedTuple):
    path: str  # src/...
    line: int
    change: str  # old  ->  new, and which one where a file has the like several times
    text: str  # of the whole changed file

    def __str__(self):
        return f"{self.path}:{self.line}: {self.change}"


def find_mutants(path):
    text = pathlib.Path(path).read_text()
    counts = collections.Counter()
    for change in Source(text).changes():
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
    paths = sorted(path for path in pathlib.Path("src").rglob("*") if path.suffix in (".cpp", ".h"))
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
    return chosen


def find_known(files):
    """Path and change of what docs/mutation.md lists: indented, under the path as a heading."""
    known = set()
    path = None
    for line in pathlib.Path("docs/mutation.md").read_text().splitlines():
        if line.startswith("#"):
            path = line.split()[-1]
        elif line.startswith("    ") and path.startswith("src/"):
            known.add((path, line.strip()))
    outdated = known - {(mutant.path, mutant.change) for mutants in files for mutant in mutants}
    if outdated:
        sys.exit("\n".join(["docs/mutation.md lists what is no change of the sources:",
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


def limit_memory():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


class Workshop:
    def __init__(self, folder):
        self.tree = folder / "tree"
        self.build = folder / "build"
        self.log = open(folder / "tests.log", "w")
        self.temporary = folder / "tmp"
        self.seconds = {}  # that each test program takes over the unchanged sources

    def prepare(self):
        copy_project(self.tree)
        subprocess.run(["cmake", "-S", self.tree, "-B", self.build, "-G", "Ninja", *OPTIONS],
                       check=True, stdout=subprocess.DEVNULL)
        targets = subprocess.run(["ninja", "-C", self.build, "-t", "targets", "all"], check=True,
                                 capture_output=True, text=True).stdout
        programs = TEST_PROGRAM.findall(targets)
        subprocess.run(["ninja", "-C", self.build, *programs], check=True)
        for program in programs:
            started = time.monotonic()
            if not self.passes(program, 600):
                sys.exit(f"{program} fails without any change; see {self.log.name}")
            self.seconds[program] = time.monotonic() - started

    def builds(self, target):
        return subprocess.run(["ninja", "-C", self.build, target], stdout=self.log,
                              stderr=subprocess.STDOUT).returncode == 0

    def passes(self, program, timeout):
        shutil.rmtree(self.temporary, ignore_errors=True)
        self.temporary.mkdir(parents=True)
        environment = {**os.environ, "TMPDIR": str(self.temporary.resolve())}
        command = [str((self.build / program).resolve()), "--gtest_fail_fast", "--gtest_brief=1"]
        run = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=self.log,
                               stderr=subprocess.STDOUT, env=environment, cwd=self.temporary,
                               start_new_session=True, preexec_fn=limit_memory)
        try:
            return run.wait(timeout) == 0
        except subprocess.TimeoutExpired:
            os.killpg(run.pid, signal.SIGKILL)
            run.wait()
            return False

    def judge(self, mutant):
        """What becomes of the mutant: "invalid" when it does not build, "killed" or "survived"."""
        self.log.write(f"=== {mutant}\n")
        self.log.flush()
        file = self.tree / mutant.path
        original = file.read_text()
        file.write_text(mutant.text)
        try:
            folder = pathlib.Path(mutant.path).parts[1]
            mirroring = f"tests/{folder}/"
            order = sorted(self.seconds,
                           key=lambda p: (not p.startswith(mirroring), self.seconds[p]))
            for program in order:
                if not self.builds(program):
                    return "invalid"
                if not self.passes(program, 10 + 5 * self.seconds[program]):
                    return "killed"
            return "survived"
        finally:
            file.write_text(original)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--number", type=int, default=0)
    parser.add_argument("--only", default="")
    options = parser.parse_args()

    files = find_every_mutant()
    mutants = choose_mutants(files, options)
    if options.list:
        print(*mutants, sep="\n")
        return 0

    known = find_known(files)
    workshop = Workshop(options.folder)
    workshop.prepare()
    everything = open(options.folder / "results.txt", "w")
    results = {}
    unknown = 0
    for number, mutant in enumerate(mutants, 1):
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
    for path, found in [*results.items(), ("total", every)]:
        killed, survived = found.count("killed"), found.count("survived")
        print(f"{path:40} {killed + survived:8} {killed:8} {survived:8}")
    print(f"{every.count('invalid')} more changes do not build; {unknown} survivors are not in"
          " docs/mutation.md")
    return 1 if unknown else 0


sys.exit(main())
