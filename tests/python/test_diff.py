"""Two models are compared as they are at the moment."""

import copy
import json
import pickle
import warnings

import pytest

import kvfound as kv

MODEL = (
    b'<?xml version="1.0"?>\n<SMOD><FOUNDATIONS CURRENT="A">\n'
    b'<FOUND NUMBER="1" NAME="A" FZAREA="1"/>\n<FOUND NUMBER="2" NAME="B" FZLINE="2"/>\n'
    b"</FOUNDATIONS></SMOD>"
)


def test_equal_models_do_not_differ(tmp_path):
    path = tmp_path / "model.xml"
    path.write_bytes(MODEL)
    differences = kv.diff(path, kv.open(MODEL))

    assert not differences and len(differences) == 0 and differences.current is None
    assert list(differences) == [] and str(differences) == ""


def test_differences_tell_what_came_went_and_changed():
    before, after = kv.open(MODEL), kv.open(MODEL)
    after["A"].area = (0, 0, 5)
    after.remove("B")
    after.new("C", number=7)
    after.current = None
    differences = before.diff(after)

    assert [d.kind for d in differences] == ["changed", "removed", "added"]
    changed, removed, added = differences
    assert changed.fields == (("areaZ", 1.0, 5.0),)
    assert removed.first.name == "B" and removed.second is None
    assert added.second.name == "C" and added.second is not after["C"]
    assert str(changed) == 'changed: number 1 "A"\n    areaZ: 1.0 -> 5.0'
    assert differences.current[0].name == "A" and differences.current[1] is None


def test_models_that_cannot_be_saved_are_compared_all_the_same():
    content = b'<Beddings><SurfaceBedding Number="1" Name="A" StiffnessZ="1"/></Beddings>'
    model = kv.open(content)
    model["A"].generated = True
    model.new("B")

    assert [d.kind for d in kv.diff(content, model)] == ["changed", "added"]


def test_what_pairs_foundations_can_be_told():
    other = kv.open(MODEL)
    other["A"].name = "Z"
    assert [d.kind for d in kv.diff(MODEL, other)] == ["changed"]
    assert [d.kind for d in kv.diff(MODEL, other, by="number")] == ["changed"]
    assert [d.kind for d in kv.diff(MODEL, other, by="name")] == ["removed", "added"]
    with pytest.raises(ValueError, match="number or name"):
        kv.diff(MODEL, other, by="place")


def test_small_differences_can_be_left_out():
    other = kv.open(MODEL)
    other["A"].area = (0, 0, 1.0000001)
    assert kv.diff(MODEL, other)
    assert not kv.diff(MODEL, other, relative=1e-6)
    for share in (-1, 2, float("nan")):
        with pytest.raises(ValueError, match="share"):
            kv.diff(MODEL, other, relative=share)


def test_units_that_only_one_names_are_warned_of(tmp_path):
    table = tmp_path / "table.csv"
    table.write_bytes(b"#units,kN,m\nnumber,name,areaZ\n1,A,1\n")
    with pytest.warns(kv.UnitWarning, match="names none") as caught:
        kv.diff(MODEL, table)
    assert caught[0].filename == __file__
    other = kv.open(b"#units,N,mm\nnumber,name\n1,A\n", form="csv")
    with pytest.raises(kv.DocumentError, match="labels convert nothing"):
        kv.diff(table, other)


def test_a_page_and_json(tmp_path):
    other = kv.open(MODEL)
    other["A"].area = (0, 0, 5)
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        differences = kv.diff(MODEL, other)
    page = tmp_path / "changes.html"
    differences.report(page)
    differences.report(page)

    assert page.read_text(encoding="utf-8") == differences.to_html()
    assert json.loads(differences.to_json())
    (tmp_path / "text").write_text("text")
    with pytest.raises(FileExistsError, match="no page"):
        differences.report(tmp_path / "text")


def test_what_was_compared_stays_as_it_was():
    other = kv.open(MODEL)
    other["A"].area = (0, 0, 5)
    differences = kv.diff(MODEL, other)
    other["A"].area = (0, 0, 1)
    del other

    assert differences[0].second.area == (0, 0, 5)
    assert "5" in differences.to_json()


def test_another_current_foundation_is_told():
    other = kv.open(MODEL)
    other.current = None if other.current else other["A"]
    differences = kv.diff(MODEL, other)
    assert differences and len(differences) == 0
    assert repr(differences) == "<Differences: 0, and which one is current>"
    assert str(differences) == 'current: number 1 "A" -> none'
    assert str(kv.diff(MODEL, MODEL)) == "" and repr(kv.diff(MODEL, MODEL)) == "<Differences: 0>"


def test_differences_are_compared_and_copied_by_value():
    other = kv.open(MODEL)
    other["A"].area = (7, 7, 7)
    differences = kv.diff(MODEL, other)
    assert differences == kv.diff(MODEL, other)
    assert differences != kv.diff(MODEL, MODEL)
    assert copy.copy(differences) == copy.deepcopy(differences) == differences
    assert copy.deepcopy(differences)[0].first is not differences[0].first
    assert copy.copy(differences).to_json() == differences.to_json()
    assert pickle.loads(pickle.dumps(list(differences))) == list(differences)
    with pytest.raises(TypeError, match=r"pickle list\(differences\)"):
        pickle.dumps(differences)
    with pytest.raises(TypeError, match="unhashable"):
        hash(differences)


def test_differences_in_foundations_of_other_names_are_not_equal():
    model = kv.Model()
    model.new("A"), model.new("B")
    without_a, without_b = copy.copy(model), copy.copy(model)
    without_a.remove("A")
    without_b.remove("B")
    assert model.diff(without_a) == model.diff(without_a) != model.diff(without_b)
