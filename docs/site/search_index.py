"""Writes what the search of the manual looks through, search.js, into the folder of the site:
    search_index.py SITE
It is a script, since pages that were opened from the file system may not load anything else."""

import html.parser
import json
import pathlib
import re
import sys

SKIPPED = {"script", "style", "nav"}


class Sections(html.parser.HTMLParser):
    """The sections of an article: each has a title, an anchor and a text."""

    def __init__(self):
        super().__init__()
        self.inArticle = False
        self.skipped = 0
        self.inHeading = False
        self.sections = []

    def handle_starttag(self, tag, attrs):
        if tag == "article":
            self.inArticle = True
        elif tag in SKIPPED:
            self.skipped += 1
        elif self.inArticle and re.fullmatch("h[1-3]", tag):
            anchor = dict(attrs).get("id", "") if tag != "h1" else ""
            self.sections.append({"title": "", "anchor": anchor, "text": ""})
            self.inHeading = True

    def handle_endtag(self, tag):
        if tag == "article":
            self.inArticle = False
        elif tag in SKIPPED:
            self.skipped -= 1
        elif re.fullmatch("h[1-3]", tag):
            self.inHeading = False
        elif self.sections and tag in ("p", "li", "td", "th", "pre", "tr", "dd", "dt"):
            self.sections[-1]["text"] += " "

    def handle_data(self, data):
        if self.inArticle and not self.skipped and self.sections:
            self.sections[-1]["title" if self.inHeading else "text"] += data


def read_page(path, site):
    parser = Sections()
    parser.feed(path.read_text())
    address = path.relative_to(site).as_posix()
    page = parser.sections[0]["title"].strip() if parser.sections else ""
    for section in parser.sections:
        title = section["title"].strip()
        yield {"page": "" if title == page else page, "title": title,
               "address": address + (f"#{section['anchor']}" if section["anchor"] else ""),
               "text": " ".join(section["text"].split())}


def main():
    site = pathlib.Path(sys.argv[1])
    entries = [entry for path in sorted(site.rglob("*.html")) for entry in read_page(path, site)]
    text = json.dumps(entries, ensure_ascii=False, separators=(",", ":"))
    (site / "search.js").write_text(f"window.manualSections = {text};\n")


if __name__ == "__main__":
    main()
