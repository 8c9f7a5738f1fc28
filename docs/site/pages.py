"""Lays out the pages of the manual in a folder as MkDocs takes them:
    pages.py PROJECT XML OUT VERSION
The Markdown pages of PROJECT go there with links that fit, besides the reference, from what Doxygen
wrote to the folder XML, and the manual page of the program."""

import json
import os
import pathlib
import re
import shutil
import subprocess
import sys

import yaml

from reference import Reference, make_header_anchor

LINK = re.compile(r"(!?)\[((?:[^\]\[]|\[[^\]]*\])*)\]\(([^)\s]+)\)")
OTHER_PAGES = {"CHANGELOG.md": "changelog.md", "CONTRIBUTING.md": "maintainers/contributing.md",
               "packaging/README.md": "guide/recipes.md", "README.md": "index.md"}
MAYBE_MISSING = {"browser.md"}  # in the navigation once they are there
HEADER_FOLDERS = ("include/", "platform/include/")
SHOWN_AS_THEY_ARE = {".xml", ".json", ".csv", ".md", ".txt", ".png", ".xsd"}


# What mandoc makes of a manual page, and of its parts.
MANUAL_TEXT = re.compile(r'<div class="manual-text">(.*)</div>\s*<table class="foot">', re.DOTALL)
MANUAL_WRAPPING = re.compile(r'</?section[^>]*>|<a class="permalink"[^>]*>(.*?)</a>', re.DOTALL)
MANUAL_USAGE = re.compile(r'<table class="Nm">\s*<tr>\s*<td>(.*?)</td>\s*<td>(.*?)</td>\s*</tr>\s*'
                          r"</table>(?:\s*<br/>)?", re.DOTALL)
MANUAL_HEADING = re.compile(r'<h([12]) class="S[hs]" id="([^"]*)">(.*?)</h\1>', re.DOTALL)


def make_heading(match):
    """Manual pages shout the names of their sections."""
    level, anchor, heading = match.groups()
    words = " ".join(heading.split())
    title = words.capitalize() if words.isupper() else words
    return f"\n\n{'#' * (int(level) + 1)} {title} {{#{anchor}}}\n\n"


class Manual:
    def __init__(self, project, xml, out, version):
        self.project = project.resolve()
        self.out = out
        self.version = version
        self.pages = out / "pages"
        self.reference = Reference(xml)
        self.sources = {path: path.relative_to("docs") for path in self.list_documents("docs")}
        self.sources |= {pathlib.Path(source): pathlib.Path(page) for source, page in OTHER_PAGES.items()}

    def list_documents(self, folder):
        return sorted(path.relative_to(self.project) for path in (self.project / folder).rglob("*.md"))

    def lay_out(self):
        shutil.rmtree(self.out, ignore_errors=True)
        (self.pages / "reference").mkdir(parents=True)
        for source, page in self.sources.items():
            if str(source) != "README.md":  # the start page stands for it
                self.write_page(source, page)
        self.reference.write(self.pages / "reference")
        (self.out / "names.json").write_text(json.dumps(self.reference.list_names()))
        self.find_target(pathlib.Path("LICENSE"))  # every page leads to it
        (self.pages / "manual-page.md").write_text(self.make_manual_page())
        self.write_configuration()

    def write_page(self, source, page):
        target = self.pages / page
        target.parent.mkdir(parents=True, exist_ok=True)
        text = (self.project / source).read_text()
        pieces = re.split(r"(^```.*?^```$)", text, flags=re.DOTALL | re.MULTILINE)
        target.write_text("".join(
            piece if piece.startswith("```") else self.mend_links(source, page, piece) for piece in pieces))

    def mend_links(self, source, page, text):
        def mend(match):
            mark, label, link = match.groups()
            if re.match(r"\w+:|#", link):
                return match[0]
            path, hash_, anchor = link.partition("#")
            path = pathlib.Path(os.path.normpath(source.parent / path))
            target = self.find_target(path)
            if target is None:
                return label
            return f"{mark}[{label}]({os.path.relpath(target, page.parent)}{hash_}{anchor})"

        return LINK.sub(mend, text)

    def find_target(self, path):
        """Where the manual has what a link leads to, or None where it has no such thing."""
        if path in self.sources:
            return self.sources[path]
        name = path.as_posix()
        for folder in HEADER_FOLDERS:
            if name.startswith(folder):
                header = name[len(folder):]
                anchor = f"#{make_header_anchor(header)}" if header.endswith(".h") else ""
                return pathlib.Path(f"reference/headers.md{anchor}")
        if (self.project / path).is_dir():
            return None
        if path.parts[0] == "docs":
            kept = path.relative_to("docs")
        else:
            suffix = "" if path.suffix in SHOWN_AS_THEY_ARE else ".txt"
            kept = pathlib.Path("files") / f"{name}{suffix}"
        (self.pages / kept).parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(self.project / path, self.pages / kept)
        return kept

    def make_manual_page(self):
        """The manual page of the program; its headings become those of Markdown."""
        command = ["mandoc", "-T", "html", "-O", "fragment", self.project / "tools/cli/kvfound.1"]
        text = subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True).stdout
        text = MANUAL_TEXT.search(text)[1]
        text = MANUAL_WRAPPING.sub(r"\1", text)
        text = MANUAL_USAGE.sub(r'<p class="usage">\1 \2</p>', text)
        text = MANUAL_HEADING.sub(make_heading, text)
        pieces = re.split(r"(\n\n#+ .*\n\n)", text)
        body = "".join(piece if piece.startswith("\n\n#") else f'<div class="man">\n{piece.strip()}\n</div>'
                       for piece in pieces if piece.strip())
        return f"# Manual page of kvfound\n\n{body}\n"

    # --- Navigation

    def write_configuration(self):
        site = self.project / "docs/site"
        configuration = yaml.safe_load((site / "mkdocs.yml").read_text())
        configuration["nav"] = self.make_navigation(configuration["nav"])
        configuration["docs_dir"] = "pages"
        configuration["theme"]["custom_dir"] = str(site / "theme")
        configuration["extra"] = {"version": self.version}
        configuration["hooks"] = [str(site / "hooks.py")]
        text = yaml.safe_dump(configuration, sort_keys=False, allow_unicode=True)
        (self.out / "mkdocs.yml").write_text(text)
        there = {path.relative_to(self.pages).as_posix() for path in self.pages.rglob("*.md")}
        unlisted = sorted(there - set(self.list_pages(configuration["nav"])))
        if unlisted:
            sys.exit(f"docs/site/mkdocs.yml does not lead to {', '.join(unlisted)}")

    def make_navigation(self, entries):
        result = []
        for entry in entries:
            (title, target), = entry.items()
            if target == "REFERENCE":
                result += self.reference.make_navigation()
            elif isinstance(target, list):
                result.append({title: self.make_navigation(target)})
            elif (self.pages / target).exists():
                result.append({title: target})
            elif target not in MAYBE_MISSING:
                sys.exit(f"docs/site/mkdocs.yml names {target}, which is not there")
        return result

    def list_pages(self, entries):
        for entry in entries:
            (target,) = entry.values()
            yield from self.list_pages(target) if isinstance(target, list) else [target]


if __name__ == "__main__":
    Manual(*map(pathlib.Path, sys.argv[1:4]), sys.argv[4]).lay_out()
