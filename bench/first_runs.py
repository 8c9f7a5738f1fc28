#!/usr/bin/env python3
"""Prints what first runs cost: each job of the library and the same job of bare pugixml, by turns,
each in a process of its own, as ratios of processor time (medians of the pairs). See
docs/maintainers/speed.md.
  bench/first_runs.py kvfound_first_run [--jobs NAME,...] [--sizes N,...] [--pairs COUNT]
"""

import argparse
import pathlib
import statistics
import subprocess
import sys
import tempfile

# What each job must not take longer than, and should not: times bare pugixml.
JOBS = {
    "readXml": (1.5, 1.3),
    "readXml-unnamed": (1.7, 1.3),
    "writeXml": (1.5, 1.3),
    "readExchange": (2.0, 1.7),
    "readExchange-1.0": (1.8, 1.5),
    "writeExchange": (1.5, 1.3),
    "writeExchange-1.0": (1.3, 1.3),
}
GROWTH = (1.25, 1.1)  # of that ratio, from the smallest size to the largest
MEMORY = (5.0, 4.5)  # times the file, of readXml
FULL_PAIRS_UP_TO = 100_000  # larger documents are measured in a third of the pairs
LEAST_FOR_MEMORY = 100_000  # below, what the process takes for itself would count


def parse_arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("--jobs", default=",".join(JOBS), help="which, of %(default)s")
    parser.add_argument("--sizes", default="10000,100000,1000000", help="numbers of foundations")
    parser.add_argument("--pairs", type=int, default=9, help="how often each job is done")
    arguments = parser.parse_args()
    arguments.jobs = arguments.jobs.split(",")
    arguments.sizes = sorted(int(size) for size in arguments.sizes.split(","))
    unknown = set(arguments.jobs) - set(JOBS)
    if unknown:
        parser.error("no such job: " + ", ".join(sorted(unknown)))
    return arguments


class Bench:
    def __init__(self, program, folder):
        self.program = program
        self.folder = folder
        self.memory = {}  # of readXml by size, times the file

    def call(self, *arguments):
        command = [self.program, *map(str, arguments)]
        done = subprocess.run(command, stdout=subprocess.PIPE, text=True)
        if done.returncode != 0:
            sys.exit("failed: " + " ".join(map(str, command)))
        return done.stdout

    def run(self, job, side, size):
        seconds, memory, file_size = self.call(job, side, self.folder, size).split()
        if (job, side) == ("readXml", "library"):
            self.memory.setdefault(size, []).append(float(memory) / float(file_size))
        return float(seconds)

    def read_written(self):
        """What was written but the declaration, in which the two differ."""
        path = self.folder / "written.xml"
        return path.read_bytes().split(b"\n", 1)[1] if path.exists() else b""

    def measure(self, job, size, pairs):
        """The median time of the library, and of its ratio to that of pugixml."""
        times = []
        ratios = []
        for pair in range(pairs):
            library = self.run(job, "library", size)
            written = self.read_written() if pair == 0 else b""
            pugixml = self.run(job, "pugixml", size)
            if pair == 0 and written != self.read_written():
                sys.exit(f"{job}: the library and pugixml write different documents")
            times.append(library)
            ratios.append(library / pugixml)
        return statistics.median(times), statistics.median(ratios)


def print_row(what, size, each, measured, must, aim):
    verdict = "" if measured <= aim else "above aim" if measured <= must else "ABOVE MUST"
    row = f"{what:<34} {size:>9} {each:>8} {measured:>9.2f} {must:>5} {aim:>5}  {verdict}"
    print(row.rstrip(), flush=True)


def main():
    arguments = parse_arguments()
    ratios = {}
    with tempfile.TemporaryDirectory() as folder:
        bench = Bench(arguments.program, pathlib.Path(folder))
        print(f"{'first run, times bare pugixml':<34} {'N':>9} {'ns each':>8} {'measured':>9}"
              f" {'must':>5} {'aim':>5}")
        for size in arguments.sizes:
            bench.call("make", folder, size)
            pairs = arguments.pairs if size <= FULL_PAIRS_UP_TO else max(arguments.pairs // 3, 1)
            for job in arguments.jobs:
                seconds, ratios[job, size] = bench.measure(job, size, pairs)
                each = f"{seconds / size * 1e9:.0f}"
                print_row(job, size, each, ratios[job, size], *JOBS[job])

    smallest, largest = arguments.sizes[0], arguments.sizes[-1]
    if smallest < largest:
        for job in arguments.jobs:
            growth = ratios[job, largest] / ratios[job, smallest]
            print_row("growth of " + job, largest, "", growth, *GROWTH)
    for size, taken in bench.memory.items():
        if size < LEAST_FOR_MEMORY and size < largest:
            continue
        print_row("memory of readXml, times the file", size, "", statistics.median(taken), *MEMORY)


if __name__ == "__main__":
    main()
