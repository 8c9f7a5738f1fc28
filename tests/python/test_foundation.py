"""What a foundation does, see include/found/foundation.h."""

import math

import numpy
import pytest

import kvfound as kv
from kvfound import Failure, Foundation


def test_a_new_foundation_is_empty():
    new = Foundation()

    assert (new.name, new.number, new.manager) == ("", -1, None)
    assert (new.area, new.line, new.rotation) == (None, None, None)
    assert (new.changed, new.generated, new.fail_possible) == (False, False, False)
    assert (new.factor_area, new.factor_line) == (0.0, 0.0)
    assert {new.fail_area_z, new.fail_line_x, new.fail_line_y, new.fail_line_z} == {Failure.NONE}


def test_all_values_can_be_given_at_once():
    full = Foundation(
        "Raft",
        number=3,
        area=(1, 2, 3),
        line=(4, 5, 6),
        rotation=(7, 8, 9),
        fail_area_z=Failure.TENSION,
        fail_line_x=Failure.COMPRESSION,
        fail_line_y=-1,
        fail_line_z=5,
        fail_possible=True,
        factor_area=0.25,
        factor_line=0.5,
        generated=True,
    )

    assert (full.name, full.number, full.changed) == ("Raft", 3, False)
    assert (full.area, full.line, full.rotation) == ((1, 2, 3), (4, 5, 6), (7, 8, 9))
    assert [full.fail_area_z, full.fail_line_x, full.fail_line_y, full.fail_line_z] == [-1, 1, -1, 5]
    assert (full.factor_area, full.factor_line) == (0.25, 0.5)
    assert full.fail_possible and full.generated


def test_only_the_name_is_given_by_position():
    with pytest.raises(TypeError):
        Foundation("Raft", 3)


@pytest.mark.parametrize("name, value", [("area", (1, 1, 1)), ("factor_line", 2.0), ("fail_line_z", 1), ("fail_possible", True)])
def test_a_change_marks_as_changed(name, value):
    foundation = Foundation()

    setattr(foundation, name, value)

    assert foundation.changed


@pytest.mark.parametrize("name, value", [("name", "Raft"), ("number", 3), ("generated", True), ("factor_area", 0.0)])
def test_identity_and_equal_values_do_not_mark(name, value):
    foundation = Foundation()

    setattr(foundation, name, value)

    assert not foundation.changed


def test_stored_modes_act_while_failing_is_possible():
    foundation = Foundation(fail_area_z=-1, fail_line_y=1)
    before = foundation.failure_area(2), foundation.failure_line(1)

    foundation.fail_possible = True

    assert before == (Failure.NONE, Failure.NONE)
    assert (foundation.failure_area(2), foundation.failure_line(1)) == (Failure.TENSION, Failure.COMPRESSION)


@pytest.mark.parametrize("direction", [-1, 0, 1, 3, 2**31 - 1])
def test_an_area_fails_in_z_only(direction):
    foundation = Foundation(fail_possible=True)

    foundation.set_failure_area(direction, Failure.TENSION)

    assert foundation.fail_area_z is Failure.NONE and foundation.failure_area(direction) is Failure.NONE


def test_modes_are_set_by_direction():
    foundation = Foundation()

    foundation.set_failure_area(2, 1)
    for direction, mode in enumerate([-1, 1, -1]):
        foundation.set_failure_line(direction, mode)

    assert foundation == Foundation(fail_area_z=1, fail_line_x=-1, fail_line_y=1, fail_line_z=-1)


def test_values_are_read_by_direction():
    foundation = Foundation(area=(1, 2, 3), line=(4, 5, 6), rotation=(7, 8, 9))

    assert [foundation.value_area(i) for i in range(-1, 4)] == [0, 1, 2, 3, 0]
    assert [foundation.value_line(i) for i in range(-1, 5)] == [0, 4, 5, 6, 7, 0]


@pytest.mark.parametrize("method", ["value_area", "value_line", "failure_area", "failure_line"])
def test_a_direction_is_an_int(method):
    with pytest.raises(TypeError, match="^direction: an int is wanted, not float$"):
        getattr(Foundation(), method)(1.0)


@pytest.mark.parametrize(
    "values, expected",
    [
        ({}, (False, False, False)),
        ({"area": (0, 0, 0)}, (False, False, False)),
        ({"area": (0, 0, 1)}, (True, True, False)),
        ({"line": (0, 0, 1)}, (True, False, True)),
        ({"rotation": (1, 0, 0)}, (True, False, True)),
    ],
)
def test_it_tells_whether_it_has_values(values, expected):
    foundation = Foundation(**values)

    assert (foundation.has_values, foundation.has_area_values, foundation.has_line_values) == expected


def test_it_releases_with_a_stored_mode():
    assert Foundation(fail_line_x=1).releases and not Foundation(fail_possible=True).releases


def test_assign_keeps_what_the_other_lacks():
    foundation = Foundation("Raft", number=3, area=(1, 2, 3), factor_area=1)

    foundation.assign(Foundation("other", line=(4, 5, 6), factor_area=2))

    assert (foundation.name, foundation.number, foundation.area, foundation.line) == ("Raft", 3, (1, 2, 3), (4, 5, 6))
    assert foundation.factor_area == 2


def test_values_are_added():
    foundation = Foundation(area=(1, 2, 3))

    foundation.add_values(Foundation(area=(10, 20, 30), line=(4, 5, 6)))

    assert (foundation.area, foundation.line, foundation.rotation) == ((11, 22, 33), (4, 5, 6), None)


def test_values_are_added_to_themselves():
    foundation = Foundation(area=(1, 2, 3))

    foundation.add_values(foundation)

    assert foundation.area == (2, 4, 6)


def test_values_are_scaled():
    foundation = Foundation(area=(1, 2, 3), rotation=(4, 0, 0))

    foundation.scale_values(0.5)

    assert (foundation.area, foundation.line, foundation.rotation) == ((0.5, 1, 1.5), None, (2, 0, 0))


@pytest.mark.parametrize("t, name, area", [(0, "a", (0, 0, 2)), (0.25, "", (0, 0, 3)), (1, "b", (0, 0, 6)), (2, "", (0, 0, 10))])
def test_values_are_interpolated(t, name, area):
    between = Foundation(number=9)

    between.interpolate(Foundation("a", area=(0, 0, 2)), Foundation("b", area=(0, 0, 6)), t)

    assert (between.name, between.number, between.area) == (name, 9, area)


def test_area_and_line_are_cleared_apart():
    foundation = Foundation(area=(1, 2, 3), line=(4, 5, 6), rotation=(7, 0, 0), factor_area=1, factor_line=2)

    foundation.clear_area_values()
    without_area = (foundation.area, foundation.factor_area, foundation.line)
    foundation.clear_line_values()

    assert without_area == (None, 0.0, (4, 5, 6))
    assert (foundation.line, foundation.rotation, foundation.factor_line, foundation.changed) == (None, None, 0.0, False)


@pytest.mark.parametrize("method", ["add_values", "assign"])
@pytest.mark.parametrize("other", [None, 1, "Raft", (1, 2, 3)])
def test_another_foundation_is_asked_for(method, other):
    with pytest.raises(TypeError, match="^other: a Foundation is wanted, not "):
        getattr(Foundation(), method)(other)


@pytest.mark.parametrize(
    "failure, value, expected",
    [(-1, -5.0, -1e-5), (-1, 5.0, 5.0), (1, 5.0, 1e-5), (1, -5.0, -5.0), (0, 5.0, 5.0), (7, -5.0, -5.0), (1, 0.0, 0.0)],
)
def test_a_value_is_modified(failure, value, expected):
    assert kv.modify_value(failure, value) == expected
    assert Foundation.modify_value(failure, value) == expected


@pytest.mark.parametrize("layout", ["C", "F"])
def test_an_array_is_modified_as_a_copy(layout):
    values = numpy.array([[1.0, -2.0, math.inf], [0.0, 3.0, -4.0]], order=layout)

    modified = kv.modify_value(Failure.TENSION, values)

    assert modified.tolist() == [[1.0, -1e-5, math.inf], [0.0, 3.0, -1e-5]]
    assert values[0, 1] == -2.0


def test_every_other_element_of_an_array_is_modified():
    assert kv.modify_value(1, numpy.arange(6)[::2]).tolist() == [0.0, 1e-5, 1e-5]


@pytest.mark.parametrize("value", ["5", None, True, numpy.array(["5"]), numpy.array([True]), numpy.array([1j])])
def test_what_is_no_number_is_not_modified(value):
    with pytest.raises(TypeError, match="^value: "):
        kv.modify_value(1, value)


def test_equality_looks_at_the_values():
    assert Foundation("a", number=1, area=(1, 2, 3)) == Foundation("b", number=2, area=(1, 2, 3), generated=True)
    assert Foundation(area=(1, 2, 3)) != Foundation(area=(1, 2, 4))


@pytest.mark.parametrize("other", [None, 0, "Foundation()", ()])
def test_a_foundation_equals_nothing_else(other):
    assert not Foundation() == other and Foundation() != other


def test_a_foundation_has_no_hash():
    with pytest.raises(TypeError, match="unhashable"):
        hash(Foundation())


@pytest.mark.parametrize(
    "foundation, text",
    [
        (Foundation(), "Foundation()"),
        (Foundation("Raft", number=3, area=(1, 2, 3)), "Foundation(number=3, name='Raft', area=(1.0, 2.0, 3.0))"),
        (Foundation('a"b\n'), "Foundation(name='a\"b\\n')"),
        (Foundation(fail_line_z=-1, fail_line_x=9), "Foundation(fail_line_x=9, fail_line_z=Failure.TENSION)"),
        (Foundation(factor_area=-0.0, fail_possible=True), "Foundation(fail_possible=True, factor_area=-0.0)"),
        (Foundation(line=(math.nan, -math.inf, 0)), "Foundation(line=(float('nan'), float('-inf'), 0.0))"),
    ],
)
def test_repr_tells_what_makes_it_again(foundation, text):
    assert repr(foundation) == text
    assert repr(eval(text, vars(kv))) == text


def test_repr_names_the_subclass():
    class Pile(Foundation):
        pass

    assert repr(Pile("P1")) == "Pile(name='P1')"


def test_a_second_init_sets_everything_anew():
    foundation = Foundation("Raft", number=3, area=(1, 2, 3), factor_line=2, fail_line_x=1)

    foundation.__init__("other")

    assert repr(foundation) == "Foundation(name='other')"


def test_one_without_init_is_whole():
    raw = Foundation.__new__(Foundation)

    assert repr(raw) == "Foundation()"
    assert kv.FoundationManager([raw])[0] is raw


def test_a_subclass_need_not_call_init():
    class Pile(Foundation):
        def __init__(self):
            self.length = 12.0

    assert repr(Pile()) == "Pile()"


def test_a_class_cannot_be_both_foundation_and_manager():
    with pytest.raises(TypeError, match="lay-out conflict"):

        class Both(Foundation, kv.FoundationManager):
            pass
