#!/usr/bin/env python3
"""Fails when a schema judges a case in another way than told, or declares what decides no case.

    refused.py XMLLINT XERCES PROJECT
"""

import pathlib
import shutil
import sys
import tempfile
import xml.etree.ElementTree as ET

from cases import list_cases
from declarations import FORMS, XS, find_schema, list_files
from validators import Xerces, Xmllint

# These make no difference: every integer is taken beside them. They are for editors.
WITHOUT_EFFECT = {"KvFoundFailureMode"}


def write_cases(folder, cases):
    files = {}
    for number, case in enumerate(cases):
        file = folder / f"{number}.xml"
        file.write_text(f'<?xml version="1.0" encoding="UTF-8"?>\n{case.text}\n', encoding="utf-8")
        files[str(file)] = case
    return files


def find_faults(validators, schema, files):
    for validator in validators:
        judged = [file for file, case in files.items() if case.forXerces or isinstance(validator, Xmllint)]
        invalid = validator.find_invalid(schema, judged)
        for file in judged:
            if files[file].valid == (file in invalid):
                yield f"{schema.name}, {type(validator).__name__}: {invalid.get(file, 'is valid')}\n{files[file].text}"


def list_removals(parent):
    for child in list(parent):
        tag = child.tag[len(XS):]
        if tag in ("attribute", "anyAttribute", "unique", "pattern", "enumeration", "any", "element"):
            yield f"without {tag} {child.get('name') or child.get('ref') or child.get('value') or ''}", parent, child


def change(node, name, value):
    if value is None:
        del node.attrib[name]
    else:
        node.set(name, value)


def list_changes(node):
    """Each as a name of an attribute and its other value, None for none."""
    if node.tag == XS + "attribute":
        if node.get("use"):
            yield "use", None
        if node.get("type") != "xs:string":
            yield "type", "xs:string"
    if node.tag == XS + "element" and node.get("type"):
        yield "type", "xs:anyType"
    if node.tag == XS + "anyAttribute" and node.get("namespace") == "##other":
        yield "namespace", "##any"
    for bound in ("minOccurs", "maxOccurs", "mixed"):
        if node.get(bound):
            yield bound, None
    members = node.get("memberTypes", "").split()
    for member in set(members) - WITHOUT_EFFECT:
        yield "memberTypes", " ".join(other for other in members if other != member)


def list_others(root):
    """The schema with one declaration after the other taken away or made wider, as name and text."""
    for node in [root, *(node for definition in root if definition.get("name") not in WITHOUT_EFFECT
                         for node in definition.iter())]:
        name = node.get("name") or node.get("ref") or node.tag[len(XS):]
        for removal, parent, child in list_removals(node):
            place = list(parent).index(child)
            parent.remove(child)
            yield f"{name} {removal}", ET.tostring(root)
            parent.insert(place, child)
        for attribute, value in list_changes(node):
            old = node.get(attribute)
            change(node, attribute, value)
            yield f"{name}, {attribute} {value}", ET.tostring(root)
            node.set(attribute, old)


def find_without_effect(xmllint, schema, others, files, folder):
    """What may be declared otherwise, in the schema or the `others`, and no case is judged in another way."""
    invalid = xmllint.find_invalid(schema, files).keys()
    for original in schema.parent.glob("*.xsd"):
        shutil.copy(original, folder)
    for file in [schema, *others]:
        tried = 0
        for name, text in list_others(ET.parse(file).getroot()):
            (folder / file.name).write_bytes(text)
            try:
                if xmllint.find_invalid(folder / schema.name, files).keys() == invalid:
                    yield f"{file.name}: no case shows this: {name}"
                tried += 1
            except RuntimeError:
                pass  # it is no schema
        shutil.copy(file, folder)
        if not tried:
            yield f"{file.name}: nothing could be tried"


def main(xmllint, xerces, project):
    validators = (Xmllint(xmllint), Xerces(xerces))
    ET.register_namespace("xs", XS[1:-1])
    faults = []
    tried = []
    count = 0
    for form in FORMS:
        schema = find_schema(pathlib.Path(project) / "schemas", form)
        cases = list_cases(pathlib.Path(project) / "schemas", form)
        count += len(cases)
        with tempfile.TemporaryDirectory() as name:
            files = write_cases(pathlib.Path(name), cases)
            faults += find_faults(validators, schema, files)
            others = [file for file in list_files(schema)[1:] if file not in tried]  # once, by its own form
            faults += find_without_effect(validators[0], schema, others, files, pathlib.Path(name))
            tried += others
    print("\n".join(faults))
    print(f"{count} cases, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
