#!/usr/bin/env python3
"""Fails when `kvfound check` finds a fault in a document that the schemas take, or the other way round,
unless it is one of those below.

    agreement.py KVFOUND XMLLINT PROJECT [COUNT]
"""

import collections
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET
from typing import NamedTuple

from declarations import FORMS, find_schema, read_elements
from mutations import Mutations
from validators import Xmllint

COUNT = 3000  # documents of each form
VERSIONS = {"legacy": [], "exchange": ["--version", "2.0"], "exchange-1.0": ["--version", "1.0"]}
EXCHANGE = ("exchange", "exchange-1.0")


class Kind(NamedTuple):
    """Findings of a rule, those with this in their sentence."""
    rule: str
    text: str = ""
    forms: tuple = tuple(VERSIONS)


SECOND_LIST = Kind("second-list")
MISPLACED = Kind("misplaced-element")
NOT_NUMBERED = Kind("unreadable-number", "counts as missing", ("legacy",))

# What `kvfound check` tells of and the schemas take, with the reason. The page on schemas has this, too.
TAKEN = {
    "The library writes every value that a host sets.": [
        Kind("negative-value"), Kind("infinite-value"), Kind("number-below-one"), NOT_NUMBERED,
        Kind("unknown-failure", "is none of -1", ("legacy",)),
        Kind("unknown-failure", '="" is none of', EXCHANGE),
        Kind("missing-name", "is empty")],
    "The library writes foundations of the same name and number, and the two parts of one.": [
        Kind("same-name"), Kind("same-number", "", EXCHANGE), Kind("two-parts")],
    "It is about two places of a document, or all of it.": [
        Kind("unknown-current"), SECOND_LIST, MISPLACED, Kind("unreadable", "there are no beddings", EXCHANGE)],
}

# The same in a document that has the second finding.
TAKEN_WITH = {
    "A foundation that counts as having no number gets one, which another may have.": [
        (Kind("same-number"), NOT_NUMBERED)],
}

# Documents that are rare among those with random mistakes.
CRAFTED = {
    "legacy": ['<SMOD><FOUNDATIONS><FOUND NUMBER="-1"/><FOUND NUMBER="1"/></FOUNDATIONS></SMOD>',
               '<SMOD><FOUNDATIONS><FOUND NUMBER="-1"/><FOUND NUMBER=" -1"/></FOUNDATIONS></SMOD>'],
    "exchange": ['<Exchange/>'],
    "exchange-1.0": ["<Exchange><Beddings/></Exchange>"],
}

# What the schemas refuse, by libxml2's words, and `kvfound check` does not tell of.
REFUSED = {
    "Text is not looked at, since nothing reads it.": [
        "Character content other than whitespace is not allowed",
        r"is not accepted by the pattern '\\s\*'"],
    "What counts as no number is twice in a list.": [
        r"Duplicate key-sequence \['-1'\]"],
}

# Documents in which `kvfound check` looks at less than the schemas: nothing is read there.
NOT_LOOKED_AT = [SECOND_LIST, MISPLACED]

BEDDINGS = {"Bedding", "CurveBedding", "SurfaceBedding"}


def has_other_container(root):
    """Whether a bedding stands outside of the usual container. Then all of the document tells which
    elements are containers, to `kvfound check`, and to the schemas only those of the usual name are."""
    return any(child.tag in BEDDINGS for parent in root.iter() if parent.tag != "Beddings" for child in parent)


def fits(kind, form, finding):
    return kind.rule in (finding["rule"], "") and form in kind.forms and kind.text in finding["sentence"]


class Tally:
    """How often each exception was one."""

    def __init__(self):
        self.used = collections.Counter()
        self.faults = []
        self.valid = self.invalid = self.skipped = 0

    def is_taken(self, form, finding):
        """Whether the schemas take what the finding is about."""
        for kind in sum(TAKEN.values(), []):
            if fits(kind, form, finding):
                self.used[kind] += 1
                return True
        return False

    def is_taken_with(self, form, finding, findings):
        for kind, other in sum(TAKEN_WITH.values(), []):
            if fits(kind, form, finding) and any(fits(other, form, another) for another in findings):
                self.used[kind, other] += 1
                return True
        return False

    def is_refused_only(self, line):
        for pattern in sum(REFUSED.values(), []):
            if re.search(pattern, line):
                self.used[pattern] += 1
                return True
        return False

    def is_not_looked_at(self, form, findings):
        for kind in NOT_LOOKED_AT:
            if any(fits(kind, form, finding) for finding in findings):
                self.used[kind, "not looked at"] += 1
                return True
        return False

    def compare(self, form, text, findings, fault):
        """`fault`: what the validator says, None when it finds the document valid."""
        if form in EXCHANGE and has_other_container(ET.fromstring(text)):
            self.skipped += 1
            return
        self.valid += fault is None
        self.invalid += fault is not None
        told = [finding for finding in findings if not self.is_taken(form, finding)]
        if fault is None:
            told = [finding for finding in told if not self.is_taken_with(form, finding, findings)]
            if told:
                self.report(form, text, f"only the check finds this: {told}")
        elif not told and not self.is_not_looked_at(form, findings):
            if not all(map(self.is_refused_only, fault.splitlines())):
                self.report(form, text, f"only the schema refuses this: {fault} {findings}")

    def report(self, form, text, sentence):
        self.faults.append(f"{form}: {sentence}\n{text}\n")

    def list_unused(self):
        every = [*sum([*TAKEN.values(), *TAKEN_WITH.values(), *REFUSED.values()], []),
                 *((kind, "not looked at") for kind in NOT_LOOKED_AT)]
        return [f"this exception is none: {exception}" for exception in every if not self.used[exception]]


def write_documents(folder, texts):
    """The documents by path."""
    documents = {}
    for number, text in enumerate(texts):
        file = folder / f"{number}.xml"
        file.write_text('<?xml version="1.0" encoding="UTF-8"?>\n' + text + "\n", encoding="utf-8")
        documents[str(file)] = text
    return documents


def check(kvfound, form, files):
    """The findings by file."""
    done = subprocess.run([kvfound, "check", "--format", "json", *VERSIONS[form], *files], capture_output=True,
                          check=False)
    findings = {file: [] for file in files}
    for finding in json.loads(done.stdout)["findings"]:
        findings[finding["file"]].append(finding)
    return findings


def main(kvfound, xmllint, project, count=COUNT):
    project = pathlib.Path(project)
    tally = Tally()
    for seed, form in enumerate(VERSIONS):
        schema = find_schema(project / "schemas", form)
        names = [attribute.name for element in read_elements(schema).values() for attribute in element.attributes]
        root = ET.parse(project / "examples" / FORMS[form]).getroot()
        mutations = Mutations(seed, names)
        texts = [ET.tostring(mutations.make(root), encoding="unicode") for _ in range(int(count))]
        with tempfile.TemporaryDirectory() as name:
            documents = write_documents(pathlib.Path(name), CRAFTED[form] + texts)
            invalid = Xmllint(xmllint).find_invalid(schema, documents)
            for file, findings in check(kvfound, form, documents).items():
                tally.compare(form, documents[file], findings, invalid.get(file))
    print("\n".join([*tally.faults[:5], *tally.list_unused()]))
    print(f"{tally.valid} valid documents, {tally.invalid} others, {tally.skipped} skipped, {len(tally.faults)} faults")
    return 1 if tally.faults or tally.list_unused() else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
