"""Opens reports in a browser and looks at what is there:
    check_pages.py KVFOUND EXAMPLES OUT
makes them with the program KVFOUND of the documents in EXAMPLES, and leaves pages and screenshots
in OUT."""

import os
import re
import subprocess
import sys
import unittest

import make_documents
from browser import Browser

PROGRAM, EXAMPLES, OUT = (os.path.abspath(path) for path in sys.argv[1:4])
UNITS = ["--unit-force", "kN", "--unit-length", "m"]
LONG_UNITS = ["--unit-force", "kip", "--unit-length", "inch"]
MANY = 150  # more than one group of pictures holds
LARGE = 5000
LARGE_SIZE = 4.2e6  # bytes, where all have both parts
PAPER_WIDTH = 703  # A4 within its margins, in CSS pixels
SMALLEST_PRINT = 10  # 7.5 points, in CSS pixels
WINDOW_HEIGHT = 9000  # points outside the window cannot be looked up
MAGNIFIED_WIDTH = 320  # 1280 at 400 %

# The names of foundations, in the order of the table.
NAMES = "return [...document.querySelectorAll('tbody th')].map(cell => cell.textContent)"
TEXT = "return document.body.innerText"

# Pairs of texts in a picture that lie upon each other, and texts outside the page. A name may be
# wider than the window that it is seen through.
OVERLAPS = """
const faults = [];
const isHit = (name, x, y) => document.elementsFromPoint(x, y).some(e => name.contains(e));
const check = texts => {
  const boxes = texts.map(text => text.getBoundingClientRect());
  const isName = texts.map(text => text.matches('g:not(.d) > g > text'));
  boxes.forEach((a, i) => {
    if (a.width === 0) return;
    if (!isName[i] && (a.left < 0 || a.right > innerWidth + 0.5)) faults.push(texts[i].textContent);
    boxes.slice(0, i).forEach((b, j) => {
      const left = Math.max(a.left, b.left), right = Math.min(a.right, b.right);
      const top = Math.max(a.top, b.top), bottom = Math.min(a.bottom, b.bottom);
      if (left >= right || bottom - 5 <= top) return;  // lines stand close
      const name = isName[i] ? texts[i] : isName[j] ? texts[j] : null;
      if (name && !isHit(name, left + 1, (top + bottom) / 2)) return;
      faults.push(texts[j].textContent + ' / ' + texts[i].textContent);
    });
  });
};
for (const picture of document.querySelectorAll('svg.picture')) {
  check([...picture.querySelectorAll('.d > text')]);
  for (const row of picture.querySelectorAll(':scope > g:not(.d)'))
    check([...row.querySelectorAll('text')].filter(text => text.textContent));
}
return faults;
"""

# The least size of a text that is seen.
SMALLEST = """
let least = Infinity;
const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
while (walker.nextNode()) {
  const node = walker.currentNode.parentElement;
  if (!walker.currentNode.data.trim() || node.closest('script, title')) continue;
  if (!node.getClientRects().length) continue;
  least = Math.min(least, parseFloat(getComputedStyle(node).fontSize));
}
return least;
"""

# Elements that reach beyond the right edge.
BEYOND = """
return [...document.querySelectorAll('body *')].filter(
    e => !e.closest('svg g g') && e.getBoundingClientRect().right > innerWidth + 1.5).map(
    e => e.tagName + ' ' + e.textContent.slice(0, 30))
"""

# Texts that are too faint to be read, with their contrast.
FAINT = """
const parse = color => color.match(/[\\d.]+/g).slice(0, 3).map(Number);
const light = color => {
  const [r, g, b] = parse(color).map(c => c / 255).map(
      c => c <= 0.04045 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4);
  return 0.2126 * r + 0.7152 * g + 0.0722 * b;
};
const findPaper = node => {
  for (; node; node = node.parentElement) {
    const color = getComputedStyle(node).backgroundColor;
    if (color !== 'rgba(0, 0, 0, 0)') return color;
  }
};
const faults = new Set();
const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
while (walker.nextNode()) {
  const node = walker.currentNode.parentElement;
  if (!walker.currentNode.data.trim() || node.closest('script, title')) continue;
  const style = getComputedStyle(node);
  const ink = node.closest('svg') ? style.fill : style.color;
  const [a, b] = [light(ink), light(findPaper(node))].sort((x, y) => y - x);
  const contrast = (a + 0.05) / (b + 0.05);
  if (!(contrast >= 4.5)) faults.add(contrast.toFixed(1) + ' ' + walker.currentNode.data.trim());
}
return [...faults];
"""

SORT_STATE = """
return [...document.querySelectorAll('th[aria-sort]')].map(
    head => head.textContent + ' ' + head.getAttribute('aria-sort'))
"""


def make_page(document, *options):
    name = os.path.splitext(os.path.basename(document))[0]
    page = os.path.join(OUT, name + ".html")
    subprocess.run([PROGRAM, "report", document, "-o", page, *options], check=True,
                   stderr=subprocess.DEVNULL)
    return page


class ReportTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        os.makedirs(OUT, exist_ok=True)
        make_documents.write_nasty(os.path.join(OUT, "nasty.xml"))
        make_documents.write_empty(os.path.join(OUT, "empty.xml"))
        make_documents.write_many(os.path.join(OUT, "many.xml"), MANY)
        make_documents.write_wide(os.path.join(OUT, "wide.xml"))
        make_documents.write_many(os.path.join(OUT, "large.xml"), LARGE, share_of_both=1)
        cls.pages = {
            "model": make_page(os.path.join(EXAMPLES, "model.xml"), *UNITS),
            "beddings": make_page(os.path.join(EXAMPLES, "beddings.xml")),
            "beddings-1.0": make_page(os.path.join(EXAMPLES, "beddings-1.0.xml")),
            "nasty": make_page(os.path.join(OUT, "nasty.xml")),
            "empty": make_page(os.path.join(OUT, "empty.xml")),
            "many": make_page(os.path.join(OUT, "many.xml"), *UNITS),
            "wide": make_page(os.path.join(OUT, "wide.xml"), *LONG_UNITS),
        }
        cls.large = make_page(os.path.join(OUT, "large.xml"), *UNITS)
        cls.browser = cls.enterClassContext(Browser())

    def open(self, name, width=1200, height=900):
        self.browser.emulate()
        self.browser.resize(width, height)
        return self.browser.open(self.pages[name])

    def shoot(self, name, height=None):
        self.browser.shoot(os.path.join(OUT, name + ".png"), height)

    def run_script(self, script, *arguments):
        return self.browser.run(script, *arguments)

    def count(self, selector):
        return self.run_script("return document.querySelectorAll(arguments[0]).length", selector)

    def count_rows(self, part):
        return self.run_script(
            "return document.getElementById(arguments[0]).parentElement"
            ".querySelectorAll('svg > g:not(.d)').length", part)

    def sort_by(self, column):
        self.run_script("document.querySelectorAll('th button')[arguments[0]].click()", column)

    # --- All pages

    def test_every_page_opens_without_a_message_on_the_console(self):
        for name in self.pages:
            self.assertEqual(self.open(name), [], name)

    def test_no_page_loads_anything(self):
        for name in self.pages:
            self.open(name)
            self.assertEqual(
                self.run_script("return performance.getEntriesByType('resource').length"), 0, name)

    def test_every_page_is_valid_html(self):
        for name, page in self.pages.items():
            tidy = subprocess.run(["tidy", "-quiet", "-errors", page], capture_output=True,
                                  text=True)
            self.assertEqual(tidy.stderr, "", name)

    def test_every_picture_has_a_name_and_a_description(self):
        self.open("model")
        nodes = self.browser.command("Accessibility.getFullAXTree")["nodes"]
        pictures = [(node["name"]["value"], node.get("description", {}).get("value", ""))
                    for node in nodes if node.get("role", {}).get("value") in ("image", "img")]
        self.assertEqual([name for name, _ in pictures],
                         ["Area stiffness", "Line stiffness"])
        for _, description in pictures:
            self.assertIn("Logarithmic scale of translation: 10^2 to 10^6 kN/m", description)

    def test_text_can_be_read_in_light_and_dark_and_on_paper(self):
        for name in ("model", "nasty"):
            for media, scheme in (("", "light"), ("", "dark"), ("print", "dark")):
                self.open(name)
                self.browser.emulate(media, scheme)
                self.assertEqual(self.run_script(FAINT), [], f"{name} {media} {scheme}")

    def test_a_dark_page_has_dark_paper_unless_it_is_printed(self):
        def read_paper(media, scheme):
            self.browser.emulate(media, scheme)
            return self.run_script("return getComputedStyle(document.body).backgroundColor")
        self.open("model")
        self.assertEqual(read_paper("", "light"), "rgb(255, 255, 255)")
        self.assertEqual(read_paper("", "dark"), "rgb(18, 23, 28)")
        self.assertEqual(read_paper("print", "dark"), "rgb(255, 255, 255)")

    def test_texts_of_pictures_stand_apart(self):
        for name in ("model", "beddings", "many", "wide", "nasty"):
            for width in (1200, 1000, 961, 900, 700, 545, 500, MAGNIFIED_WIDTH):
                self.open(name, width, WINDOW_HEIGHT)
                self.assertEqual(self.run_script(OVERLAPS), [], f"{name} at {width}")
            self.open(name, PAPER_WIDTH, WINDOW_HEIGHT)
            self.browser.emulate("print")
            self.assertEqual(self.run_script(OVERLAPS), [], f"{name} on paper")

    def test_long_names_are_cut_off_before_the_values(self):
        self.open("wide", 1200, WINDOW_HEIGHT)
        widths = self.run_script(
            "const row = document.querySelectorAll('svg > g:not(.d)')[1];"
            "const name = row.querySelector(':scope > g text').getBoundingClientRect();"
            "const value = row.querySelector('line + text').getBoundingClientRect();"
            "return [name.right, value.left]")
        self.assertGreater(widths[0], widths[1])  # or the pictures would not show it
        self.open("wide")
        self.shoot("wide-light")
        self.open("wide", MAGNIFIED_WIDTH)
        self.shoot("wide-magnified")

    def test_no_page_is_wider_than_its_window(self):
        for name in self.pages:
            for width in (1200, MAGNIFIED_WIDTH):
                self.open(name, width)
                self.assertEqual(
                    self.run_script("return document.documentElement.scrollWidth"), width, name)

    def test_print_is_large_enough_and_stays_on_the_paper(self):
        for name in self.pages:
            self.open(name, PAPER_WIDTH)
            self.browser.emulate("print")
            self.assertGreaterEqual(self.run_script(SMALLEST), SMALLEST_PRINT, name)
            self.assertEqual(self.run_script(BEYOND), [], name)

    # --- The example

    def test_the_example_is_there_with_all_it_holds(self):
        self.open("model")
        text = self.run_script(TEXT)
        for part in ("model.xml", "Legacy model", "7 with area, 6 with line, 3 generated",
                     "350730.6658962116", "Raft on stiff clay", "kN, m", "no findings"):
            self.assertIn(part, text)
        self.assertEqual(self.run_script("return document.title"), "Beddings of model.xml")
        self.assertEqual(self.run_script(NAMES)[6], "Rückwand Kranbahn")
        self.assertEqual(self.count("tbody tr"), 12)
        self.assertEqual(self.count_rows("area"), 12)
        self.assertEqual(self.count_rows("line"), 12)
        self.shoot("model-light")

    def test_longer_bars_are_of_greater_values(self):
        self.open("model")
        widths = self.run_script(
            "const rows = [...document.querySelector('svg').querySelectorAll(':scope > g:not(.d)')];"
            "return [9, 2, 3, 4].map(i => [...rows[i].querySelectorAll('line')].pop()"
            ".getBoundingClientRect().width)")  # z: 6200, 15000, 80000, 120000
        self.assertEqual(widths, sorted(widths))
        self.assertGreater(widths[0], 100)
        self.assertLess(widths[-1], 300)

    def test_the_example_has_dark_and_narrow_pictures(self):
        self.open("model")
        self.browser.emulate(scheme="dark")
        self.shoot("model-dark")
        self.open("model", MAGNIFIED_WIDTH)
        self.shoot("model-magnified")

    def test_the_example_prints_on_a4(self):
        self.open("model")
        path = os.path.join(OUT, "model.pdf")
        self.browser.print(path)
        with open(path, "rb") as file:
            text = file.read().decode("latin-1")
        boxes = re.findall(r"/MediaBox \[0 0 ([\d.]+) ([\d.]+)\]", text)
        self.assertEqual({(round(float(x)), round(float(y))) for x, y in boxes}, {(595, 842)})
        self.assertLessEqual(len(boxes), 3)

    def test_exchange_documents_are_there_with_form_version_and_findings(self):
        self.open("beddings")
        self.assertIn("Exchange document\nVersion\ncurrent\nthe document states 2.0",
                      self.run_script(TEXT))
        self.assertIn("line 9, column 21", self.run_script(TEXT))
        self.shoot("beddings-light")
        self.open("beddings-1.0")
        self.assertIn("Exchange document\nVersion\n1.0\n", self.run_script(TEXT))

    # --- Sorting

    def test_a_heading_sorts_the_table_up_and_down(self):
        self.open("model")
        self.sort_by(5)  # z of the area; what has none stands last
        names = self.run_script(NAMES)
        self.assertEqual(names[:3] + names[6:8],
                         ["Found0010", "Found0011", "Found0012", "Pile cap P1 <4 piles>",
                          "Strip footing, axis A"])
        self.assertEqual(self.run_script(SORT_STATE), ["z ascending"])
        self.sort_by(5)
        names = self.run_script(NAMES)
        self.assertEqual(names[0:1] + names[6:8],
                         ["Pile cap P1 <4 piles>", "Found0010", "Strip footing, axis A"])
        self.assertEqual(self.run_script(SORT_STATE), ["z descending"])

    def test_a_heading_sorts_texts_by_the_numbers_in_them(self):
        self.open("many")
        self.sort_by(1)
        self.assertEqual(self.run_script(NAMES)[9:11], ["Bedding of slab 10", "Bedding of slab 11"])

    def test_infinities_and_what_is_no_number_stand_at_the_ends_of_a_sorted_column(self):
        def read_column():
            return self.run_script("return [...document.querySelectorAll('tbody tr')].map("
                                   "row => row.cells[4].textContent)")
        self.open("nasty")
        self.sort_by(4)  # y of the area
        column = read_column()
        self.assertEqual(column[:8], ["-inf", "0", "0", "0", "0", "1", "2", "inf"])
        self.assertEqual(set(column[8:]), {"nan", "–"})
        self.sort_by(4)
        column = read_column()
        self.assertEqual(column[:8], ["inf", "2", "1", "0", "0", "0", "0", "-inf"])
        self.assertEqual(set(column[8:]), {"nan", "–"})

    def test_a_name_that_looks_like_no_number_is_sorted_as_a_name(self):
        self.open("nasty")
        self.sort_by(1)
        self.assertNotEqual(self.run_script(NAMES)[-1], "nan")

    def test_headings_sort_from_the_keyboard(self):
        self.open("model")
        self.run_script("document.querySelectorAll('th button')[1].focus()")
        for kind in ("keyDown", "keyUp"):
            self.browser.command("Input.dispatchKeyEvent", type=kind, key="Enter", code="Enter",
                                 windowsVirtualKeyCode=13, text="\r")
        self.assertEqual(self.run_script(SORT_STATE), ["Name ascending"])
        self.assertEqual(self.run_script(NAMES)[0], "Floor on gravel \"0/45\"")

    # --- Names and values that are odd

    def test_names_show_as_their_text(self):
        self.open("nasty")
        self.assertEqual(self.run_script(NAMES)[:3],
                         ["<script>alert(1)</script>",
                          "\"><img src=x onerror=alert(2)> &amp;", "</title></style></svg><!--"])
        self.assertEqual(self.count("img"), 0)
        self.assertEqual(self.count("script"), 1)
        self.assertEqual(self.count("tbody tr"), 17)
        self.shoot("nasty-light")
        self.open("nasty", MAGNIFIED_WIDTH)
        self.shoot("nasty-magnified")

    def test_no_script_runs_but_that_of_the_page(self):
        self.open("nasty")
        ran = self.run_script(
            "const script = document.createElement('script');"
            "script.textContent = 'window.hasRun = true';"
            "document.body.append(script); return window.hasRun === true")
        self.assertFalse(ran)

    def test_a_page_is_complete_without_scripts(self):
        self.browser.command("Emulation.setScriptExecutionDisabled", value=True)
        self.open("model")
        root = self.browser.command("DOM.getDocument")["root"]["nodeId"]
        html = self.browser.command("DOM.getOuterHTML", nodeId=root)["outerHTML"]
        self.browser.command("Emulation.setScriptExecutionDisabled", value=False)
        self.assertEqual(html.count("<tr"), 14)
        self.assertEqual(html.count("<svg"), 2)
        self.assertNotIn("<button", html)
        self.assertIn('<p class="hint" hidden="">', html)

    def test_an_empty_document_says_so(self):
        self.open("empty")
        self.assertIn("The document holds no foundations.", self.run_script(TEXT))
        self.assertEqual(self.count("svg"), 0)

    # --- Many foundations

    def test_a_large_page_opens_quickly(self):
        size = os.path.getsize(self.large)
        self.browser.resize(1200)
        self.assertEqual(self.browser.open(self.large), [])
        seconds = self.run_script(
            "return performance.getEntriesByType('navigation')[0].loadEventEnd") / 1000
        print(f"{LARGE} foundations: {size / 1e6:.1f} MB, open after {seconds:.1f} s")
        self.assertEqual(self.count("tbody tr"), LARGE)
        self.assertLess(size, LARGE_SIZE)
        self.assertLess(seconds, 10)  # also where the machine is slow and busy

    def test_many_foundations_stand_in_groups_of_which_one_is_open(self):
        self.open("many")
        self.assertEqual(self.count("tbody tr"), MANY)
        self.assertEqual(self.count_rows("area"), MANY + 1)  # one of them all
        self.assertEqual(self.count("details"), 2 * 3)
        self.assertEqual(self.count("details[open]"), 2)
        self.shoot("many-light", 2400)

    def test_a_value_that_is_far_from_all_others_shows_without_opening_its_group(self):
        self.open("many")
        overview = self.run_script(
            "return document.getElementById('line').parentElement"
            ".querySelector('p.ranges span').textContent")
        self.assertRegex(overview, "^x 0.5 to [0-9.]+ kN/m²$")
        groups = self.run_script(
            "return [...document.querySelectorAll('summary')].map(line => line.textContent)"
            ".filter(text => text.includes('0.5 to'))")
        self.assertEqual([group[:21] for group in groups], ["Rows 61 to 120 of 150"])

    def test_groups_that_are_closed_are_printed(self):
        self.open("many", PAPER_WIDTH)
        height = ("return document.querySelector('#line ~ details:last-of-type')"
                  ".getBoundingClientRect().height")
        self.assertLess(self.run_script(height), 200)
        self.browser.emulate("print")
        self.assertGreater(self.run_script(height), 500)
        self.assertEqual(self.run_script(
            "return getComputedStyle(document.querySelector('.closed')).display"), "none")

    def test_groups_print_on_full_pages_below_what_is_told_of_them(self):
        self.open("many")
        path = os.path.join(OUT, "many.pdf")
        self.browser.print(path)
        with open(path, "rb") as file:
            pages = file.read().count(b"/MediaBox")
        self.assertLessEqual(pages, 19)
        self.browser.emulate("print")
        self.assertEqual(self.run_script(
            "return getComputedStyle(document.querySelector('summary')).breakAfter"), "avoid")

    def test_a_finding_leads_to_its_row(self):
        self.open("nasty")
        self.run_script("document.querySelector('.findings a').click()")
        target = self.run_script(
            "const row = document.querySelector(':target');"
            "return [row.cells[1].textContent, row.cells[2].textContent,"
            " row.cells[2].querySelector('a').getAttribute('href')]")
        self.assertEqual(target, ["Current", "current, 4 findings", "#findings"])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
