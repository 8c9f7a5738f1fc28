#!/usr/bin/env python3
"""Fails when what the program prints for other programs does not fit its schemas.

    results.py PROGRAM SCHEMAS SARIF_SCHEMA EXAMPLES
"""

import json
import pathlib
import subprocess
import sys
import tempfile

import jsonschema

program, schemas, sarif_schema, examples = map(pathlib.Path, sys.argv[1:5])
faults = []

ODD = """<?xml version="1.0" encoding="UTF-8"?>
<SMOD>
<FOUNDATIONS CURRENT="{0}">
<FOUND NUMBER="1" NAME="\U0001f600 {0} [a](b)" FXAREA="-1" FYAREA="x" COLOUR="&#9;"/>
<FOUND NUMBER="1" NAME="\u00fc" FXLINE="inf" FAILXLINE="9"/>
</FOUNDATIONS>
</SMOD>
"""


def run(*arguments, folder=None):
    done = subprocess.run([program, *arguments], cwd=folder, capture_output=True, check=False)
    return done.returncode, done.stdout.decode(), done.stderr.decode()


def validate(text, schema, what):
    checker = jsonschema.FormatChecker()
    validator = jsonschema.Draft7Validator(schema, format_checker=checker)
    for error in validator.iter_errors(json.loads(text)):
        faults.append(f"{what}: {error.json_path}: {error.message}")


def read_schema(path):
    schema = json.loads(path.read_text())
    jsonschema.Draft7Validator.check_schema(schema)
    return schema


def expect(condition, what):
    if not condition:
        faults.append(what)


def check_sarif(text, files):
    """What a schema cannot say."""
    sarif = json.loads(text)["runs"][0]
    rules = [rule["id"] for rule in sarif["tool"]["driver"]["rules"]]
    expect(len(rules) == len(set(rules)), "rules have names of their own")
    expect(len(sarif["artifacts"]) == files, "every file is an artifact")
    for result in sarif["results"]:
        expect(rules[result["ruleIndex"]] == result["ruleId"], "results point to their rules")
        location = result["locations"][0]["physicalLocation"]["artifactLocation"]
        artifact = sarif["artifacts"][location["index"]]
        expect(artifact["location"]["uri"] == location["uri"], "results point to their files")


def check_messages(text, schema, what):
    expect(text != "", f"{what}: tells something")
    for line in text.splitlines():
        validate(line, schema, f"{what}: {line}")


FOUNDATIONS = [
    (True, {"foundations": []}),
    (True, {"version": 1, "foundations": [{}], "format": "kvfound-foundations", "maximum": "inf"}),
    (True, {"foundations": [{"areaX": None, "areaFactor": "-inf", "lineFailureX": "7"}]}),
    (True, {"foundations": [{"name": "=\n", "current": True}], "units": {"force": "kN", "length": "m"}}),
    (False, {"foundations": [], "units": {"force": "kN"}}),
    (False, {}),
    (False, []),
    (False, {"foundations": {}}),
    (False, {"foundations": [], "version": 2}),
    (False, {"foundations": [], "format": "other"}),
    (False, {"foundations": [{"colour": 1}]}),
    (False, {"foundations": [{"number": 1.5}]}),
    (False, {"foundations": [{"number": 2147483648}]}),
    (False, {"foundations": [{"name": None}]}),
    (False, {"foundations": [{"name": "\0"}]}),
    (False, {"foundations": [{"areaX": "1"}]}),
    (False, {"foundations": [{"areaFactor": None}]}),
    (False, {"foundations": [{"lineFailureX": "pull"}]}),
    (False, {"foundations": [{"generated": 1}]}),
]


def check_foundations(schema, folder):
    """The schema takes what the program takes."""
    for fits, value in FOUNDATIONS:
        text = json.dumps(value)
        expect(jsonschema.Draft7Validator(schema).is_valid(value) == fits, f"schema: {text}")
        (folder / "data.json").write_text(text)
        status, _, err = run("show", "data.json", folder=folder)
        expect((status == 0) == fits, f"show: {text} {err}")


def main():
    check_schema = read_schema(schemas / "check-1.schema.json")
    diff_schema = read_schema(schemas / "diff-1.schema.json")
    message_schema = read_schema(schemas / "message-1.schema.json")
    foundation_schema = read_schema(schemas / "foundations-1.schema.json")
    sarif = read_schema(sarif_schema)

    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        (folder / "odd #1 \u00fc.xml").write_text(ODD, encoding="utf-8")
        (folder / "broken.xml").write_text("<A>\n<B></A>\n", encoding="utf-8")
        (folder / "broken.csv").write_text("number,name\n1\n")
        documents = [str(examples / "model.xml"), str(examples / "beddings.xml"),
                     "odd #1 \u00fc.xml", "broken.xml", "missing.xml", "broken.csv"]

        check_foundations(foundation_schema, folder)
        for document in documents[:3]:
            _, out, _ = run("show", "--format", "json", document, folder=folder)
            validate(out, foundation_schema, f"show --format json {document}")

        status, out, _ = run("check", "--format", "json", *documents, folder=folder)
        expect(status == 2, "unreadable documents are errors")
        validate(out, check_schema, "check --format json")
        expect(len(json.loads(out)["findings"]) == 11, "all findings are in one answer")

        status, out, _ = run("check", "--format", "sarif", *documents, folder=folder)
        validate(out, sarif, "check --format sarif")
        check_sarif(out, len(documents))
        _, out, _ = run("check", "--format", "sarif", documents[0])
        validate(out, sarif, "check --format sarif without findings")

        for pair in (documents[0], documents[0]), (documents[0], documents[2]):
            _, out, _ = run("diff", "--format", "json", *pair, folder=folder)
            validate(out, diff_schema, f"diff --format json {pair}")

        for line in (["convert", documents[2], "out.kvml", "--to", "kvml"],
                     ["convert", documents[2], "-", "--to", "exchange"],
                     ["convert", documents[1], "out.xml", "--to", "legacy", "--strict"],
                     ["convert", "broken.xml", "out.xml", "--to", "legacy"],
                     ["convert", "broken.csv", "out.xml", "--to", "legacy"],
                     ["convert", documents[0], "out.xml", "--to", "nothing"],
                     ["merge", documents[0], documents[1], "-o", "-"],
                     ["merge", documents[2], documents[1], "--dry-run"],
                     ["prune", documents[0], "-", "--generated"],
                     ["prune", documents[1], "-", "--used-by", "odd #1 \u00fc.xml"]):
            _, _, err = run(*line, "--messages", "json", folder=folder)
            check_messages(err, message_schema, " ".join(line))

    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
