#!/usr/bin/env python3
"""Puts the page for browsers, its script, its style and its engine into one file.

    pack-web.py --page HTML --script JS --style CSS --engine WASM --report JS OUTPUT

The page holds, each once:

    {{csp}}                                                         what may run and load in it
    <link rel="stylesheet" href="main.css">                         the style
    <script type="application/octet-stream" id="engine"></script>   the engine, packed
    <script type="module" src="main.js"></script>                   the script

Only these scripts may run, and that of reports, which are shown in the page.
"""

import argparse
import base64
import gzip
import hashlib
import pathlib
import sys

MOST = 2_500_000  # bytes: it is sent by mail

STYLE = '<link rel="stylesheet" href="main.css">'
ENGINE = '<script type="application/octet-stream" id="engine"></script>'
SCRIPT = '<script type="module" src="main.js"></script>'


def hash_script(text):
    digest = hashlib.sha256(text.encode()).digest()
    return f"'sha256-{base64.b64encode(digest).decode()}'"


def make_policy(scripts):
    hashes = " ".join(hash_script(script) for script in scripts)
    # Reports have styles of their own, also in attributes; no style can load anything.
    return (
        f"default-src 'none'; script-src {hashes} 'wasm-unsafe-eval'; style-src 'unsafe-inline'; "
        "img-src data: blob:; base-uri 'none'; form-action 'none'"
    )


def insert(page, place, text):
    if page.count(place) != 1:
        sys.exit(f"the page must hold {place} once, and holds it {page.count(place)} times")
    return page.replace(place, text)


def read(path):
    text = pathlib.Path(path).read_text(encoding="utf-8")
    if "</script" in text.lower() or "</style" in text.lower() or "<!--" in text:
        sys.exit(f"{path}: would end early within a page")
    return text


def pack(options):
    script = "\n" + read(options.script)
    report = "\n" + read(options.report)  # as in reports
    engine = gzip.compress(pathlib.Path(options.engine).read_bytes(), 9, mtime=0)
    page = pathlib.Path(options.page).read_text(encoding="utf-8")
    page = insert(page, "{{csp}}", make_policy([script, report]))
    page = insert(page, STYLE, f"<style>\n{read(options.style)}</style>")
    page = insert(page, ENGINE, ENGINE.replace("><", f">{base64.b64encode(engine).decode()}<"))
    return insert(page, SCRIPT, f'<script type="module">{script}</script>')


def main():
    parser = argparse.ArgumentParser()
    for name in ("page", "script", "style", "engine", "report"):
        parser.add_argument(f"--{name}", required=True)
    parser.add_argument("output")
    options = parser.parse_args()
    page = pack(options).encode()
    if len(page) > MOST:
        sys.exit(f"the page has {len(page)} bytes; {MOST} is the most")
    pathlib.Path(options.output).write_bytes(page)
    print(f"{options.output}: {len(page)} bytes")


if __name__ == "__main__":
    main()
