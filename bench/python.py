#!/usr/bin/env python3
"""Prints what the Python package costs, beside the C++ reading and what else a user of Python would do;
by turns, each in a process of its own, as processor time and as ratio (of the least times).
  bench/python.py FIRST_RUN SPREADSHEETS PACKAGE [--size N] [--pairs COUNT]
FIRST_RUN and SPREADSHEETS are the programs kvfound_first_run and kvfound_spreadsheets, PACKAGE is the
folder with the package kvfound. Tables are compared before anything is told of them.
"""

import argparse
import pathlib
import subprocess
import sys
import tempfile
import time

SAMPLE = 500  # rows that are compared one by one

ATTRIBUTES = {
    "areaX": "FXAREA", "areaY": "FYAREA", "areaZ": "FZAREA",
    "lineX": "FXLINE", "lineY": "FYLINE", "lineZ": "FZLINE", "lineRotationX": "FXX",
}
VECTORS = [("areaX", "areaY", "areaZ"), ("lineX", "lineY", "lineZ"), ("lineRotationX",)]
FACTORS = {"areaFactor": "FACAREA", "lineFactor": "FACLINE"}
FAILURES = {
    "areaFailureZ": "FAILZAREA", "lineFailureX": "FAILXLINE", "lineFailureY": "FAILYLINE",
    "lineFailureZ": "FAILZLINE",
}
WORDS = {-1: "tension", 0: "none", 1: "compression"}


# --- What is measured, each in a process of its own

def read_manager(path):
    import kvfound

    began = time.process_time()
    manager = kvfound.FoundationManager()
    if not manager.read_xml(path):
        sys.exit("the document is not read")
    return time.process_time() - began, len(manager)


def open_model(path):
    import kvfound

    began = time.process_time()
    model = kvfound.open(path)
    return time.process_time() - began, len(model)


def open_and_tabulate(path):
    import kvfound
    import pandas  # noqa: F401

    began = time.process_time()
    frame = kvfound.open(path).to_pandas()
    return time.process_time() - began, len(frame)


def make_frame(path):
    import kvfound
    import pandas  # noqa: F401

    model = kvfound.open(path)
    began = time.process_time()
    frame = model.to_pandas()
    seconds = time.process_time() - began
    return seconds, compare(frame, loop_over(model))


def loop_over(model):
    """The table that a user makes of objects, without to_pandas()."""
    import pandas

    nothing = (None, None, None)
    rows = []
    for foundation in model.foundations:
        area = foundation.area or nothing
        line = foundation.line or nothing
        rotation = foundation.rotation or nothing
        rows.append({
            "number": foundation.number,
            "name": foundation.name,
            "generated": foundation.generated,
            "areaX": area[0],
            "areaY": area[1],
            "areaZ": area[2],
            "areaFailureZ": WORDS[foundation.fail_area_z],
            "areaFactor": foundation.factor_area,
            "lineX": line[0],
            "lineY": line[1],
            "lineZ": line[2],
            "lineRotationX": rotation[0],
            "lineFailureX": WORDS[foundation.fail_line_x],
            "lineFailureY": WORDS[foundation.fail_line_y],
            "lineFailureZ": WORDS[foundation.fail_line_z],
            "lineFactor": foundation.factor_line,
        })
    return pandas.DataFrame(rows)


def loop(path):
    import kvfound
    import pandas  # noqa: F401

    model = kvfound.open(path)
    began = time.process_time()
    frame = loop_over(model)
    return time.process_time() - began, len(frame)


def tabulate_tree(root):
    """The same table of the elements of lxml, with attributes by name and a column at a time."""
    import numpy
    import pandas

    elements = root.findall("FOUNDATIONS/FOUND")
    columns = {
        "number": numpy.array([int(e.get("NUMBER")) for e in elements]),
        "name": [e.get("NAME") for e in elements],
        "generated": [e.get("IsGenerated") == "1" for e in elements],
    }
    for names in VECTORS:
        values = [numpy.array([float(e.get(ATTRIBUTES[name], 0)) for e in elements])
                  for name in names]
        if names[0] != "areaX":  # which is never absent, as the library reads it
            absent = numpy.logical_not(numpy.any(values, axis=0))
            for column in values:
                column[absent] = numpy.nan
        columns.update(zip(names, values))
    for name, attribute in FACTORS.items():
        columns[name] = numpy.array([float(e.get(attribute, 0)) for e in elements])
    for name, attribute in FAILURES.items():
        columns[name] = [WORDS[int(e.get(attribute, 0))] for e in elements]
    return pandas.DataFrame(columns)


def tabulate_with_lxml(path):
    import kvfound
    import pandas  # noqa: F401
    from lxml import etree

    root = etree.parse(path).getroot()
    began = time.process_time()
    frame = tabulate_tree(root)
    seconds = time.process_time() - began
    return seconds, compare(kvfound.open(path).to_pandas(), frame)


def read_with_lxml(path):
    import pandas  # noqa: F401
    from lxml import etree

    began = time.process_time()
    frame = tabulate_tree(etree.parse(path).getroot())
    return time.process_time() - began, len(frame)


def compare(frame, other):
    """The number of rows, when the two tables agree."""
    wanted = frame.drop(columns="current")
    for name in wanted.columns:
        here, there = wanted[name].tolist(), other[name].tolist()
        if len(here) != len(there):
            sys.exit(f"{name}: {len(here)} and {len(there)} rows")
        for place in range(0, len(here), max(1, len(here) // SAMPLE)):
            a, b = here[place], there[place]
            if a != b and (a == a or b == b):  # not both NaN
                sys.exit(f"{name} in row {place}: {a} and {b}")
    return len(frame)


JOBS = {
    "read_xml": read_manager,
    "open": open_model,
    "open, to_pandas": open_and_tabulate,
    "to_pandas": make_frame,
    "loop": loop,
    "lxml": tabulate_with_lxml,
    "lxml, parsed": read_with_lxml,
}


# --- Measuring

class Bench:
    def __init__(self, arguments, folder):
        self.arguments = arguments
        self.folder = folder
        self.document = f"{folder}/legacy.xml"
        self.call([arguments.first_run, "make", f"{folder}/", str(arguments.size)])

    def call(self, command):
        environment = {"PYTHONPATH": str(self.arguments.package), "PATH": "/usr/bin:/bin"}
        done = subprocess.run(command, stdout=subprocess.PIPE, text=True, env=environment)
        if done.returncode != 0:
            sys.exit("failed: " + " ".join(map(str, command)))
        return done.stdout.split()

    def run(self, job):
        size = str(self.arguments.size)
        if job == "C++ readXml":
            words = self.call(
                [self.arguments.first_run, "readXml", "library", f"{self.folder}/", size])
            return float(words[0])
        if job == "C++ document":
            words = self.call([self.arguments.spreadsheets, "read", self.document, "none"])
        else:
            words = self.call([sys.executable, "-B", __file__, "--job", job, self.document])
        if words[1] != size:
            sys.exit(f"{job}: {words[1]} foundations")
        return float(words[0])

    def compare(self, first, second):
        """The least times of both."""
        pairs = [(self.run(first), self.run(second)) for _ in range(self.arguments.pairs)]
        return tuple(min(times) for times in zip(*pairs))


# What is compared: the job, the other, which of the two must not take longer, by which factor.
ROWS = [
    ("read_xml", "C++ readXml", "at most", 1.3),
    ("open", "C++ document", "at most", 1.3),
    ("to_pandas", "loop", "at least", 20.0),
    ("to_pandas", "lxml", "at least", 10.0),
    ("open, to_pandas", "lxml, parsed", None, None),
]


def main():
    if sys.argv[1] == "--job":
        print(*JOBS[sys.argv[2]](sys.argv[3]))
        return
    parser = argparse.ArgumentParser()
    parser.add_argument("first_run", type=pathlib.Path)
    parser.add_argument("spreadsheets", type=pathlib.Path)
    parser.add_argument("package", type=lambda name: pathlib.Path(name).resolve())
    parser.add_argument("--size", type=int, default=100_000, help="number of foundations")
    parser.add_argument("--pairs", type=int, default=7, help="how often each job is done")
    arguments = parser.parse_args()
    print(f"{'job':16} {'ms':>7}  {'beside':13} {'ms':>7} {'ratio':>6}  limit")
    with tempfile.TemporaryDirectory() as folder:
        bench = Bench(arguments, folder)
        for job, other, kind, limit in ROWS:
            own, beside = bench.compare(job, other)
            ratio = own / beside if kind == "at most" else beside / own
            holds = kind is None or (ratio <= limit if kind == "at most" else ratio >= limit)
            verdict = f"{kind} {limit:g}" + ("" if holds else "  FAILS") if kind else "-"
            times = f"{1000 * own:7.1f}  {other:13} {1000 * beside:7.1f}"
            print(f"{job:16} {times} {ratio:6.2f}  {verdict}")


if __name__ == "__main__":
    main()
