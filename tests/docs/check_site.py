"""Looks at a manual that was built, page by page:
    check_site.py SITE PROJECT
Each link leads somewhere, the contents lead to each page, nothing is loaded from elsewhere, and the
reference has each public function of the headers."""

import collections
import pathlib
import re
import sys
import unittest

from headers import find_all_functions
from site_pages import read_site

OPERATORS = {"operator=": "operator-assign", "operator==": "operator-equal",
             "operator!=": "operator-not-equal"}
GLOBAL = "global"  # the page of what is in no class and no namespace


def find_anchors(page, name):
    """Those of a function, of which there may be several by that name."""
    stem = OPERATORS.get(name, name.replace("~", "destructor-"))
    return [anchor for anchor in page.anchors if re.fullmatch(re.escape(stem) + r"(-\d+)?", anchor)]


class SiteChecks(unittest.TestCase):
    site = None
    project = None

    @classmethod
    def setUpClass(cls):
        cls.pages = read_site(cls.site)

    def find_fault(self, page, tag, link):
        if re.match(r"(https?|mailto):", link):
            return "is loaded from elsewhere" if tag != "a" else None
        if link.startswith("data:"):
            return None
        address, anchor = page.resolve(link)
        target = self.pages.get(address)
        if target is None:
            return None if (self.site / address).is_file() else "leads nowhere"
        return "leads to no anchor" if anchor and anchor not in target.anchors else None

    def test_links_lead_somewhere(self):
        faults = [f"{page.address}: {link} {fault}" for page in self.pages.values()
                  for tag, link in page.links if (fault := self.find_fault(page, tag, link))]
        self.assertEqual(faults, [])
        self.assertGreater(sum(len(page.links) for page in self.pages.values()), 1000)

    def test_anchors_are_there_once(self):
        for page in self.pages.values():
            twice = [anchor for anchor, count in collections.Counter(page.anchors).items() if count > 1]
            self.assertEqual(twice, [], page.address)

    def test_contents_lead_to_every_page_from_every_page(self):
        for page in self.pages.values():
            self.assertEqual(set(self.pages) - page.navigation, set(), page.address)

    def test_pages_hold_text_alone(self):
        for address in self.pages:
            self.assertNotRegex((self.site / address).read_text(), r"[\x00-\x08\x0b-\x1f\x7f]", address)

    def test_documents_are_all_there(self):
        documents = [path.relative_to(self.project / "docs").with_suffix(".html").as_posix()
                     for path in (self.project / "docs").rglob("*.md")]
        self.assertGreater(len(documents), 30)
        self.assertEqual(set(documents) - set(self.pages), set())

    def test_reference_has_every_function(self):
        declared = collections.Counter(find_all_functions(self.project))
        self.assertGreater(len(declared), 150)
        for (scope, name), count in declared.items():
            page = self.pages.get(f"reference/{scope.replace('::', '-') or GLOBAL}.html")
            self.assertIsNotNone(page, scope)
            # What is in no scope may be declared for one system after the other.
            self.assertGreaterEqual(len(find_anchors(page, name)), count if scope else 1, f"{scope} {name}")

    def test_reference_has_every_namespace(self):
        scopes = {scope.rpartition("::")[0] for scope, _ in find_all_functions(self.project)} - {""}
        self.assertEqual(scopes, {"Found", "Found::Umo", "KvXmlN", "Tools"})
        for scope in scopes | {"KvText"}:
            self.assertIn(f"reference/{scope.replace('::', '-')}.html", self.pages)

    def test_pages_lead_to_the_functions_that_they_name(self):
        links = [page.resolve(link) for page in self.pages.values() if not page.address.startswith("reference/")
                 for _, link in page.links]
        for anchor in ("giveFoundation", "removeAllNotUsed", "readXml", "checkUsed"):
            self.assertIn(("reference/Found-FoundationManager.html", anchor), links)

    def test_search_knows_every_page(self):
        index = (self.site / "search.js").read_text()
        for address in self.pages:
            self.assertIn(f'"address":"{address}"', index)


if __name__ == "__main__":
    SiteChecks.site, SiteChecks.project = map(pathlib.Path, sys.argv[1:3])
    unittest.main(argv=sys.argv[:1] + sys.argv[3:], verbosity=2)
