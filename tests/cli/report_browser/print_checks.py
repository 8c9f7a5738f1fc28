"""Pages on paper."""

import functools
import os
import re
import subprocess

from pages import ALL_SMALL, CHANGES, LARGE, OUT, SMALL_PAGES, PageTest, make_page, read_foundations

PAPER_WIDTHS = {"portrait": 703, "landscape": 1032}  # A4 within its margins, in CSS pixels
SMALLEST_PRINT = 10  # 7.5 points, in CSS pixels
PORTRAIT, LANDSCAPE = (595, 842), (842, 595)  # A4 in points
BROAD = ("long", "nasty", "wide", "other")  # with values of many digits
MOST_SHEETS = {"model": 1, "beddings": 2, "beddings-1.0": 2, "nasty": 3, "empty": 1, "many": 6,
               "wide": 3, "long": 9, "large": 250}
VALUES = ("FXAREA", "FYAREA", "FZAREA", "FXLINE", "FYLINE", "FZLINE", "FXX")
HEADINGS = re.compile(r"\bNo +Name\b.*\bFails +Factor\b")

# The least size of a text that is seen.
SMALLEST = """
let least = Infinity;
const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
while (walker.nextNode()) {
  const node = walker.currentNode.parentElement;
  if (!walker.currentNode.data.trim() || node.closest('script, sup, .said')) continue;
  if (!node.getClientRects().length) continue;
  least = Math.min(least, parseFloat(getComputedStyle(node).fontSize));
}
return least;
"""

# Elements that reach beyond an edge.
BEYOND = """
return [...document.querySelectorAll('body *')].filter(element => {
  const { left, right } = element.getBoundingClientRect();
  return left < -1.5 || right > innerWidth + 1.5;
}).map(element => element.tagName + ' ' + element.textContent.slice(0, 30));
"""

# Texts of an axis that lie upon each other.
CROWDED = """
return [...document.querySelectorAll('.axis')].flatMap(axis => {
  const labels = [...axis.querySelectorAll('i')].filter(label => label.getClientRects().length);
  const boxes = labels.map(label => label.getBoundingClientRect());
  return labels.slice(1).filter((_, i) => boxes[i].right > boxes[i + 1].left).map(
      label => label.textContent + ' of ' + axis.textContent);
});
"""


def read_sheet_sizes(pdf):
    info = subprocess.run(["pdfinfo", "-l", "-1", pdf], check=True, capture_output=True,
                          text=True).stdout
    sizes = re.findall(r"^Page +\d+ size: +([\d.]+) x ([\d.]+) pts", info, re.MULTILINE)
    return [(round(float(width)), round(float(height))) for width, height in sizes]


def read_sheets(pdf):
    """The text of each sheet, in lines as they stand on it."""
    text = subprocess.run(["pdftotext", "-layout", pdf, "-"], check=True, capture_output=True,
                          text=True).stdout
    return text.split("\f")[:-1]


def measure_ink(pdf, sheet):
    """How far down a sheet is printed, as a share of its height, its foot left out."""
    path = f"{os.path.splitext(pdf)[0]}-ink"
    subprocess.run(["pdftoppm", "-r", "36", "-gray", "-singlefile", "-f", str(sheet), "-l",
                    str(sheet), pdf, path], check=True)
    with open(path + ".pgm", "rb") as file:
        picture = file.read()
    os.remove(path + ".pgm")
    width, height = (int(size) for size in picture.split(maxsplit=3)[1:3])
    pixels = picture[-width * height:]
    foot = height * 92 // 100
    lines = [y for y in range(foot) if min(pixels[y * width:(y + 1) * width]) < 200]
    return max(lines) / foot


class PrintChecks(PageTest):
    @classmethod
    @functools.cache
    def print_page(cls, name):
        """The page of a document as PDF, with pictures of its first and last sheets beside it."""
        pdf = os.path.join(OUT, name + ".pdf")
        cls.browser.emulate()
        cls.browser.open(f"file://{make_page(name)}")
        cls.browser.print(pdf)
        last = len(read_sheet_sizes(pdf))
        for sheet in {*range(1, min(last, 4) + 1), last}:
            subprocess.run(["pdftoppm", "-r", "80", "-png", "-f", str(sheet), "-l", str(sheet), pdf,
                            os.path.join(OUT, name + "-print")], check=True)
        return pdf

    def check_sheets(self, name):
        pdf = self.print_page(name)
        sheets = read_sheets(pdf)
        print(f"{name} prints on {len(sheets)} sheets")
        self.assertLessEqual(len(sheets), MOST_SHEETS[name], name)
        self.check_feet(name, sheets)
        self.check_rows(name, sheets)
        for sheet in range(1, min(len(sheets), 10)):  # all but the last, and a few of very many
            self.assertGreater(measure_ink(pdf, sheet), 0.6, f"{name}, sheet {sheet}")

    def check_feet(self, name, sheets):
        date = re.search(r"\d{4}-\d\d-\d\d \d\d:\d\d", sheets[0])[0]
        for number, sheet in enumerate(sheets, 1):
            foot = f"{name}.xml, {date} +page {number} of {len(sheets)}"
            self.assertRegex(" ".join(sheet.split()), foot.replace(".", r"\."), name)

    def check_rows(self, name, sheets):
        """Every value stands on the paper unbroken and every sheet with rows has their headings."""
        foundations = read_foundations(name)
        words = {word for sheet in sheets for word in sheet.split()}
        values = {found[value] for found in foundations for value in VALUES if value in found}
        numbers = {found["NUMBER"] for found in foundations}
        self.assertEqual(values - words, set(), name)
        for number, sheet in enumerate(sheets, 1):
            has_rows = not numbers.isdisjoint(re.findall(r"^ *(-?\d+) +\S", sheet, re.MULTILINE))
            if has_rows:
                self.assertRegex(sheet, HEADINGS, f"{name}, sheet {number}")
            if number == 1:
                self.assertTrue(has_rows, name)

    def test_every_value_is_printed_unbroken_below_its_heading_on_numbered_sheets(self):
        for name in ("model", "many", "wide", "long"):
            with self.subTest(name):
                self.check_sheets(name)

    def test_exchange_documents_and_odd_ones_have_numbered_sheets(self):
        for name in ("beddings", "beddings-1.0", "nasty", "empty"):
            sheets = read_sheets(self.print_page(name))
            self.assertLessEqual(len(sheets), MOST_SHEETS[name], name)
            self.check_feet(name, sheets)

    def test_changes_are_printed_on_numbered_sheets(self):
        for name, (before, after) in CHANGES.items():
            pdf = self.print_page(name)
            sheets = read_sheets(pdf)
            self.assertLessEqual(len(sheets), 3, name)
            for number, sheet in enumerate(sheets, 1):
                text = " ".join(sheet.split())
                self.assertRegex(
                    text, rf"{before}\.xml, [-\d]+ [\d:]+ to \S*{after}\.xml, [-\d]+ [\d:]+ page")
                self.assertIn(f"page {number} of {len(sheets)}", text)
            for number in range(1, len(sheets)):
                self.assertGreater(measure_ink(pdf, number), 0.6, f"{name}, sheet {number}")

    def test_paper_lies_on_its_side_only_where_a_table_needs_that(self):
        for name in SMALL_PAGES:
            expected = LANDSCAPE if name in BROAD else PORTRAIT
            self.assertEqual(set(read_sheet_sizes(self.print_page(name))), {expected}, name)

    def test_the_first_sheet_has_lines_to_sign(self):
        for name in ("model", "long"):
            sheets = read_sheets(self.print_page(name))
            self.assertRegex(sheets[0], r"\bPrepared +Checked +Date\b", name)

    def test_print_is_large_enough_and_stays_on_the_paper(self):
        for name in (*ALL_SMALL, "large"):
            kind = "landscape" if name in BROAD else "portrait"
            self.open(name, PAPER_WIDTHS[kind])
            self.browser.emulate("print")
            self.assertGreaterEqual(self.run_script(SMALLEST), SMALLEST_PRINT, name)
            self.assertEqual(self.run_script(BEYOND), [], name)
            self.assertEqual(self.run_script(CROWDED), [], name)

    def test_paper_tells_that_rows_are_left_out(self):
        self.open("model", fragment="#q=found00")
        self.browser.emulate("print")
        self.assertIn("Only name “found00”: area 3 of 7, line 0 of 6.", self.read_text())
        self.assertNotIn("Clear", self.read_text())
        self.open("model")
        self.browser.emulate("print")
        self.assertNotIn(" of 7", self.read_text())

    def test_thousands_of_foundations_print_row_by_row(self):
        self.check_sheets("large")
        sheets = read_sheets(self.print_page("large"))
        self.assertGreater(len(sheets), LARGE // 50)  # not one of each hundred
        self.assertNotIn("All values as text", "".join(sheets))
