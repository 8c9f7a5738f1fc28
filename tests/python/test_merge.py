"""Foundations of other models come into a model by the rules of the program."""

import warnings

import pytest

import kvfound as kv

MODEL = (
    b'<?xml version="1.0"?>\n<SMOD><FOUNDATIONS CURRENT="A">\n'
    b'<FOUND NUMBER="1" NAME="A" FZAREA="1" OWN="kept"/>\n<FOUND NUMBER="2" NAME="B" FZLINE="2"/>\n'
    b"</FOUNDATIONS></SMOD>"
)


def make_table(rows):
    return kv.open(b"number,name,areaX,areaY,areaZ\n" + rows, form="csv")


def test_equal_ones_change_and_others_are_added():
    model = kv.open(MODEL)
    first = model["A"]
    merged = model.merge(make_table(b"1,A,5,6,7\n3,C,1,2,3\n"))

    assert merged.changed == [first] and merged.changed[0] is first
    assert first.area == (5, 6, 7)
    assert merged.added == [model["C"]] and merged.added[0] is model["C"]
    assert merged.left_out == () and merged.losses == ()
    assert b'OWN="kept"' in model.to_bytes()
    assert [f.name for f in model] == ["A", "B", "C"]


def test_a_merge_with_itself_changes_nothing():
    model = kv.open(MODEL)
    assert model.merge(model) == ([], [], (), ())
    assert model.to_bytes() == MODEL


def test_several_come_at_once(tmp_path):
    path = tmp_path / "table.csv"
    path.write_bytes(b"number,name\n4,D\n")
    model = kv.open(MODEL)
    model.merge(make_table(b"3,C,1,2,3\n"), path)

    assert [f.name for f in model] == ["A", "B", "C", "D"]


def test_clashes_are_refused_with_their_places():
    model = kv.open(MODEL)
    with pytest.raises(kv.ClashError) as caught:
        model.merge(make_table(b"5,E,1,2,3\n1,Z,1,2,3\n"))
    assert caught.value.clashes[0].startswith("<bytes>:3:1: number 1")
    assert "--" not in str(caught.value)
    assert model.to_bytes() == MODEL and len(model) == 2


@pytest.mark.parametrize(
    "rule, expected",
    [
        ("renumber", [(1, "A"), (2, "B"), (3, "Z")]),
        ("skip", [(1, "A"), (2, "B")]),
        ("replace", [(1, "Z"), (2, "B")]),
    ],
)
def test_rules_for_clashes(rule, expected):
    model = kv.open(MODEL)
    merged = model.merge(make_table(b"1,Z,1,2,3\n"), on_clash=rule)

    assert [(f.number, f.name) for f in model] == expected
    assert len(merged.left_out) == (rule == "skip")
    assert [f.name for f in kv.open(model.to_bytes())] == [name for _, name in expected]


def test_names_that_are_taken_can_be_changed():
    model = kv.open(MODEL)
    model.merge(make_table(b"8,A,1,2,3\n"), on_clash="rename")

    assert model[8].name != "A" and model["A"].number == 1
    for no_way in ("x", None):
        with pytest.raises(ValueError, match="on_clash"):
            model.merge(MODEL, on_clash=no_way)


def test_losses_are_refused():
    table = kv.open(b"number,name,areaZ\n1,A,1\n", form="csv")
    with pytest.raises(kv.LossError) as caught:
        table.merge(MODEL)
    assert caught.value.losses
    assert len(table) == 1

    merged = table.merge(MODEL, lossy=True)
    assert merged.losses == caught.value.losses
    assert [f.name for f in table] == ["A", "B"]


def test_units_are_compared():
    model = kv.open(MODEL)
    with pytest.warns(kv.UnitWarning):
        model.merge(kv.open(b"#units,kN,m\nnumber,name\n7,N\n", form="csv"))
    assert model["N"].number == 7


def test_a_warning_that_is_an_error_comes_before_anything_changes():
    model = kv.open(MODEL)
    other = kv.open(b"#units,kN,m\nnumber,name,areaX\n1,A,9\n7,N,1\n", form="csv")
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        with pytest.raises(kv.UnitWarning):
            model.merge(other)
        with pytest.raises(kv.UnitWarning):
            model.diff(other)
    assert model.to_bytes() == MODEL and len(model) == 2


def test_warnings_tell_the_line_that_merges():
    with pytest.warns(kv.UnitWarning) as caught:
        kv.open(MODEL).merge(kv.open(b"#units,kN,m\nnumber,name\n7,N\n", form="csv"))
    assert caught[0].filename == __file__


def test_rotation_that_no_document_stores_is_a_loss_of_what_comes():
    model = kv.open(MODEL)
    model["A"].rotation = (0, 2, 0)
    other = kv.Model("json")
    other.new("C", number=3, line=(1, 1, 1))
    model.merge(other)
    assert model["A"].rotation == (0, 2, 0) and "C" in model

    other["C"].rotation = (0, 0, 3)
    with pytest.raises(kv.LossError):
        model.merge(other)
    assert model["C"].rotation is None or model["C"].rotation == (0, 0, 0)
    assert model.merge(other, lossy=True).losses == ('number 3 "C": lineRotationZ 3 is lost',)


@pytest.mark.parametrize("name, number", [("N", 3), ("Other", 7), ("Other", 8)])
def test_what_comes_meanwhile_may_clash(name, number):
    model = kv.open(MODEL)
    other = kv.open(b"#units,kN,m\nnumber,name,areaX\n1,A,9\n7,N,1\n", form="csv")
    with warnings.catch_warnings():
        warnings.simplefilter("always")
        warnings.showwarning = lambda *_: model.new(name, number=number)
        if number == 8:
            assert model.merge(other).added == [model["N"]]
            return
        with pytest.raises(RuntimeError, match="meanwhile; nothing was merged"):
            model.merge(other)
    assert [f.name for f in model] == ["A", "B", name] and model["A"].area == (0, 0, 1)
