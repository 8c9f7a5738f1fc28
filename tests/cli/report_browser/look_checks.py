"""What every page looks like and what it holds."""

import subprocess

from pages import ALL_SMALL, PHONE_WIDTH, WIDTH, PageTest, make_page

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
  if (!walker.currentNode.data.trim() || node.closest('script, option')) continue;
  const ink = getComputedStyle(node).color;
  const [a, b] = [light(ink), light(findPaper(node))].sort((x, y) => y - x);
  const contrast = (a + 0.05) / (b + 0.05);
  if (!(contrast >= 4.5)) faults.add(contrast.toFixed(1) + ' ' + walker.currentNode.data.trim());
}
return [...faults];
"""

# Where the marks of a row stand, from 0 at the start of the scale to 1 at its end.
MARKS = """
const plot = document.querySelectorAll(`table.${arguments[0]} tbody tr`)[arguments[1]]
    .querySelector('.plot svg');
const scale = plot.getBoundingClientRect();
return [...plot.children].map(mark => {
  const box = mark.getBoundingClientRect();
  return Math.round(1000 * ((box.left + box.right) / 2 - scale.left) / scale.width) / 1000;
});
"""

# Texts of a table that reach into the next cell.
TOUCHING = """
const read = cell => {
  const range = document.createRange();
  range.selectNodeContents(cell);
  return range.getBoundingClientRect();
};
return [...document.querySelectorAll('table.values tbody tr')].flatMap(row => {
  const cells = [...row.cells].filter(cell => !cell.matches('.plot') && cell.textContent.trim());
  return cells.slice(1).filter((cell, i) => read(cells[i]).right + 4 > read(cell).left).map(
      cell => cell.textContent + ' in ' + row.textContent);
});
"""


class LookChecks(PageTest):
    # --- All pages

    def test_every_page_opens_without_a_message_on_the_console(self):
        for name in (*ALL_SMALL, "static", "large"):
            self.assertEqual(self.open(name), [], name)

    def test_no_page_loads_anything(self):
        for name in (*ALL_SMALL, "large"):
            self.open(name)
            self.assertEqual(
                self.run_script("return performance.getEntriesByType('resource').length"), 0, name)

    def test_every_page_is_valid_html(self):
        for name in (*ALL_SMALL, "static", "large"):
            tidy = subprocess.run(["tidy", "-quiet", "-errors", "--drop-empty-elements", "no",
                                   make_page(name)], capture_output=True, text=True)
            self.assertEqual(tidy.stderr, "", name)

    def test_text_can_be_read_in_light_and_dark_and_on_paper(self):
        for name in ("model", "nasty", "large"):
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

    def test_no_page_is_wider_than_its_window(self):
        for name in (*ALL_SMALL, "large"):
            for width in (WIDTH, PHONE_WIDTH):
                self.open(name, width)
                self.assertEqual(
                    self.run_script("return document.documentElement.scrollWidth"), width, name)

    def test_values_stand_apart_in_every_window(self):
        for name in ALL_SMALL:
            for width in (WIDTH, 961, 600, PHONE_WIDTH):
                self.open(name, width)
                self.assertEqual(self.run_script(TOUCHING), [], f"{name} at {width}")

    def test_tables_of_narrow_windows_say_that_they_move(self):
        self.open("model", PHONE_WIDTH)
        self.assertIn("moves sideways", self.run_script(
            "return getComputedStyle(document.querySelector('.scroll'), '::before').content"))
        self.assertEqual(self.run_script(
            "const box = document.querySelector('.scroll');"
            "box.scrollLeft = 300;"
            "return box.querySelector('tbody th').getBoundingClientRect().left"
            " - box.getBoundingClientRect().left"), 0)

    def test_pictures_are_kept_of_every_page(self):
        for name in (*ALL_SMALL, "large"):
            height = 3000 if name in ("many", "large") else None
            for scheme in ("light", "dark"):
                self.open(name)
                self.browser.emulate(scheme=scheme)
                self.shoot(f"{name}-{scheme}", height)
            self.open(name, PHONE_WIDTH)
            self.shoot(f"{name}-phone", height)

    # --- The example

    def test_the_example_is_there_with_all_it_holds(self):
        self.open("model")
        text = self.read_text()
        for part in ("model.xml", "Legacy model", "7 with area, 6 with line, 3 generated",
                     "Raft on stiff clay", "120000 kN/m³\nz of foundation 5, Pile cap P1 <4 piles>",
                     "125000 kNm/m/rad\nrotation x of foundation 5", "kN, m\nas the document says",
                     "no findings", "No area part: 1-2, 6-7, 9.", "Nothing looks wrong."):
            self.assertIn(part, text)
        self.assertEqual(self.read_column("area", 0), ["3", "4", "5", "8", "10", "11", "12"])
        self.assertEqual(self.read_column("line", 0), ["1", "2", "5", "6", "7", "9"])

    def test_marks_stand_where_the_values_are_on_the_scale(self):
        self.open("model")
        x, y, z = self.run_script(MARKS, "area", 0)  # 1500, 1500, 15000 from 10^2 to 10^6
        self.assertAlmostEqual(x, 0.294, delta=0.005)
        self.assertEqual(y, x)
        self.assertAlmostEqual(z, 0.544, delta=0.005)

    def test_marks_of_zero_stand_before_the_scale(self):
        self.open("model")
        x, y, z = self.run_script(MARKS, "area", 3)  # 0, 0, 62500
        self.assertLess(x, -0.05)
        self.assertEqual(y, x)
        self.assertAlmostEqual(z, 0.699, delta=0.005)

    def test_exchange_documents_are_there_with_form_version_and_findings(self):
        self.open("beddings")
        self.assertIn("Exchange document\nVersion\n2.0\nread as the current one",
                      self.read_text())
        self.assertIn("line 9, column 21", self.read_text())
        self.open("beddings-1.0")
        self.assertIn("Exchange document\nVersion\n1.0\n", self.read_text())

    # --- Names and values that are odd

    def test_names_show_as_their_text(self):
        self.open("nasty")
        self.assertEqual(self.read_names("area")[:2],
                         ["<script>alert(1)</script>", "</title></style></svg><!--"])
        self.assertEqual(self.read_names("line")[0], "\"><img src=x onerror=alert(2)> &amp;")
        self.assertEqual(self.count("img"), 0)
        self.assertEqual(self.count("script"), 1)
        self.assertEqual(self.count("tbody tr"), 17)

    def test_no_script_runs_but_that_of_the_page(self):
        self.open("nasty")
        ran = self.run_script(
            "const script = document.createElement('script');"
            "script.textContent = 'window.hasRun = true';"
            "document.body.append(script); return window.hasRun === true")
        self.assertFalse(ran)

    def test_an_empty_document_says_so(self):
        self.open("empty")
        self.assertIn("The document holds no foundations.", self.read_text())
        self.assertEqual(self.count("table"), 0)
        self.assertEqual(self.count("form"), 0)
