#!/usr/bin/env python3
"""Fails when the schemas of hosts cannot include those of the forms, or when these are not installed.

    hosts.py XMLLINT XERCES PROJECT BUILD
"""

import pathlib
import re
import subprocess
import sys
import tempfile
import textwrap

from validators import Xerces, Xmllint

# Every form in one schema, below elements with other names than the usual ones.
ALL_FORMS = """<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema">
  <xs:include schemaLocation="legacy.xsd"/>
  <xs:include schemaLocation="exchange.xsd"/>
  <xs:include schemaLocation="exchange-1.0.xsd"/>
  <xs:include schemaLocation="kvml.xsd"/>
  <xs:element name="Site">
    <xs:complexType>
      <xs:sequence>
        <xs:element ref="FOUNDATIONS"/>
        <xs:element name="Supports" type="KvFoundBeddings"/>
        <xs:element name="OldSupports" type="KvFoundFirstBeddings"/>
        <xs:element ref="Beddings"/>
      </xs:sequence>
    </xs:complexType>
  </xs:element>
</xs:schema>
"""

SITE = """<Site><FOUNDATIONS><FOUND NUMBER="1"/></FOUNDATIONS>
<Supports Level="2"><SurfaceBedding Number="1" Name="A"/><CurveBedding Number="1" Name="A"/></Supports>
<OldSupports><Bedding Name="A"/><CurveBedding Number="2" Name="B"/></OldSupports>
<Beddings/></Site>
"""

# What is replaced in a document that is valid, and what by.
IN_MODEL = [('FZLINE="45000"', 'FZLINE="45 000"'), ("<NODES>", "<NODE/><NODES>"), ('VERSION="12"', 'VERSION="x"'),
            ("</FOUNDATIONS>", "</FOUNDATIONS><FOUNDATIONS/>"), ('NUMBER="2"', 'NUMBER="1"')]
IN_SITE = [("<FOUND N", "<FUND N"), ("<SurfaceBedding", "<Bedding"), ('<Bedding N', '<Bedding Number="1" N'),
           ("<Beddings/>", "<Beddings><CurveBedding/></Beddings>")]


def read_sample(page):
    """The schema of a host on the page on schemas."""
    block = re.search(r"^    <xs:schema.*?^    </xs:schema>\n", page, re.MULTILINE | re.DOTALL)[0]
    return textwrap.dedent(block)


def try_host(validators, folder, schema, valid, replacements):
    (folder / "host.xsd").write_text(schema)
    files = {folder / "valid.xml": valid}
    for number, (old, new) in enumerate(replacements):
        assert old in valid, old
        files[folder / f"{number}.xml"] = valid.replace(old, new, 1)
    for file, text in files.items():
        file.write_text(text, encoding="utf-8")
    for validator in validators:
        found = validator.find_invalid(folder / "host.xsd", files)
        expected = {str(file) for file in files if file.name != "valid.xml"}
        for file in expected ^ found.keys():
            yield f"{type(validator).__name__}: {found.get(file, 'is valid')}\n{files[pathlib.Path(file)]}"


def list_missing(project, build, prefix):
    """The schemas that are not installed."""
    subprocess.run(["cmake", "--install", build, "--prefix", prefix, "--component", "tool"], check=True,
                   stdout=subprocess.DEVNULL)
    installed = prefix / "share/kvfound/schemas"
    return [file.name for file in (project / "schemas").glob("*.xsd")
            if not (installed / file.name).exists()], installed


def main(xmllint, xerces, project, build):
    project = pathlib.Path(project)
    page = (project / "docs/formats/schemas.md").read_text(encoding="utf-8")
    model = (project / "examples/model.xml").read_text(encoding="utf-8")
    validators = (Xmllint(xmllint), Xerces(xerces))
    with tempfile.TemporaryDirectory() as name:
        missing, folder = list_missing(project, build, pathlib.Path(name))
        faults = [f"{file} is not installed" for file in missing]
        faults += try_host(validators, folder, read_sample(page), model, IN_MODEL)
        faults += try_host(validators, folder, ALL_FORMS, SITE, IN_SITE)
    print("\n".join(faults))
    print(f"{len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
