"""What the schemas declare, for tests that go through all of it."""

import pathlib
import re
import xml.etree.ElementTree as ET
from typing import NamedTuple, Optional

XS = "{http://www.w3.org/2001/XMLSchema}"
FORMS = {"legacy": "model.xml", "exchange": "beddings.xml", "exchange-1.0": "beddings-1.0.xml",
         "kvml": "beddings.kvml"}  # with an example of each

LABEL = re.compile(r"^(Unit|Absent|Written|Where|Read|Readers): ")


class Attribute(NamedTuple):
    name: str
    type: str
    required: bool
    default: Optional[str]
    notes: dict  # by label; the meaning is under ""


class Element(NamedTuple):
    name: str
    notes: dict
    attributes: list


def find_schema(schemas, form):
    """The one of whole documents."""
    return pathlib.Path(schemas) / f"{form}-document.xsd"


def read_notes(declaration):
    """The documentation, a line that begins with a label apart from the others."""
    documentation = declaration.find(f"{XS}annotation/{XS}documentation")
    notes = {}
    label = ""
    for line in (documentation.text if documentation is not None else "").splitlines():
        found = LABEL.match(line.strip())
        if found:
            label = found[1]
            line = line.strip()[found.end():]
        notes[label] = " ".join([*notes.get(label, "").split(), *line.split()])
    return notes


def read_attribute(declaration):
    return Attribute(declaration.get("name"), declaration.get("type"), declaration.get("use") == "required",
                     declaration.get("default"), read_notes(declaration))


def list_files(schema):
    """The schema and those that it includes, each once."""
    files = [pathlib.Path(schema)]
    for file in files:
        for include in ET.parse(file).iter(f"{XS}include"):
            other = file.parent / include.get("schemaLocation")
            if other not in files:
                files.append(other)
    return files


def read_elements(schema):
    """All elements with attributes of their own, by name."""
    roots = [ET.parse(file).getroot() for file in list_files(schema)]
    types = {definition.get("name"): definition for root in roots for definition in root.iter(f"{XS}complexType")}
    elements = {}
    for root in roots:
        for declaration in root.iter(f"{XS}element"):
            if declaration.get("name") is None:
                continue
            definition = types.get(declaration.get("type"))
            declared = [] if definition is None else definition.iter(f"{XS}attribute")
            attributes = [read_attribute(attribute) for attribute in declared]
            elements[declaration.get("name")] = Element(declaration.get("name"), read_notes(declaration), attributes)
    return elements


def list_undocumented(schema):
    """The declarations and definitions that say nothing."""
    kinds = {XS + kind for kind in ("element", "attribute", "complexType", "simpleType", "unique", "enumeration")}
    return [f"{schema.name}: {node.tag[len(XS):]} {node.get('name') or node.get('value')}"
            for node in ET.parse(schema).iter()
            if node.tag in kinds and node.get("ref") is None and not read_notes(node).get("")]
