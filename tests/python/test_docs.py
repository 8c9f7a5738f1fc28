"""Runs the samples in Python of all documents and compares what they print."""

import os
import pathlib
import re
import shutil
import subprocess
import sys

import pytest

PROJECT = pathlib.Path(__file__).resolve().parents[2]
PAGE = PROJECT / "docs" / "python.md"
PAGES = [PROJECT / "README.md", *sorted((PROJECT / "docs").glob("*.md"))]
FENCE = re.compile(r"^```(\w+)\n(.*?)^```$", re.MULTILINE | re.DOTALL)


def list_blocks(page):
    """Language, line and text of each block."""
    text = page.read_text(encoding="utf-8")
    return [(one[1], text.count("\n", 0, one.start()) + 2, one[2]) for one in FENCE.finditer(text)]


def list_samples():
    """Each sample with its place and with what stands for its output; none where nothing does."""
    for page in PAGES:
        blocks = list_blocks(page)
        for (language, line, code), following in zip(blocks, [*blocks[1:], ("", 0, "")]):
            if language == "python":
                printed = following[2] if following[0] == "text" else None
                yield pytest.param(line, code, printed, id=f"{page.name}:{line}")


def strip_ends(text):
    return [line.rstrip() for line in text.splitlines()]


@pytest.mark.parametrize("line, code, printed", list(list_samples()))
def test_sample(line, code, printed, tmp_path):
    if re.search(r"numpy|to_pandas", code):
        pytest.importorskip("numpy")
        pytest.importorskip("pandas")
    shutil.copytree(PROJECT / "examples", tmp_path / "examples")
    done = subprocess.run(
        [sys.executable, "-B", "-W", "error", "-c", "\n" * (line - 1) + code],
        cwd=tmp_path,
        env={**os.environ, "PYTHONPATH": os.pathsep.join(filter(None, sys.path))},
        capture_output=True,
        encoding="utf-8",
    )
    assert (done.returncode, done.stderr) == (0, "")
    assert strip_ends(done.stdout) == strip_ends(printed or "")


def test_every_output_of_the_page_belongs_to_a_sample():
    languages = [language for language, _, _ in list_blocks(PAGE)]
    for before, language in zip([None, *languages], languages):
        assert language != "text" or before == "python"
    assert languages.count("python") >= 7


def test_columns_are_those_of_tables():
    import kvfound as kv

    names = list(kv.open(PROJECT / "examples" / "model.xml").to_dicts()[0])
    told = re.search(r"have: (`number`.*?)\.\n", PAGE.read_text(encoding="utf-8"), re.DOTALL)
    assert re.findall(r"`(\w+)`", told[1]) == names
