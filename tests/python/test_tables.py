"""Foundations as tables: what columns hold, and what comes back."""

import copy
import decimal
import gc
import math
import os
import re
import subprocess
import sys

import pytest

import kvfound as kv

np = pytest.importorskip("numpy")
pd = pytest.importorskip("pandas")

FIELDS = [
    *("number", "name", "generated", "areaX", "areaY", "areaZ", "areaFailureZ", "areaFactor"),
    *("lineX", "lineY", "lineZ", "lineRotationX", "lineFailureX", "lineFailureY", "lineFailureZ"),
    *("lineFactor", "current"),
]
NOTHING = {
    "number": -1,
    "name": "",
    "generated": False,
    "areaX": None,
    "areaY": None,
    "areaZ": None,
    "areaFailureZ": "none",
    "areaFactor": 0.0,
    "lineX": None,
    "lineY": None,
    "lineZ": None,
    "lineRotationX": None,
    "lineFailureX": "none",
    "lineFailureY": "none",
    "lineFailureZ": "none",
    "lineFactor": 0.0,
    "current": False,
}
NAN = float("nan")


@pytest.fixture
def manager():
    """A raft, a strip and a pile cap; the strip is the current one."""
    made = kv.FoundationManager()
    made.add(
        kv.Foundation(
            "Raft", number=3, area=(1500, 1500, 20000), fail_area_z=kv.Failure.TENSION,
            factor_area=0.1,
        )
    )
    made.add(
        kv.Foundation(
            "Stützwand", number=5, line=(1, 2, 3), rotation=(4, 0, 0), fail_line_x=1,
            fail_line_y=-1, fail_line_z=7, factor_line=0.25, generated=True,
        )
    )
    made.add(kv.Foundation("Pile cap", number=8, area=(0, 0, 5), line=(6, 7, 8)))
    made.current = made[1]
    for foundation in made.foundations:
        foundation.changed = False
    return made


ROWS = [
    {**NOTHING, "number": 3, "name": "Raft", "areaX": 1500.0, "areaY": 1500.0, "areaZ": 20000.0,
     "areaFailureZ": "tension", "areaFactor": 0.1},
    {**NOTHING, "number": 5, "name": "Stützwand", "generated": True, "lineX": 1.0, "lineY": 2.0,
     "lineZ": 3.0, "lineRotationX": 4.0, "lineFailureX": "compression", "lineFailureY": "tension",
     "lineFailureZ": "7", "lineFactor": 0.25, "current": True},
    {**NOTHING, "number": 8, "name": "Pile cap", "areaX": 0.0, "areaY": 0.0, "areaZ": 5.0,
     "lineX": 6.0, "lineY": 7.0, "lineZ": 8.0},
]  # fmt: skip


def refused(manager, error, text, table, **options):
    """The update raises and changes nothing."""
    before = manager.to_dicts()
    with pytest.raises(error, match=re.escape(text)):
        manager.update(table, **options)
    assert manager.to_dicts() == before
    assert not any(f.changed for f in manager.foundations)


class TestOut:
    def test_dicts_have_all_fields_in_order(self, manager):
        assert manager.to_dicts() == ROWS
        assert all(list(row) == FIELDS for row in manager.to_dicts())

    def test_dicts_hold_pythons_own_values(self, manager):
        types = [type(value) for value in manager.to_dicts()[0].values()]
        assert types == [int, str, bool, float, float, float, str, float, type(None), type(None),
                         type(None), type(None), str, str, str, float, bool]  # fmt: skip

    def test_columns_of_numpy(self, manager):
        columns = manager.to_numpy()
        assert list(columns) == FIELDS
        kinds = {name: column.dtype.str for name, column in columns.items()}
        assert kinds["number"] == np.dtype(np.int64).str
        assert kinds["generated"] == kinds["current"] == "|b1"
        assert {kinds[name] for name in FIELDS if kinds[name] not in ("|b1", "<i8")} == {
            "<f8",
            "|O",
        }
        for name in FIELDS:
            expected = [NAN if row[name] is None else row[name] for row in ROWS]
            np.testing.assert_array_equal(columns[name], np.array(expected), err_msg=name)

    def test_columns_are_copies(self, manager):
        columns = manager.to_numpy()
        columns["areaZ"][0] = 1.0
        columns["name"][0] = "other"
        assert manager[0].area == (1500.0, 1500.0, 20000.0)
        assert manager[0].name == "Raft"
        assert manager.to_numpy()["name"][0] == "Raft"

    def test_the_frame_has_the_columns(self, manager):
        frame = manager.to_pandas()
        assert list(frame.columns) == FIELDS
        assert list(frame.index) == [0, 1, 2]
        assert frame["areaZ"].isna().tolist() == [False, True, False]
        assert frame.set_index("name").loc["Raft", "areaZ"] == 20000.0

    def test_an_empty_manager_has_empty_columns(self):
        manager = kv.FoundationManager()
        assert manager.to_dicts() == []
        assert list(manager.to_pandas().columns) == FIELDS
        assert {len(column) for column in manager.to_numpy().values()} == {0}

    def test_numbers_stay_as_they_are(self):
        manager = kv.FoundationManager()
        odd = (-0.0, 5e-324, 1.7976931348623157e308)
        manager.add(kv.Foundation(number=-(2**31), area=odd, line=(math.inf, -math.inf, NAN)))
        columns = manager.to_numpy()
        found = [columns[name][0] for name in ("areaX", "areaY", "areaZ")]
        assert [value.hex() for value in found] == [value.hex() for value in odd]
        assert columns["lineX"][0] == math.inf
        assert columns["lineY"][0] == -math.inf
        assert math.isnan(columns["lineZ"][0])
        assert columns["number"][0] == -(2**31)

    def test_words_are_shared(self, manager):
        words = manager.to_numpy()["areaFailureZ"]
        assert words[1] is words[2]

    def test_arrays_leak_nothing(self, manager):
        manager.to_numpy(), manager.to_dicts(), manager.update(manager.to_dicts())
        gc.collect()
        before = sys.getrefcount(None), len(gc.get_objects())
        for _ in range(200):
            manager.to_numpy(), manager.to_dicts(), manager.update(manager.to_dicts())
        gc.collect()
        after = sys.getrefcount(None), len(gc.get_objects())
        assert abs(after[0] - before[0]) < 100
        assert abs(after[1] - before[1]) < 50

    def test_bytes_that_are_no_text_come_as_surrogates(self):
        manager = kv.FoundationManager()
        manager.add(kv.Foundation("a\udce9b"))
        assert manager.to_dicts()[0]["name"] == "a\udce9b"
        assert manager.to_numpy()["name"][0] == "a\udce9b"

    @pytest.mark.parametrize("missing, call", [("numpy", "to_numpy"), ("pandas", "to_pandas")])
    def test_what_is_not_installed_is_told(self, missing, call):
        code = (
            "import sys; sys.modules[sys.argv[1]] = None\n"
            "import kvfound\n"
            "manager = kvfound.FoundationManager()\n"
            "assert manager.to_dicts() == []\n"
            "try: getattr(manager, sys.argv[2])()\n"
            "except ImportError as error: print(error.name, error)\n"
        )
        done = subprocess.run(
            [sys.executable, "-c", code, missing, call],
            env={**os.environ, "PYTHONPATH": ":".join(filter(None, sys.path))},
            stdout=subprocess.PIPE, text=True, check=True,
        )  # fmt: skip
        assert done.stdout == f"{missing} {call}() needs {missing}, which is not installed\n"


TABLES = {
    "dicts": lambda manager: manager.to_dicts(),
    "arrays": lambda manager: manager.to_numpy(),
    "lists": lambda manager: {name: list(c) for name, c in manager.to_numpy().items()},
    "frame": lambda manager: manager.to_pandas(),
    "index": lambda manager: manager.to_pandas().set_index("number"),
    "nullable": lambda manager: manager.to_pandas().convert_dtypes(),
    "objects": lambda manager: manager.to_pandas().astype(object),
    "series": lambda manager: dict(manager.to_pandas().items()),
    "generator": lambda manager: (row for row in manager.to_dicts()),
    "records": lambda manager: manager.to_pandas().to_dict("records"),
}


class TestBack:
    @pytest.mark.parametrize("form", TABLES)
    @pytest.mark.parametrize("by", ["number", "name"])
    def test_the_same_table_changes_nothing(self, manager, form, by):
        table = TABLES[form](manager)
        if form == "index" and by == "name":
            table = table.reset_index()
        assert manager.update(table, by=by) == 0
        assert manager.to_dicts() == ROWS
        assert not any(f.changed for f in manager.foundations)

    @pytest.mark.parametrize("form", TABLES)
    def test_the_table_of_another_model_brings_all_values(self, manager, form):
        table = TABLES[form](manager)
        other = kv.FoundationManager()
        for number in (8, 5, 3):
            other.add(kv.Foundation("old", number=number, rotation=(1, 0, 0), area=(9, 9, 9)))
        assert other.update(table) == 3
        assert other.to_dicts() == ROWS[::-1]

    def test_one_column_leaves_the_others_alone(self, manager):
        assert manager.update({"number": [3], "areaZ": [16000]}) == 1
        assert manager.to_dicts() == [{**ROWS[0], "areaZ": 16000.0}, *ROWS[1:]]
        assert [f.changed for f in manager.foundations] == [True, False, False]

    def test_rows_may_tell_different_things(self, manager):
        rows = [{"number": 8, "areaZ": 1}, {"number": 3, "areaFactor": 0.5, "name": "Mat"}]
        assert manager.update(rows) == 2
        assert manager.to_dicts() == [
            {**ROWS[0], "areaFactor": 0.5, "name": "Mat"},
            ROWS[1],
            {**ROWS[2], "areaZ": 1.0},
        ]

    def test_by_name_numbers_change(self, manager):
        assert manager.update({"name": ["Pile cap"], "number": [80]}, by="name") == 1
        assert [f.number for f in manager.foundations] == [3, 5, 80]

    def test_the_index_may_be_the_key(self, manager):
        frame = pd.DataFrame({"areaZ": [1.5]}, index=pd.Index(["Raft"], name="name"))
        assert manager.update(frame, by="name") == 1
        assert manager[0].area == (1500.0, 1500.0, 1.5)

    def test_an_empty_table_is_one(self, manager):
        assert manager.update([]) == 0
        assert manager.update({"number": []}, add=True) == 0
        assert manager.update(manager.to_pandas().iloc[:0]) == 0

    def test_current_follows_its_column(self, manager):
        manager.update({"number": [3, 5], "current": [True, False]})
        assert manager.current is manager[0]
        manager.update({"number": [5, 8], "current": [False, False]})
        assert manager.current is manager[0]
        manager.update({"number": [3], "current": [False]})
        assert manager.current is None

    @pytest.mark.parametrize(
        "failure, expected",
        [("tension", -1), ("none", 0), (1, 1), (kv.Failure.TENSION, -1), (7, 7), ("7", 7), (1.0, 1),
         (np.int8(-1), -1)],
    )  # fmt: skip
    def test_failures_are_words_or_ints(self, manager, failure, expected):
        manager.update([{"number": 8, "areaFailureZ": failure}])
        assert manager[2].fail_area_z == expected

    @pytest.mark.parametrize(
        "value", [7, 7.0, np.int64(7), np.uint8(7), np.float32(7), decimal.Decimal(7), True + 6]
    )
    def test_whole_numbers_are_numbers(self, manager, value):
        manager.update([{"name": "Raft", "number": value, "areaX": value}], by="name")
        assert manager[0].number == 7
        assert manager[0].area == (7.0, 1500.0, 20000.0)

    @pytest.mark.parametrize("flag", [True, np.bool_(True), 1, np.int8(1)])
    def test_flags(self, manager, flag):
        manager.update([{"number": 3, "generated": flag}])
        assert manager[0].generated is True


class TestAbsence:
    @pytest.mark.parametrize("nothing", [None, NAN, np.float64("nan"), np.float32("nan"), pd.NA,
                                         pd.NaT, decimal.Decimal("nan")])  # fmt: skip
    def test_a_vector_goes_when_nothing_is_left(self, manager, nothing):
        names = ("areaX", "areaY", "areaZ")
        manager.update([{"number": 3, **dict.fromkeys(names, nothing)}])
        assert manager[0].area is None

    def test_a_component_that_is_nothing_counts_as_zero(self, manager):
        manager.update({"number": [3], "areaX": [None], "areaY": [NAN], "areaZ": [7]})
        assert manager[0].area == (0.0, 0.0, 7.0)

    def test_a_component_makes_a_vector(self, manager):
        manager.update({"number": [5], "areaZ": [7.0]})
        assert manager[1].area == (0.0, 0.0, 7.0)

    def test_what_the_table_does_not_tell_keeps_a_vector(self, manager):
        manager.update({"number": [3, 8], "areaZ": [None, None]})
        assert manager[0].area == (1500.0, 1500.0, 0.0)
        assert manager[2].area is None  # (0, 0, -)

    def test_a_vector_of_zeros_stays_present(self, manager):
        manager[0].area = (0, 0, 0)
        manager[0].changed = False
        assert manager.update(manager.to_pandas()) == 0
        assert manager[0].area == (0.0, 0.0, 0.0)

    def test_absent_stays_absent_and_unmarked(self, manager):
        assert manager.update({"number": [5], "areaX": [NAN]}) == 0
        assert manager[1].area is None
        assert not manager[1].changed

    def test_rotation_keeps_what_no_table_shows(self, manager):
        manager[1].rotation = (4, 5, 6)
        manager.update({"number": [5], "lineRotationX": [None]})
        assert manager[1].rotation == (0.0, 5.0, 6.0)
        manager[1].rotation = (4, 0, 0)
        manager.update({"number": [5], "lineRotationX": [None]})
        assert manager[1].rotation is None

    def test_a_nan_that_is_there_stays(self, manager):
        manager[0].area = (NAN, 1, 2)
        manager[0].changed = False
        assert manager.update(manager.to_pandas()) == 0
        assert not manager[0].changed
        assert math.isnan(manager[0].area[0])


class TestRefusals:
    @pytest.mark.parametrize("unit", ["s", "ns"])
    @pytest.mark.parametrize("kind", ["datetime64", "timedelta64"])
    @pytest.mark.parametrize("column", ["number", "areaX"])
    def test_of_times(self, manager, kind, unit, column):
        table = {"number": [3], "areaX": [7.0], column: np.array([3], f"{kind}[{unit}]")}
        refused(manager, TypeError, f"{column}: times are no values", table)

    @pytest.mark.parametrize(
        "column, value, error, text",
        [
            ("areaZ", "12", TypeError, "areaZ in row 1: a number is wanted, not str"),
            ("areaZ", True, TypeError, "areaZ in row 1: a number is wanted, not bool"),
            ("areaZ", 10**400, OverflowError, "areaZ in row 1"),
            ("areaZ", [1], TypeError, "areaZ in row 1: a number is wanted, not list"),
            ("areaZ", 1j, TypeError, "areaZ in row 1: a number is wanted, not complex"),
            ("areaFactor", NAN, ValueError, "areaFactor in row 1: the value is missing"),
            ("areaFactor", None, ValueError, "areaFactor in row 1: the value is missing"),
            ("generated", NAN, ValueError, "generated in row 1: the value is missing"),
            ("generated", pd.NA, ValueError, "generated in row 1: the value is missing"),
            ("generated", 0.5, TypeError, "generated in row 1: a bool is wanted, not float"),
            ("generated", 2, ValueError, "generated in row 1: a bool is wanted"),
            ("generated", "yes", TypeError, "generated in row 1: a bool is wanted, not str"),
            ("name", None, ValueError, "name in row 1: the value is missing"),
            ("name", 5, TypeError, "name in row 1: a str is wanted, not int"),
            ("name", "\ud800", UnicodeEncodeError, "surrogates not allowed"),
            ("areaFailureZ", "pull", ValueError,
             "areaFailureZ in row 1: tension, compression or none is wanted, not 'pull'"),
            ("areaFailureZ", 0.5, ValueError, "areaFailureZ in row 1: a whole number is wanted"),
            ("areaFailureZ", NAN, ValueError, "areaFailureZ in row 1: the value is missing"),
            ("areaFailureZ", True, TypeError, "areaFailureZ in row 1: an int is wanted, not bool"),
            ("current", NAN, ValueError, "current in row 1: the value is missing"),
        ],
    )  # fmt: skip
    def test_of_cells(self, manager, column, value, error, text):
        rows = [{"number": 3, "areaX": 9}, {"number": 5, column: value}]
        refused(manager, error, text, rows)

    @pytest.mark.parametrize(
        "value, error, text",
        [
            (7.5, ValueError, "number in row 0: a whole number is wanted, not 7.5"),
            (NAN, ValueError, "number in row 0: the value is missing"),
            (pd.NA, ValueError, "number in row 0: the value is missing"),
            (None, ValueError, "number in row 0: the value is missing"),
            ("3", TypeError, "number in row 0: an int is wanted, not str"),
            (True, TypeError, "number in row 0: an int is wanted, not bool"),
            (np.bool_(True), TypeError, "number in row 0: an int is wanted"),
            (2**31, OverflowError, "number in row 0"),
            (2**80, OverflowError, "number in row 0"),
            (np.int64(2**40), OverflowError, "number in row 0"),
            (np.uint64(2**63), OverflowError, "number in row 0"),
            (1e10, OverflowError, "number in row 0"),
            (math.inf, OverflowError, "number in row 0"),
            (-math.inf, OverflowError, "number in row 0"),
        ],
    )
    def test_of_numbers(self, manager, value, error, text):
        refused(manager, error, text, {"number": [value], "areaX": [1]})

    def test_of_a_float_column_with_decimals(self, manager):
        frame = manager.to_pandas()
        frame["number"] = [3.0, 5.5, 8.0]
        refused(manager, ValueError, "number in row 1: a whole number is wanted, not 5.5", frame)

    def test_of_dates(self, manager):
        frame = manager.to_pandas()
        frame["areaZ"] = pd.Timestamp("2024-02-03")
        refused(manager, TypeError, "areaZ in row 0: a number is wanted, not Timestamp", frame)

    @pytest.mark.parametrize("by", ["number", "name"])
    def test_of_two_rows_about_the_same_foundation(self, manager, by):
        table = pd.concat([manager.to_pandas(), manager.to_pandas().iloc[[1]]])
        told = "number 5" if by == "number" else "name 'Stützwand'"
        text = f"rows 1 and 3 are about the same foundation, {told}"
        refused(manager, ValueError, text, table, by=by)

    def test_of_two_new_rows_about_the_same_foundation(self, manager):
        table = {"number": [20, 20], "name": ["a", "b"]}
        refused(manager, ValueError, "rows 0 and 1 are about the same", table, add=True)

    def test_of_a_number_that_several_have(self, manager):
        manager[0].number = 5
        text = "row 0: 2 foundations have the number 5"
        refused(manager, ValueError, text, {"number": [5], "areaX": [1.0]})
        assert manager.update({"number": [8], "areaX": [1.0]}) == 1

    def test_of_rows_about_none(self, manager):
        text = "row 1: there is no foundation of the number 4; add=True adds it"
        refused(manager, ValueError, text, {"number": [3, 4], "areaX": [1, 2]})

    def test_of_two_current_ones(self, manager):
        table = {"number": [3, 5, 8], "current": [True, False, True]}
        refused(manager, ValueError, "rows 0 and 2 are both current", table)

    def test_of_columns_that_there_are_not(self, manager):
        text = "there is no column 'areaZz', perhaps 'areaZ' is meant"
        refused(manager, ValueError, text, {"number": [3], "areaZz": [1]})
        refused(manager, ValueError, "there is no column 'colour'", {"number": [3], "colour": [1]})
        refused(manager, TypeError, "column: a str is wanted, not int", {"number": [3], 0: [1]})

    def test_without_the_key(self, manager):
        refused(manager, ValueError, "the table has no column 'number'", {"areaZ": [1]})
        refused(manager, ValueError, "the table has no column 'name'", {"number": [3]}, by="name")
        rows = [{"number": 3, "areaX": 1.0}, {"areaX": 2.0}]
        refused(manager, ValueError, "row 1 has no number", rows)
        refused(manager, ValueError, "by: 'number' or 'name' is wanted", [], by="areaZ")

    def test_of_what_is_no_table(self, manager):
        for table in (None, 5, "number", b"number"):
            refused(manager, TypeError, "table: a frame of pandas, a mapping", table)
        refused(manager, TypeError, "row 1: a mapping is wanted, not int", [{"number": 3}, 5])
        refused(manager, TypeError, "number: a column is wanted, not int", {"number": 3})
        refused(manager, TypeError, "name: a column is wanted, not str", {"name": "Raft"})
        square = np.ones((2, 2))
        refused(manager, ValueError, "areaX: a column has one dimension, not 2", {"areaX": square})

    def test_of_columns_of_different_lengths(self, manager):
        table = {"number": [3, 5], "areaX": [1.0]}
        refused(manager, ValueError, "the columns are not of the same length: 'areaX'", table)

    def test_of_a_column_that_is_there_twice(self, manager):
        frame = manager.to_pandas()[["number", "areaX", "areaX"]]
        refused(manager, ValueError, "the table has the column 'areaX' twice", frame)


class TestAdding:
    def test_new_rows_come_behind(self, manager):
        table = {"number": [20, 3], "name": ["Tank", "Raft"], "areaZ": [62500.0, 1.0]}
        assert manager.update(table, add=True) == 2
        assert [f.name for f in manager.foundations] == ["Raft", "Stützwand", "Pile cap", "Tank"]
        added = manager[3]
        assert (added.number, added.area, added.line) == (20, (0.0, 0.0, 62500.0), None)
        assert added.changed

    def test_by_name_they_are_numbered_on(self, manager):
        assert manager.update({"name": ["A", "Raft", "B"]}, by="name", add=True) == 2
        assert [f.number for f in manager.foundations] == [3, 5, 8, 9, 10]

    def test_the_largest_number_stays(self, manager):
        manager[0].number = 2**31 - 1
        manager.update({"name": ["A"]}, by="name", add=True)
        assert manager[3].number == 2**31 - 1

    def test_a_new_one_may_be_current(self, manager):
        manager.update({"number": [20], "current": [True]}, add=True)
        assert manager.current is manager[3]

    def test_a_table_makes_a_manager(self, manager):
        other = kv.FoundationManager()
        assert other.update(manager.to_pandas(), add=True) == 3
        assert other.to_dicts() == ROWS

    def test_nothing_is_added_when_a_row_is_wrong(self, manager):
        table = {"number": [20, 21], "areaX": [1.0, "x"]}
        refused(manager, TypeError, "areaX in row 1", table, add=True)


class TestHostileTables:
    def test_a_cell_may_change_the_manager(self, manager):
        raft = manager[0]

        class Number:
            def __float__(self):
                manager.remove(raft)
                return 1.0

        refused_before = len(manager)
        with pytest.raises(ValueError, match="no foundation of the number 3"):
            manager.update([{"number": 3, "areaX": Number()}])
        assert len(manager) == refused_before - 1
        assert raft.area == (1500.0, 1500.0, 20000.0)

    def test_a_cell_may_raise(self, manager):
        class Number:
            def __index__(self):
                raise KeyError("mine")

        refused(manager, KeyError, "mine", [{"number": Number()}])

    def test_a_cell_may_update(self, manager):
        class Number:
            def __float__(self):
                manager.update({"number": [3], "areaX": [2.0]})
                return 1.0

        assert manager.update([{"number": 3, "areaY": Number()}]) == 1
        assert manager[0].area == (2.0, 1.0, 20000.0)


def test_many_rows_take_a_moment():
    count = 20_000
    manager = kv.FoundationManager()
    numbers = np.arange(1, count + 1)
    table = {"number": numbers, "areaZ": numbers * 0.5}
    assert manager.update(table, add=True) == count
    assert manager.update({**table, "areaZ": numbers * 2.0}) == count
    np.testing.assert_array_equal(manager.to_numpy()["areaZ"], numbers * 2.0)


class TestModels:
    """Models have the same operations as their managers."""

    def test_a_model_is_a_table(self, examples):
        model = kv.open(examples / "model.xml")
        frame = model.to_pandas()
        assert model.to_dicts() == model.foundations.to_dicts()
        assert frame.shape == (12, 17)
        assert frame["name"][6] == "Rückwand Kranbahn"
        assert frame.loc[frame["current"], "number"].tolist() == [3]
        assert {name: list(column) for name, column in model.to_numpy().items()}.keys() == set(
            FIELDS
        )

    def test_a_table_changes_what_is_saved(self, examples):
        model = kv.open((examples / "model.xml").read_bytes())
        before = model.to_bytes()
        frame = model.to_pandas().set_index("number")
        frame.loc[frame["areaZ"] < 10000, "areaZ"] *= 2
        assert model.update(frame) == 3
        after = model.to_bytes()
        changed = [
            (old, new)
            for old, new in zip(before.splitlines(), after.splitlines())
            if old != new
        ]
        assert [new.replace(b'"12400"', b'"6200"') for old, new in changed][0] == changed[0][0]
        assert len(changed) == 3

    def test_a_table_fills_a_new_model(self, examples):
        model = kv.Model()
        model.update(kv.open(examples / "model.xml").to_pandas(), add=True)
        assert kv.open(model.to_bytes()).to_dicts()[2] == {
            **NOTHING, "number": 3, "name": "Raft on stiff clay", "areaX": 1500.0, "areaY": 1500.0,
            "areaZ": 15000.0, "areaFailureZ": "tension", "areaFactor": 0.1, "current": True,
        }  # fmt: skip

    def test_fields_are_those_of_the_program(self, examples):
        table = kv.open(examples / "model.xml").to_bytes("csv", lossy=True).decode().splitlines()
        head = next(line for line in table if not line.startswith("#"))
        assert re.split("[,;]", head.lstrip("\ufeff")) == FIELDS

    def test_a_table_of_pandas_reads_what_the_program_writes(self, examples, tmp_path):
        model = kv.open(examples / "model.xml")
        model.write(tmp_path / "model.csv", lossy=True)
        frame = pd.read_csv(tmp_path / "model.csv", comment="#")
        frame["name"] = frame["name"].fillna("")
        assert model.update(frame) == 0


def test_a_zero_of_the_other_sign_is_another_value(manager):
    assert manager.update({"number": [8], "areaX": [-0.0]}) == 1
    assert math.copysign(1.0, manager[2].area[0]) == -1.0


class TestUniqueness:
    """A model takes no table after which it could not be saved."""

    @pytest.fixture
    def model(self, manager):
        made = kv.Model()
        made.foundations.extend(copy.copy(one) for one in manager)
        return made

    @pytest.mark.parametrize(
        "table, by, sentence",
        [
            ({"name": ["Raft"], "number": [5]}, "name", 'row 0: number 5 is taken by number 5 "Stützwand"'),
            ({"number": [3, 8], "name": ["Raft", "Stützwand"]}, "number", 'row 1: the name \'Stützwand\' is taken by number 5 "Stützwand"'),
            ({"number": [20, 21], "name": ["Tank", "Tank"]}, "number", "row 0: the name 'Tank' is taken by number 21 \"Tank\""),
            ({"name": ["A", "B"], "number": [20, 20]}, "name", "row 0: number 20 is taken by"),
            ({"number": [20], "name": ["Raft"], "areaZ": [1]}, "number", "row 0: the name 'Raft' is taken by number 3"),
        ],
    )
    def test_what_another_one_has_is_refused(self, model, table, by, sentence):
        before = model.to_dicts()

        with pytest.raises(ValueError, match="^" + re.escape(sentence)):
            model.update(table, by=by, add=True)

        assert model.to_dicts() == before

    def test_numbers_and_names_may_be_swapped(self, model):
        model.update({"number": [3, 5], "name": ["Stützwand", "Raft"]})
        model.update({"name": ["Stützwand", "Raft"], "number": [5, 3]}, by="name")

        assert [(one.number, one.name) for one in model] == [(5, "Stützwand"), (3, "Raft"), (8, "Pile cap")]
        model.to_bytes(lossy=True)

    def test_what_was_there_twice_may_stay(self, model):
        model.foundations.add(kv.Foundation("Raft", number=9, area=(1, 1, 1)))

        assert model.update({"number": [3, 9], "name": ["Raft", "Raft"], "areaZ": [7, 8]}) == 2

    def test_several_may_come_without_a_name(self, model):
        assert model.update({"number": [20, 21]}, add=True) == 2

    def test_numbers_that_no_document_stores_may_be_the_same(self):
        model = kv.Model("exchange-1.0")
        model.foundations.extend([kv.Foundation("A", number=1), kv.Foundation("B", number=2)])

        assert model.update({"name": ["B"], "number": [1]}, by="name") == 1
        with pytest.raises(ValueError, match="^row 0: the name 'B' is taken by "):
            model.update({"number": [7], "name": ["B"]}, add=True)

    def test_a_manager_takes_them(self, manager):
        assert manager.update({"name": ["Raft"], "number": [5]}, by="name") == 1


class TestFactorsThatAreNan:
    """They come back, and cannot be stored."""

    def test_what_comes_back_changes_nothing(self, manager):
        manager[0].factor_area = manager[1].factor_line = NAN
        for one in manager:
            one.changed = False

        assert manager.update(manager.to_dicts()) == manager.update(manager.to_pandas()) == 0
        assert math.isnan(manager[0].factor_area) and not any(one.changed for one in manager)

    def test_others_stay_refused(self, manager):
        manager[0].factor_area = NAN

        for table in ({"number": [5], "areaFactor": [NAN]}, {"number": [3], "areaFactor": [None]}, {"number": [20], "areaFactor": [NAN]}):
            with pytest.raises(ValueError, match="^areaFactor in row 0: the value is missing$"):
                manager.update(table, add=True)


def test_a_masked_stiffness_is_absent():
    numpy = pytest.importorskip("numpy")
    manager = kv.FoundationManager([kv.Foundation(number=1, area=(1, 2, 3))])
    manager.update([{"number": 1, "areaX": numpy.ma.masked, "areaY": 5}])

    assert manager[0].area == (0.0, 5.0, 3.0)
