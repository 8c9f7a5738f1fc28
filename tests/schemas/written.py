#!/usr/bin/env python3
"""Fails when a document that the library writes is not valid, or an example, in its own form and in each
that the program KVFOUND converts it to.

    written.py WRITE_DOCUMENTS XMLLINT XERCES PROJECT [KVFOUND]

WRITE_DOCUMENTS writes as many documents of each form as the environment says in KVFOUND_DOCUMENTS.
"""

import os
import pathlib
import subprocess
import sys
import tempfile

from declarations import FORMS, find_schema
from validators import Xerces, Xmllint

COUNT = int(os.environ.get("KVFOUND_DOCUMENTS", "2500"))  # of each form
FOR_XERCES = 500  # of these, since it is slower
READABLE = ["model.xml", "beddings.xml", "beddings-1.0.xml", "soil.csv"]


def convert(kvfound, examples, form, folder):
    """Every example in this form."""
    files = [folder / f"{example}-as-{form}.xml" for example in READABLE]
    for example, file in zip(READABLE, files):
        subprocess.run([kvfound, "convert", "--quiet", "--to", form, examples / example, file], check=True)
    return files


def find_faults(validators, schema, files):
    for validator, some in zip(validators, (files, files[:FOR_XERCES])):
        for file, fault in validator.find_invalid(schema, some).items():
            text = pathlib.Path(file).read_bytes().decode(errors="replace")
            yield f"{schema.name}, {type(validator).__name__}: {fault}\n{text}"


def main(write_documents, xmllint, xerces, project, kvfound=None):
    project = pathlib.Path(project)
    examples = project / "examples"
    faults = []
    judged = 0
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        for form in FORMS:
            (folder / form).mkdir()
        subprocess.run([write_documents, folder, str(COUNT)], check=True)
        for form, example in FORMS.items():
            files = [examples / example, *(convert(kvfound, examples, form, folder) if kvfound else ()),
                     *(folder / form).iterdir()]
            judged += len(files)
            schema = find_schema(project / "schemas", form)
            faults += find_faults((Xmllint(xmllint), Xerces(xerces)), schema, files)
    print("\n".join(faults[:5]))
    print(f"{judged} documents, {len(faults)} faults")
    return 1 if faults or judged < len(FORMS) * COUNT else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
