"""Findings tell file, line, column and sentence, and which foundation they are about."""

import copy
import json
import pickle

import kvfound as kv
import pytest

MODEL = (
    b'<?xml version="1.0"?>\n<SMOD><FOUNDATIONS>\n'
    b'<FOUND NUMBER="1" NAME="A" FZAREA="-1"/>\n<FOUND NUMBER="1" NAME="B"/>\n</FOUNDATIONS></SMOD>'
)


def test_findings_tell_place_rule_and_sentence(tmp_path):
    path = tmp_path / "model.xml"
    path.write_bytes(MODEL)
    model = kv.open(path)
    findings = model.check()

    assert [(f.line, f.rule) for f in findings] == [(3, "negative-value"), (4, "same-number")]
    first = findings[0]
    assert first.filename == str(path) and first.column == 28 and first.severity == "warning"
    assert str(first) == f"{path}:3:28: warning: {first.sentence}"
    assert first.foundation is model["A"]
    assert all(finding.rule in kv.RULES for finding in findings)
    assert str(findings).count("\n") == 1
    assert findings == list(findings) and bool(findings)


def test_findings_are_those_of_the_present_state():
    model = kv.open(MODEL)
    model["A"].area = (0, 0, 1)
    model["B"].number = 2
    assert not model.check()

    added = model.new("C", area=(0, 0, -5))
    finding, = model.check()
    assert finding.foundation is added and finding.line == 5


def test_what_cannot_be_saved_cannot_be_checked():
    model = kv.open(b'<Beddings><SurfaceBedding Number="1" Name="A" StiffnessZ="1"/></Beddings>')
    model.new("B")
    with pytest.raises(kv.LossError, match="no stiffness"):
        model.check()


def test_programs_read_json_and_sarif(tmp_path):
    first = kv.open(MODEL).check()
    second = kv.open(MODEL.replace(b"-1", b"1")).check()

    assert len(first + second) == 3
    assert len(json.loads((first + second).to_json())["files"]) == 2
    sarif = json.loads(first.to_sarif())
    assert sarif["version"] == "2.1.0"
    assert [r["ruleId"] for r in sarif["runs"][0]["results"]] == ["negative-value", "same-number"]


def test_findings_are_copied_and_added():
    findings = kv.open(MODEL).check()
    assert copy.copy(findings) == copy.deepcopy(findings) == findings
    assert copy.deepcopy(findings).to_json() == findings.to_json()
    assert pickle.loads(pickle.dumps(list(findings))) == findings
    with pytest.raises(TypeError, match=r"pickle list\(findings\)"):
        pickle.dumps(findings)
    for other in ([], None):
        with pytest.raises(TypeError):
            findings + other


def test_seeds_are_checked(seeds):
    for path in sorted((seeds / "check").iterdir()):
        try:
            model = kv.open(path.read_bytes())
            model.check()
        except (kv.DocumentError, kv.LossError):
            continue
