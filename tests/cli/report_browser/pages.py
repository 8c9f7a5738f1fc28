"""The documents of the checks and the pages that the program makes of them, and what the checks
have in common."""

import functools
import os
import subprocess
import sys
import unittest
import xml.etree.ElementTree

import make_documents
from browser import Browser

PROGRAM, EXAMPLES, AXE, OUT = (os.path.abspath(path) for path in sys.argv[1:5])
UNITS = ("--unit-force", "kN", "--unit-length", "m")
MANY = 150
STATIC = 500  # the most foundations whose rows are in the page without scripts
LARGE = 5000
HUGE = 100000

SMALL_PAGES = ("model", "beddings", "beddings-1.0", "nasty", "empty", "many", "wide", "long")
# Pages of changes: the documents before and after.
CHANGES = {"changes": ("model", "changed"), "alike": ("beddings", "beddings"),
           "other": ("nasty", "wide")}
ALL_SMALL = (*SMALL_PAGES, *CHANGES)
WIDTH = 1200
PHONE_WIDTH = 320  # also 1280 at 400 %

WRITERS = {
    "nasty": make_documents.write_nasty,
    "empty": make_documents.write_empty,
    "wide": make_documents.write_wide,
    "long": lambda path: make_documents.write_long(path, 60),
    "changed": lambda path: make_documents.write_changed(path, find_document("model")),
    "many": lambda path: make_documents.write_many(path, MANY),
    "static": lambda path: make_documents.write_many(path, STATIC, share_of_both=1),
    "large": lambda path: make_documents.write_many(path, LARGE, share_of_both=1),
    "huge": lambda path: make_documents.write_many(path, HUGE, share_of_both=1),
}
OPTIONS = {"many": UNITS, "static": UNITS, "large": UNITS, "huge": UNITS, "long": UNITS,
           "wide": ("--unit-force", "kip", "--unit-length", "inch")}


def find_document(name):
    return os.path.join(OUT if name in WRITERS else EXAMPLES, name + ".xml")


@functools.cache
def make_page(name):
    """The path of the page of a document, or of changes."""
    page = os.path.join(OUT, name + ".html")
    if name in CHANGES:
        before, after = (make_document(side) for side in CHANGES[name])
        run("diff", before, after, "--format", "html", "-o", page)
    else:
        run("report", make_document(name), "-o", page, *OPTIONS.get(name, ()))
    return page


def make_document(name):
    os.makedirs(OUT, exist_ok=True)
    document = find_document(name)
    if name in WRITERS:
        WRITERS[name](document)
    return document


def run(*arguments):
    status = subprocess.run([PROGRAM, *arguments], stderr=subprocess.DEVNULL, check=False)
    assert status.returncode in (0, 1), arguments  # 1 tells of differences


def read_foundations(name):
    root = xml.etree.ElementTree.parse(find_document(name)).getroot()
    return [found.attrib for found in root.iter("FOUND")]


class PageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.browser = cls.enterClassContext(Browser())

    def open(self, name, width=WIDTH, height=900, fragment=""):
        """Opens a page anew and returns the messages on the console."""
        self.browser.emulate()
        self.browser.resize(width, height)
        self.browser.open("about:blank")
        return self.browser.open(f"file://{make_page(name)}{fragment}")

    def shoot(self, name, height=None):
        self.browser.shoot(os.path.join(OUT, name + ".png"), height)

    def run_script(self, script, *arguments):
        return self.browser.run(script, *arguments)

    def count(self, selector):
        return self.run_script("return document.querySelectorAll(arguments[0]).length", selector)

    def read_text(self):
        return self.run_script("return document.body.innerText")

    def read_names(self, part):
        """The names in the table of a part, in its order."""
        return self.run_script(
            "return [...document.querySelectorAll(`table.${arguments[0]} tbody th`)].map("
            "cell => cell.textContent)", part)

    def read_column(self, part, column):
        return self.run_script(
            "return [...document.querySelectorAll(`table.${arguments[0]} tbody tr`)].map("
            "row => row.cells[arguments[1]].textContent)", part, column)

    def read_hash(self):
        return self.run_script("return location.hash")
