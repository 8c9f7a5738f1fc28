#!/usr/bin/env python3
"""Prints what reading and writing tables and JSON costs here and with Python's modules csv and json, by
turns, each in a process of its own, as processor time and as ratio (medians of the pairs).
  bench/spreadsheets.py kvfound_spreadsheets [--size N] [--pairs COUNT]
In Python a foundation is an object with typed fields, too, and what is written is laid out as here.
Limit: five times as fast.
"""

import argparse
import csv
import json
import pathlib
import random
import statistics
import subprocess
import sys
import tempfile
import time

LEAST = 5.0

FIELDS = ["number", "name", "generated", "areaX", "areaY", "areaZ", "areaFailureZ", "areaFactor",
          "lineX", "lineY", "lineZ", "lineRotationX", "lineFailureX", "lineFailureY",
          "lineFailureZ", "lineFactor", "current"]
NUMBERS = {"areaFactor", "lineFactor"}
STIFFNESS = {"areaX", "areaY", "areaZ", "lineX", "lineY", "lineZ", "lineRotationX"}
FLAGS = {"generated", "current"}
FAILURES = {"areaFailureZ", "lineFailureX", "lineFailureY", "lineFailureZ"}
MODES = {"tension": -1, "none": 0, "compression": 1}
WORDS = {mode: word for word, mode in MODES.items()}


class Foundation:
    __slots__ = FIELDS


def parse(name, text):
    """The value of a cell."""
    if name in STIFFNESS:
        return float(text) if text else None
    if name in FAILURES:
        return MODES[text]
    if name in FLAGS:
        return {"true": True, "false": False}[text]
    if name in NUMBERS:
        return float(text)
    return int(text) if name == "number" else text


def convert(name, value):
    """The value of a member; an infinity is a text."""
    if name in STIFFNESS:
        return float(value) if value is not None else None
    if name in FAILURES:
        return MODES[value]
    return float(value) if name in NUMBERS else value


def show(name, value):
    """What parse() reads."""
    if name in FAILURES:
        return WORDS[value]
    if name in FLAGS:
        return "true" if value else "false"
    return value


def make(values):
    foundation = Foundation()
    for name, value in values:
        setattr(foundation, name, value)
    return foundation


def read_csv(path):
    with open(path, newline="", encoding="utf-8") as file:
        return [make((name, parse(name, text)) for name, text in row.items())
                for row in csv.DictReader(file)]


def write_csv(foundations, path):
    with open(path, "w", newline="", encoding="utf-8") as file:
        writer = csv.writer(file)
        writer.writerow(FIELDS)
        for foundation in foundations:
            writer.writerow([show(name, getattr(foundation, name)) for name in FIELDS])


def read_json(path):
    with open(path, encoding="utf-8") as file:
        return [make((name, convert(name, value)) for name, value in values.items())
                for values in json.load(file)["foundations"]]


def write_json(foundations, path):
    values = [{name: getattr(foundation, name) if name not in FAILURES
               else WORDS[getattr(foundation, name)] for name in FIELDS}
              for foundation in foundations]
    with open(path, "w", encoding="utf-8") as file:
        json.dump({"format": "kvfound-foundations", "version": 1, "foundations": values}, file,
                  indent=2, ensure_ascii=False)


def run_python(job, source, target):
    is_json = pathlib.Path(target).suffix == ".json"
    began = time.process_time()
    foundations = (read_json if source.endswith(".json") else read_csv)(source)
    if job == "write":
        began = time.process_time()
        (write_json if is_json else write_csv)(foundations, target)
    print(time.process_time() - began, len(foundations))


def make_document(path, size):
    chance = random.Random(1)
    with open(path, "w", newline="", encoding="utf-8") as file:
        writer = csv.writer(file)
        writer.writerow(FIELDS)
        for number in range(1, size + 1):
            values = [repr(chance.choice((1500.0, 871.25, chance.random() * 1e5)))
                      for _ in range(7)]
            writer.writerow([number, f"Foundation {number}", "false", *values[:3], "tension", "0.1",
                             *values[3:], "none", "none", "compression", "0.25", "false"])


def measure(command, job, source, target, size):
    done = subprocess.run([*command, job, source, target], stdout=subprocess.PIPE, text=True,
                          check=True)
    seconds, count = done.stdout.split()
    if int(count) != size:
        sys.exit(f"{source}: {count} foundations were read")
    return float(seconds)


def main():
    if sys.argv[1] == "--python":
        run_python(*sys.argv[2:5])
        return
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("--size", type=int, default=100_000, help="number of foundations")
    parser.add_argument("--pairs", type=int, default=7, help="how often each job is done")
    arguments = parser.parse_args()
    here = [arguments.program]
    python = [sys.executable, __file__, "--python"]
    print(f"{'job':12} {'here, s':>9} {'Python, s':>10} {'times as fast':>14} {'least':>6}")
    with tempfile.TemporaryDirectory() as folder:
        table, data = f"{folder}/in.csv", f"{folder}/in.json"
        make_document(table, arguments.size)
        measure(here, "write", table, data, arguments.size)
        for job, source, target in (("read", table, "out.csv"), ("write", table, "out.csv"),
                                    ("read", data, "out.json"), ("write", data, "out.json")):
            pairs = [(measure(here, job, source, f"{folder}/{target}", arguments.size),
                      measure(python, job, source, f"{folder}/{target}", arguments.size))
                     for _ in range(arguments.pairs)]
            own, other = (statistics.median(times) for times in zip(*pairs))
            form = "JSON" if target.endswith("json") else "CSV"
            ratio = statistics.median(b / a for a, b in pairs)
            verdict = "" if ratio >= LEAST else "  BELOW"
            print(f"{job + ' ' + form:12} {own:9.3f} {other:10.3f} {ratio:14.1f} {LEAST:6}{verdict}")


if __name__ == "__main__":
    main()
