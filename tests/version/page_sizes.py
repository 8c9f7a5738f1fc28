"""Fails when the page on compatibility tells other sizes than the test of them:
    page_sizes.py PROJECT"""

import pathlib
import re
import sys


def read_page(text):
    """The sizes by class; a row may have several classes, with one size for all or one for each."""
    sizes = {}
    for names, numbers in re.findall(r"^\| (`.*`) \| ([\d, ]+) \|$", text, re.MULTILINE):
        classes = [name.split("::")[-1] for name in re.findall(r"`([\w:]+)`", names)]
        values = [int(number) for number in numbers.split(",")]
        sizes.update(zip(classes, values if len(values) > 1 else values * len(classes), strict=True))
    return sizes


def main(project):
    page = read_page((project / "docs/compatibility.md").read_text(encoding="utf-8"))
    test = (project / "tests/version/sizes_test.cpp").read_text(encoding="utf-8")
    tested = {name: int(size) for name, size in re.findall(r"hasSize<(?:\w+::)*(\w+), (\d+)>", test)}
    assert tested, "the test has no sizes"
    for name in sorted(page.keys() | tested.keys()):
        if page.get(name) != tested.get(name):
            print(f"{name}: {page.get(name)} on the page, {tested.get(name)} in the test")
    return 0 if page == tested else 1


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1])))
