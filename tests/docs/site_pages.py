"""The pages of a manual that was built: their addresses, anchors and texts."""

import html.parser
import pathlib
import urllib.parse

LINKS = {"a": "href", "link": "href", "img": "src", "script": "src"}


class Page(html.parser.HTMLParser):
    def __init__(self, path, site):
        super().__init__()
        self.address = path.relative_to(site).as_posix()
        self.anchors = []
        self.links = []  # tag and address of each
        self.navigation = set()  # the pages that the table of contents leads to
        self.inContents = False
        self.feed(path.read_text())

    def handle_starttag(self, tag, attrs):
        attributes = dict(attrs)
        if "id" in attributes:
            self.anchors.append(attributes["id"])
        if tag == "nav":
            self.inContents = attributes.get("id") == "page-contents"
        link = attributes.get(LINKS.get(tag, ""))
        if link is None:
            return
        self.links.append((tag, link))
        if self.inContents:
            self.navigation.add(self.resolve(link)[0])

    def handle_endtag(self, tag):
        if tag == "nav":
            self.inContents = False

    def resolve(self, link):
        """The address below the site, and the anchor there."""
        url = urllib.parse.urlparse(urllib.parse.urljoin(f"file:///{self.address}", link))
        return urllib.parse.unquote(url.path).lstrip("/"), urllib.parse.unquote(url.fragment)


def read_site(folder):
    site = pathlib.Path(folder)
    return {page.address: page for page in (Page(path, site) for path in sorted(site.rglob("*.html")))}
