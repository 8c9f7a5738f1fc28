"""Random tables against what dicts say must come of them."""

import math

import pytest

import kvfound as kv

pytest.importorskip("hypothesis")
pytest.importorskip("pandas")

from hypothesis import given, settings  # noqa: E402
from hypothesis import strategies as st  # noqa: E402

VECTORS = [("areaX", "areaY", "areaZ"), ("lineX", "lineY", "lineZ"), ("lineRotationX",)]
STIFFNESS = st.one_of(st.none(), st.floats(allow_nan=False), st.integers(-5, 5))
CELLS = {
    "name": st.text(st.characters(blacklist_categories=["Cs"]), max_size=4),
    "generated": st.booleans(),
    "areaFactor": st.floats(allow_nan=False),
    "lineFactor": st.floats(allow_nan=False),
    **{name: STIFFNESS for names in VECTORS for name in names},
    **{
        name: st.sampled_from(["none", "tension", "compression", "7", "-3"])
        for name in ("areaFailureZ", "lineFailureX", "lineFailureY", "lineFailureZ")
    },
}
ROW = st.fixed_dictionaries({}, optional=CELLS)
TABLE = st.dictionaries(st.integers(-3, 6), ROW, max_size=6).map(
    lambda rows: [{"number": number, **row} for number, row in rows.items()]
)


def to_float(value):
    return 0.0 if value is None else float(value)


def apply(row, told):
    """What a row makes of what to_dicts() tells of a foundation."""
    after = {**row, **told}
    for names in VECTORS:
        if any(name in told for name in names):
            goes = all(told.get(name) is None and not after[name] for name in names)
            after.update({name: None if goes else to_float(after[name]) for name in names})
    return after


def show(rows):
    """Values that differ where Python would call them equal, as -0.0 and 0.0."""
    return [{name: repr(value) for name, value in row.items()} for row in rows]


def put(rows, table):
    known = {row["number"]: row for row in rows}
    empty = kv.FoundationManager([kv.Foundation()]).to_dicts()[0]
    for told in table:
        known[told["number"]] = apply(known.get(told["number"], empty), told)
    return list(known.values())


@settings(max_examples=300, deadline=None)
@given(st.lists(TABLE, max_size=4))
def test_rows_do_what_they_say(tables):
    manager = kv.FoundationManager()
    expected = []
    for table in tables:
        manager.update(table, add=True)
        expected = put(expected, table)
        assert show(manager.to_dicts()) == show(expected)


@settings(max_examples=100, deadline=None)
@given(TABLE)
def test_all_forms_of_a_table_are_alike(table):
    manager = kv.FoundationManager()
    manager.update(table, add=True)
    rows = show(manager.to_dicts())
    # As ints, pandas would lose the sign of a zero.
    nullable = manager.to_pandas().convert_dtypes(convert_integer=False, convert_floating=False)
    for form in (manager.to_pandas(), manager.to_numpy(), nullable):
        assert manager.update(form) == 0
        other = kv.FoundationManager()
        other.update(form, add=True)
        assert show(other.to_dicts()) == rows


@settings(max_examples=100, deadline=None)
@given(TABLE, st.sampled_from(sorted(CELLS)), st.sampled_from([object(), [], b"x", 1j]))
def test_a_wrong_cell_changes_nothing(table, column, wrong):
    manager = kv.FoundationManager()
    manager.update(table, add=True)
    before = show(manager.to_dicts())
    rows = [{"number": number, "areaX": math.pi} for number in range(-3, 7)]
    with pytest.raises(TypeError):
        manager.update([*rows, {"number": 99, column: wrong}], add=True)
    assert show(manager.to_dicts()) == before
