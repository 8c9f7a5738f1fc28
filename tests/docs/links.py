"""Fails when a relative link of the documents given leads to no file or to no heading, when a script
that they name does not exist, and when CONTRIBUTING.md does not name one that can be called."""

import pathlib
import re
import sys

from samples import blank_blocks

LINK = re.compile(r"\[[^\]]*\]\(([^)\s]+)\)")
SCRIPT = re.compile(r"\bscripts/[\w.-]+\.\w+")
HEADING = re.compile(r"^#+ +(.*)$", re.MULTILINE)
PROJECT = pathlib.Path(__file__).resolve().parents[2]
SOURCED = {"scripts/npm.sh", "scripts/packages.sh", "scripts/release.sh",
           "scripts/sources.sh", "scripts/sysroot.sh"}  # by the others


def read(document):
    return blank_blocks(document.read_text())


def find_anchors(document):
    """The names of the headings, as web sites that show the documents make them."""
    anchors = set()
    for heading in HEADING.findall(read(document)):
        plain = re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")
        anchors.add(plain)
    return anchors


def judge(document, link):
    """What is wrong with the link, or None."""
    if re.match(r"\w+:", link):
        return None
    path, _, anchor = link.partition("#")
    target = document.parent / path if path else document
    if not target.exists():
        return "there is no such file"
    return "there is no such heading" if anchor and anchor not in find_anchors(target) else None


def check(document):
    text = read(document)
    wrong = [(match, judge(document, match[1])) for match in LINK.finditer(text)]
    wrong += [(match, None if (PROJECT / match[0]).exists() else "there is no such script")
              for match in SCRIPT.finditer(text)]
    for match, reason in wrong:
        if reason:
            yield f"{document}:{text.count(chr(10), 0, match.start()) + 1}: {match[0]}: {reason}"


def find_unnamed_scripts():
    document = PROJECT / "CONTRIBUTING.md"
    scripts = {f"scripts/{path.name}" for path in (PROJECT / "scripts").glob("*.sh")}
    for script in sorted(scripts - SOURCED - set(SCRIPT.findall(read(document)))):
        yield f"{document}: {script} is not named"


def main():
    failures = [failure for name in sys.argv[1:] for failure in check(pathlib.Path(name))]
    failures += find_unnamed_scripts()
    print(*failures, f"{len(failures)} links or scripts are wrong or missing", sep="\n")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
