"""Looks at a manual that was built in a browser, opened from the file system:
    check_site_browser.py SITE AXE OUT [CHECK...]
judges its pages with the script AXE of axe-core and leaves pictures of some in OUT."""

import pathlib
import sys
import unittest

from browser import Browser
from site_pages import read_site

# What axe-core finds wrong, a line each. It may not load style sheets from the file system again.
JUDGE = """
const done = arguments[0];
axe.run(document, {resultTypes: ['violations'], preload: false}).then(result => done(result.violations.flatMap(
    rule => rule.nodes.map(node => `${rule.id}: ${node.html.slice(0, 200)}`))), done);
"""
# Returns once the search has told what it found.
WAIT = """
const done = arguments[0];
const wait = () => document.querySelector('#page-results p').textContent ? done() : setTimeout(wait, 20);
wait();
"""
WIDTH = 1280
PHONE = 320
# A page of each kind: with samples, with wide tables, of a class, of a namespace, of the program.
KINDS = ["index.html", "tutorial.html", "guide/what-is-left.html", "formats/legacy.html", "program.html",
         "manual-page.html", "glossary.html", "reference/Found-Foundation.html", "reference/Found.html",
         "reference/headers.html", "maintainers/contributing.html"]
OPEN_ALL = "for (const d of document.querySelectorAll('details')) d.open = true"


class BrowserChecks(unittest.TestCase):
    site = None
    axe = None
    out = None

    @classmethod
    def setUpClass(cls):
        cls.browser = cls.enterClassContext(Browser())
        cls.addresses = sorted(read_site(cls.site))

    def open(self, address, width=WIDTH, scheme="light", media=""):
        self.browser.resize(width)
        self.browser.emulate(media, scheme)
        return self.browser.open((self.site / address).resolve().as_uri())

    def count(self, selector):
        return self.browser.run("return [...document.querySelectorAll(arguments[0])]"
                                ".filter(e => e.checkVisibility()).length", selector)

    def judge(self, address, *look):
        messages = self.open(address, *look)
        self.browser.run(OPEN_ALL)
        self.browser.run(self.axe)
        with self.subTest(f"{address} {look}"):
            self.assertEqual(self.browser.run_async(JUDGE), [])
            self.assertEqual(messages, [])

    def test_axe_finds_nothing(self):
        for address in self.addresses:
            self.judge(address)

    def test_axe_finds_nothing_in_the_dark_on_phones_and_on_paper(self):
        for address in KINDS:
            self.judge(address, WIDTH, "dark")
            self.judge(address, PHONE, "light")
            self.judge(address, WIDTH, "light", "print")

    def test_axe_finds_nothing_while_menu_and_results_are_open(self):
        for scheme in ("light", "dark"):
            self.open("index.html", PHONE, scheme)
            self.browser.run("document.getElementById('page-menu').click()")
            self.search("foundation")
            self.browser.run(self.axe)
            self.assertEqual(self.browser.run_async(JUDGE), [])
            self.browser.shoot(self.out / f"menu-{scheme}.png", 900)

    def test_axe_is_there_and_finds_what_is_wrong(self):
        self.open("index.html")
        self.browser.run(self.axe)
        self.browser.run("document.querySelector('article img').removeAttribute('alt')")
        self.assertEqual([fault.split(":")[0] for fault in self.browser.run_async(JUDGE)], ["image-alt"])

    def test_pages_fit_a_phone(self):
        for address in self.addresses:
            self.open(address, PHONE)
            self.assertEqual(self.browser.run("return document.documentElement.scrollWidth"), PHONE, address)

    def test_tables_of_several_columns_fit_a_phone(self):
        for address in KINDS:
            self.open(address, PHONE)
            wide = self.browser.run("return [...document.querySelectorAll('.scroll:has(.several)')]"
                                    ".filter(e => e.scrollWidth > e.clientWidth)"
                                    ".map(e => e.textContent.slice(0, 100))")
            self.assertEqual(wide, [], address)

    # --- Search

    def search(self, words):
        self.browser.run("document.getElementById('page-query').focus()")
        self.browser.press(words)
        self.browser.run_async(WAIT)
        return self.browser.run("return [...document.querySelectorAll('#page-results a')]"
                                ".map(a => a.textContent)")

    def test_search_finds_functions_and_tasks(self):
        manager = "reference/Found-FoundationManager.html"
        for words, address in (("removeAllNotUsed", f"{manager}#removeAllNotUsed"),
                               ("nobody uses", "guide/pruning.html"),
                               ("largest STIFFNESS", "guide/maximum.html")):
            self.open("guide/users.html")
            self.search(words)
            first = self.browser.run("return document.querySelector('#page-results a').href")
            self.assertEqual(first, f"{self.site.resolve().as_uri()}/{address}")

    def test_search_tells_when_nothing_is_found(self):
        self.open("index.html")
        self.assertEqual(self.search("xyzzy"), [])
        self.assertEqual(self.browser.run("return document.querySelector('#page-results p').textContent"),
                         "Nothing found")

    def test_keys_lead_through_the_search(self):
        self.open("index.html")
        self.browser.press("/")
        self.search("pruning")
        self.browser.press("\ue015")  # down
        self.assertEqual(self.browser.run("return document.activeElement.closest('ol') !== null"), True)
        self.browser.press("\ue00c")  # escape
        self.assertEqual(self.browser.run("return document.activeElement.id"), "page-query")
        self.assertEqual(self.count("#page-results"), 0)

    # --- Contents

    def test_contents_open_on_a_phone(self):
        self.open("tutorial.html", PHONE)
        self.assertEqual(self.count("#page-contents"), 0)
        self.browser.run("document.getElementById('page-menu').focus()")
        self.browser.press("\ue007")  # enter
        self.assertEqual(self.count("#page-contents"), 1)
        self.assertEqual(self.browser.run("return document.getElementById('page-menu').ariaExpanded"), "true")

    def test_pages_do_without_scripts(self):
        self.browser.allow_scripts(False)
        self.addCleanup(self.browser.allow_scripts, True)
        self.open("tutorial.html", PHONE)
        html = self.browser.read_html()
        self.browser.shoot(self.out / "without-scripts.png", 900)
        self.assertNotIn('class="scripted"', html)
        self.assertRegex(html, r'<button id="page-menu"[^>]*hidden')

    def test_paper_has_the_text_alone(self):
        self.open("guide/pruning.html", media="print")
        self.assertEqual(self.count("header, #page-contents, .next"), 0)
        self.assertEqual(self.count("article"), 1)

    def test_pictures_are_taken(self):
        for address in KINDS:
            for name, *look in (("light", WIDTH), ("dark", WIDTH, "dark"), ("phone", PHONE)):
                self.open(address, *look)
                self.browser.shoot(self.out / f"{address.replace('/', '-')}-{name}.png", 1200)


if __name__ == "__main__":
    BrowserChecks.site, axe, BrowserChecks.out = map(pathlib.Path, sys.argv[1:4])
    BrowserChecks.axe = axe.read_text()
    BrowserChecks.out.mkdir(parents=True, exist_ok=True)
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]], verbosity=2)
