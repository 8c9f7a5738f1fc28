#!/usr/bin/env python3
"""Fails when the schemas, the tables of the pages on formats and what the tools know are not the same.

    tables.py PROJECT
"""

import pathlib
import re
import sys
import xml.etree.ElementTree as ET

from declarations import FORMS, XS, find_schema, list_files, list_undocumented, read_elements

TYPES = {"KvFoundInteger": "integer", "KvFoundFailureNumber": "integer", "KvFoundDouble": "double",
         "KvFoundFailureText": "failure text", "KvFoundOneDecimal": "double, one decimal",
         "KvFoundTwoDecimals": "double, two decimals", "xs:string": "text"}

# What the tools call a type, see tools/workbench/documents/vocabulary.h.
KINDS = {"identity": {"KvFoundInteger", "xs:string"}, "flag": {"KvFoundInteger"},
         "stiffness": {"KvFoundDouble"}, "lineStiffness": {"KvFoundDouble"}, "factor": {"KvFoundDouble"},
         "failureNumber": {"KvFoundFailureNumber"}, "failureWord": {"KvFoundFailureText"}}

COLUMNS = {"meaning": "", "unit": "Unit", "read when absent": "Absent", "written": "Written",
           "where": "Where", "read": "Read"}  # and the notes that say the same

faults = []


def expect_same(what, shown, declared):
    if shown != declared:
        faults.append(f"{what}: the page says {shown!r}, the schema {declared!r}")


def read_tables(text):
    """Every table as a list of rows by column, with the last line of text before it."""
    caption = ""
    rows = []
    for line in [*text.splitlines(), ""]:
        if line.startswith("|"):
            rows.append([cell.strip() for cell in line.strip("|").split("|")])
            continue
        if rows:
            yield caption, [dict(zip(rows[0], row)) for row in rows[2:]]
            rows = []
        caption = line or caption


def plain(text):
    return text.replace("`", "")


def list_names(cell):
    return re.findall(r"`([^`]+)`", cell)


def split_meaning(text, names):
    """The meaning of each name: "translation in x, y" is "translation in x" and "translation in y"."""
    if len(names) == 1:
        return [text]
    start, axes = re.fullmatch(r"(.* in )((?:\w, )+\w)", text).groups()
    return [start + axis for axis in axes.split(", ")]


def note(declared, label):
    """As a cell of a table has it: no capital letter at its start and no point at its end."""
    text = declared.notes.get(label, "")
    text = text if label else text[:1].lower() + text[1:]
    return text.rstrip(".")


def compare_notes(what, row, declared):
    for column, label in COLUMNS.items():
        if column in row:
            expect_same(f"{what}, {column}", plain(row[column]), note(declared, label))


def find_default(cell):
    if cell.startswith("`None`"):
        return ("0", "none")
    return ("0",) if re.match(r"0\b", cell) else (None,)


def compare_attribute(what, row, declared):
    expect_same(f"{what}, type", row["type"], TYPES.get(declared.type, declared.type))
    compare_notes(what, row, declared)
    default = find_default(row.get("read when absent", ""))
    if declared.default not in default:
        faults.append(f"{what}: the default is {declared.default!r} and not {default}")


def split_rows(rows):
    """A row of its own for each attribute."""
    for row in rows:
        names = list_names(row.get("attribute", row.get("attributes", "")))
        for name, meaning in zip(names, split_meaning(plain(row["meaning"]), names)):
            yield name, {**row, "meaning": meaning}


def compare_attributes(rows, element):
    rows = list(split_rows(rows))
    expect_same(f"the attributes of {element.name}", [name for name, _ in rows],
                [attribute.name for attribute in element.attributes])
    for (name, row), declared in zip(rows, element.attributes):
        compare_attribute(f"{element.name} {name}", row, declared)


def compare_elements(rows, elements):
    for row in rows:
        for name in list_names(row["element"]):
            if name in elements:
                compare_notes(name, row, elements[name])
            else:
                faults.append(f"{name}: there is no such element in the schema")


def list_owners(caption, rows):
    """Of which elements a table has attributes, with the rows of each."""
    if "of" not in rows[0]:
        return {name: rows for name in list_names(caption)}
    names = sorted({name for row in rows for name in list_names(row["of"])})
    return {name: [row for row in rows if row["of"] in ("both", f"`{name}`")] for name in names}


def compare_page(text, elements):
    told = set()
    for caption, rows in read_tables(text):
        if "element" in rows[0]:
            compare_elements(rows, elements)
        elif "attribute" in rows[0]:
            for name, owned in list_owners(caption, rows).items():
                compare_attributes(owned, elements[name])
                told.add(name)
    return told


def compare_failures(page, schemas):
    """The three modes are the ones that the schemas count up."""
    _, rows = next(table for table in read_tables(page) if "mode" in table[1][0])
    for column, file, name in (("legacy", "legacy.xsd", "KvFoundFailureMode"),
                               ("exchange", "exchange.xsd", "KvFoundFailureText")):
        definition = ET.parse(schemas / file).find(f"{XS}simpleType[@name='{name}']")
        values = [value.get("value") for value in definition.iter(f"{XS}enumeration")]
        expect_same(f"the failure modes, {column}", [plain(row[column]).split(",")[0] for row in rows],
                    [value for value in values if value])


def read_vocabulary(source):
    """The attributes and their kinds that the tools know, by element."""
    elements = {}
    for _, text in re.findall(r"namespace (Legacy|Exchange) \{(.*?)\}  // namespace \1", source, re.DOTALL):
        words = dict(re.findall(r'const char\* (\w+) = "(\w+)"', text))
        for name, body in re.findall(r'ElementWord\{\s*"(\w+)",(.*?)\}\};', text, re.DOTALL):
            found = re.findall(r'\{("?)(\w+)\1, Kind::(\w+)', body)
            elements[name] = [(word if quote else words[word], kind) for quote, word, kind in found]
    return elements


def compare_vocabulary(source, elements):
    for name, words in read_vocabulary(source).items():
        declared = elements.pop(name).attributes
        expect_same(f"what the tools know of {name}", [word for word, _ in words], [a.name for a in declared])
        for (word, kind), attribute in zip(words, declared):
            if attribute.type not in KINDS[kind]:
                faults.append(f"{name} {word}: is {kind} to the tools and {attribute.type} in the schema")


def compare_rules(page, source):
    """The page says of each rule of `kvfound check` what the schemas do."""
    _, rows = next(table for table in read_tables(page) if "by the schemas" in table[1][0])
    told = [name for row in rows for name in list_names(next(iter(row.values())))]
    expect_same("the rules of the check", sorted(told), sorted(re.findall(r'Rule \w+ = \{\s*"([\w-]+)"', source)))


def main(project):
    project = pathlib.Path(project)
    pages = {path.stem: path.read_text(encoding="utf-8") for path in (project / "docs/formats").glob("*.md")}
    known = {}
    for form in FORMS:
        schema = find_schema(project / "schemas", form)
        elements = read_elements(schema)
        told = compare_page(pages[form], elements)
        own = {name for name, element in elements.items() if element.attributes} - known.keys()
        expect_same(f"the elements of {form} with attributes", sorted(told), sorted(own))
        if form != "kvml":  # the tools do not read it
            known.update({name: elements[name] for name in own})
        faults.extend(f"{text} is not documented" for file in list_files(schema)
                      for text in list_undocumented(file))
    compare_failures(pages["values"], project / "schemas")
    compare_rules(pages["schemas"], (project / "tools/workbench/checks/rule.h").read_text())
    compare_vocabulary((project / "tools/workbench/documents/vocabulary.h").read_text(), known)
    expect_same("the elements that the tools know", [], sorted(known))
    print("\n".join(faults))
    print(f"{len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
