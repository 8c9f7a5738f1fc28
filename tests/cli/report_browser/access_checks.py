"""Pages for those who do not see them, or who run no scripts."""

import re
import subprocess

from pages import ALL_SMALL, AXE, LARGE, PHONE_WIDTH, WIDTH, PageTest, make_page

# What axe-core finds wrong, a line each.
JUDGE = """
const done = arguments[0];
axe.run(document, {resultTypes: ['violations']}).then(result => done(result.violations.flatMap(
    rule => rule.nodes.map(node => `${rule.id}: ${node.html.slice(0, 200)}`))), done);
"""
LOOKS = (("", "light", WIDTH), ("", "dark", WIDTH), ("print", "light", WIDTH),
         ("", "light", PHONE_WIDTH))


def dump(name):
    """The lines of a page as a text browser shows it."""
    text = subprocess.run(["w3m", "-dump", "-cols", "160", make_page(name)], check=True,
                          capture_output=True, text=True).stdout
    return [" ".join(line.split()) for line in text.splitlines()]


class AccessChecks(PageTest):
    def judge(self, name, height=900):
        with open(AXE, encoding="utf-8") as file:
            axe = file.read()
        for media, scheme, width in LOOKS:
            self.open(name, width, height)
            self.browser.emulate(media, scheme)
            self.run_script("for (const d of document.querySelectorAll('details')) d.open = true")
            self.run_script(axe)
            with self.subTest(f"{name} {media} {scheme} {width}"):
                self.assertEqual(self.browser.run_async(JUDGE), [])

    def test_axe_finds_nothing_in_small_pages(self):
        for name in ALL_SMALL:
            self.judge(name)

    def test_axe_finds_nothing_in_a_page_of_thousands(self):
        self.judge("large")

    def test_axe_is_there_and_finds_what_is_wrong(self):
        self.open("model")
        with open(AXE, encoding="utf-8") as file:
            self.run_script(file.read())
        self.run_script("document.querySelector('[name=q]').parentElement.replaceWith("
                        "document.querySelector('[name=q]'))")
        faults = self.browser.run_async(JUDGE)
        self.assertEqual([fault.split(":")[0] for fault in faults], ["label"])

    def test_headings_tell_how_they_sort(self):
        self.open("model", fragment="#sort-area=z-down")
        nodes = self.browser.command("Accessibility.getFullAXTree")["nodes"]
        heads = [node["name"]["value"].strip() for node in nodes
                 if node.get("role", {}).get("value") == "columnheader"]
        self.assertEqual(heads[:3], ["No", "Name", "Marks"])
        self.assertIn("z kN/m³", heads)

    # --- Without scripts

    def read_without_scripts(self, name):
        self.browser.allow_scripts(False)
        try:
            self.open_without_scripts(name)
            return self.browser.read_html()
        finally:
            self.browser.allow_scripts(True)

    def open_without_scripts(self, name):
        self.browser.driver.get("about:blank")
        self.browser.driver.get(f"file://{make_page(name)}")

    def test_small_pages_are_whole_without_scripts(self):
        html = self.read_without_scripts("model")
        rows = re.findall(r"<tr", html)
        self.assertEqual(len(rows), 7 + 6 + 2)
        self.assertNotIn("<form id", html.split("<script>")[0])
        self.assertNotIn("<button", html.split("<script>")[0])

    def test_pages_of_thousands_hold_all_values_as_text_without_scripts(self):
        html = self.read_without_scripts("large")
        text = re.search(r'<pre id="data"[^>]*>(.*?)</pre>', html, re.DOTALL)[1]
        lines = text.strip().split("\n")
        self.assertEqual(len(lines), LARGE + 1)
        self.assertEqual(len({line.count("\t") for line in lines}), 1)
        self.assertRegex(lines[-1], rf"^{LARGE}\tBedding of slab {LARGE}\t\t[\d.]+\t")
        self.assertNotIn("<form id", html.split("<script>")[0])

    def test_no_empty_table_is_seen_without_scripts(self):
        self.browser.allow_scripts(False)
        try:
            self.open_without_scripts("large")
            self.browser.resize(WIDTH)
            self.shoot("large-without-scripts", 3000)
            document = self.browser.command("DOM.getDocument")["root"]["nodeId"]
            box = self.browser.command("DOM.querySelector", nodeId=document,
                                       selector=".scroll")["nodeId"]
            self.browser.command("CSS.enable")
            styles = self.browser.command("CSS.getComputedStyleForNode", nodeId=box)
        finally:
            self.browser.allow_scripts(True)
        shown = {entry["name"]: entry["value"] for entry in styles["computedStyle"]}
        self.assertEqual(shown["display"], "none")

    # --- In text browsers

    def test_a_text_browser_reads_facts_values_and_findings_in_their_order(self):
        text = "\n".join(dump("model"))
        parts = ["model.xml", "Largest area stiffness 120000 kN/m³", "\nArea stiffness\n",
                 "No Name Marks Area stiffness 0 10^2",
                 "3 Raft on stiff clay current 1500 1500 15000 z tension",
                 "12 Found0012 generated 871.25 871.25 8712.5 z tension 0.1", "\nLine stiffness\n",
                 "1 Strip footing, axis A", "9000 9000 45000", "Findings of the check",
                 "Nothing looks wrong.", "Made by kvfound"]
        places = [text.find(part) for part in parts]
        self.assertNotIn(-1, places, [part for part in parts if part not in text])
        self.assertEqual(places, sorted(places))

    def test_a_text_browser_reads_every_value_of_thousands(self):
        lines = dump("large")
        self.assertTrue(any(line.startswith(f"{LARGE} Bedding of slab {LARGE} ")
                            for line in lines))
        self.assertTrue(any(line.startswith("10^2 to 10^3 kN/m³ ") for line in lines))
