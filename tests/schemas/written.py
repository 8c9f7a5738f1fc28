#!/usr/bin/env python3
"""Fails when a document that the library writes is not valid, or an example.

    written.py WRITE_DOCUMENTS XMLLINT XERCES PROJECT [COUNT]
"""

import pathlib
import subprocess
import sys
import tempfile

from declarations import FORMS, find_schema
from validators import Xerces, Xmllint

COUNT = 2500  # of each form
FOR_XERCES = 500  # of these, since it is slower


def main(write_documents, xmllint, xerces, project, count=COUNT):
    faults = []
    judged = 0
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        for form in FORMS:
            (folder / form).mkdir()
        subprocess.run([write_documents, folder, str(count)], check=True)
        for form, example in FORMS.items():
            files = [pathlib.Path(project) / "examples" / example, *(folder / form).iterdir()]
            judged += len(files)
            schema = find_schema(pathlib.Path(project) / "schemas", form)
            for validator, some in ((Xmllint(xmllint), files), (Xerces(xerces), files[:FOR_XERCES])):
                for file, fault in validator.find_invalid(schema, some).items():
                    text = pathlib.Path(file).read_bytes().decode(errors="replace")
                    faults.append(f"{form}, {type(validator).__name__}: {fault}\n{text}")
    print("\n".join(faults[:5]))
    print(f"{judged} documents, {len(faults)} faults")
    return 1 if faults or judged != len(FORMS) * (int(count) + 1) else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
