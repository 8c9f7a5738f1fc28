"""The types that users' checkers see: of the package, of its core, and of the examples."""

import os
import pathlib
import re
import subprocess
import sys

import pytest

import kvfound as kv

pytest.importorskip("mypy")

PROJECT = pathlib.Path(__file__).resolve().parents[2]
PACKAGE = pathlib.Path(kv.__file__).absolute().parent
SETTINGS = PROJECT / "tools" / "python" / "pyproject.toml"


def run(module, *arguments):
    """What a module of mypy prints; it must end well."""
    path = str(PACKAGE.parent)
    done = subprocess.run(
        [sys.executable, "-m", module, *map(str, arguments)],
        cwd=PACKAGE.parent,
        env={**os.environ, "MYPYPATH": path, "PYTHONPATH": path},
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        text=True,
    )
    assert done.returncode == 0, done.stdout
    return done.stdout


def check(*paths):
    cache = PACKAGE.parent / ".mypy_cache"
    return run("mypy", "--config-file", SETTINGS, "--cache-dir", cache, *paths)


def test_the_package_is_strictly_typed():
    check(PACKAGE)


def test_the_stubs_are_those_of_the_core():
    run("mypy.stubtest", "--mypy-config-file", SETTINGS, "kvfound._core")


def test_the_examples_are_strictly_typed():
    check(*sorted((PROJECT / "examples" / "python").glob("*.py")))


# What a checker says of a line; None where it must say nothing.
LINES = {
    "foundation.area = (1, 2.5, 3)": None,
    "foundation.area = numpy.ones(3)": None,
    "foundation.area = None": None,
    "foundation.area = 'soft'": "Incompatible types in assignment",
    "foundation.area[2]": "is not indexable",
    "foundation.fail_area_z = kvfound.Failure.TENSION": None,
    "foundation.fail_area_z = 'tension'": "Incompatible types in assignment",
    "foundation.manager = None": 'Property "manager" .* is read-only',
    "foundation.colour": 'has no attribute "colour"',
    "manager[0].name.upper()": None,
    "manager['Raft']": "No overload variant",
    "manager.add(foundation).scale_values(2)": None,
    "manager.add(foundation, foundation)": "Too many",
    "manager.find(3).name": 'has no attribute "name"',
    "[f.number + 1 for f in manager.foundations]": None,
    "manager.add_user(lambda f: f.number == 1)": None,
    "manager.update([{'number': 3}], by='number', add=True) + 1": None,
    "manager.update([], 'number')": "Too many",
    "kvfound.modify_value(1, 2.0) + 1.0": None,
    "kvfound.modify_value(1, numpy.ones(3)).sum()": None,
    "kvfound.modify_value(1, 'a')": "No overload variant",
}


def test_checkers_tell_right_from_wrong(tmp_path):
    head = [
        "import numpy",
        "import kvfound",
        "foundation = kvfound.Foundation()",
        "manager = kvfound.FoundationManager()",
    ]
    program = tmp_path / "program.py"
    program.write_text("".join(f"{line}\n" for line in [*head, *LINES]))
    with pytest.raises(AssertionError) as raised:
        check(program)
    told = dict.fromkeys(LINES)
    for number, error in re.findall(r"program.py:(\d+): error: (.*)", str(raised.value)):
        told[list(LINES)[int(number) - len(head) - 1]] = error
    for line, error in LINES.items():
        assert (told[line] is None) == (error is None), (line, told[line])
        assert error is None or re.search(error, told[line]), (line, told[line])


def test_the_package_tells_that_it_is_typed():
    assert (PACKAGE / "py.typed").exists()
    assert (PACKAGE / "_core.pyi").exists()
