"""What a manager does, see include/found/foundation_manager.h."""

import collections.abc
import itertools
import re

import pytest

import kvfound as kv
from kvfound import Foundation, FoundationManager


def named(*names):
    return FoundationManager(Foundation(name, number=i + 1) for i, name in enumerate(names))


def names(foundations):
    return [foundation.name for foundation in foundations]


def test_a_manager_is_a_sequence():
    manager = named("a", "b", "c")

    assert len(manager) == 3 and names(manager) == ["a", "b", "c"]
    assert (manager[0].name, manager[-1].name) == ("a", "c")
    assert names(manager[::-2]) == ["c", "a"] and manager[5:] == []
    assert names(reversed(manager)) == ["c", "b", "a"]
    assert manager.index(manager[1]) == 1


def test_an_empty_manager_is_false():
    assert not FoundationManager() and named("a")


@pytest.mark.parametrize("index", [3, -4, 10**30, -(10**30)])
def test_an_index_out_of_range_raises(index):
    with pytest.raises(IndexError):
        named("a", "b", "c")[index]


@pytest.mark.parametrize("index", ["a", 1.0, None])
def test_other_indices_raise(index):
    with pytest.raises(TypeError, match="^index: an int or a slice is wanted"):
        named("a")[index]


def test_membership_is_identity():
    manager = named("a")

    assert manager[0] in manager
    assert Foundation("a", number=1) not in manager and named("a")[0] not in manager and "a" not in manager


def test_index_of_another_raises():
    with pytest.raises(ValueError, match="not in the manager"):
        named("a").index(Foundation("a"))


@pytest.mark.parametrize("change", [lambda m: m.add(Foundation()), lambda m: m.remove(m[0]), lambda m: m.reset()])
@pytest.mark.parametrize("walk", [iter, reversed])
def test_a_change_ends_an_iteration(change, walk):
    manager = named("a", "b", "c")
    walking = walk(manager)
    next(walking)

    change(manager)

    with pytest.raises(RuntimeError, match="changed during iteration"):
        next(walking)


def test_a_finished_iteration_stays_finished():
    manager = named("a")
    walking = iter(manager)
    list(walking)

    manager.add(Foundation())

    assert list(walking) == []


def test_the_list_of_foundations_may_be_walked_while_the_manager_changes():
    manager = named("a", "b", "c")

    for foundation in manager.foundations:
        manager.remove(foundation)

    assert len(manager) == 0


def test_what_only_the_core_makes_cannot_be_made():
    with pytest.raises(TypeError, match="cannot create"):
        type(iter(FoundationManager()))()


def test_foundations_are_added_all_or_none():
    manager, taken = named("a"), named("x")[0]
    free = Foundation("b")

    with pytest.raises(ValueError, match="a manager has one of these"):
        manager.extend([free, taken])
    with pytest.raises(ValueError, match="given twice"):
        manager.extend([free, free])
    with pytest.raises(TypeError, match="^foundations: a Foundation is wanted, not str$"):
        manager.extend([free, "c"])

    assert names(manager) == ["a"] and free.manager is None


def test_an_iterable_that_raises_adds_nothing():
    manager = named("a")

    def failing():
        yield Foundation("b")
        raise KeyError("mine")

    with pytest.raises(KeyError, match="mine"):
        manager.extend(failing())

    assert names(manager) == ["a"]


def test_an_iterable_may_change_the_manager():
    manager = named("a")

    def changing():
        manager.reset()
        yield Foundation("b")

    manager.extend(changing())

    assert names(manager) == ["b"]


@pytest.mark.parametrize("foundation", [None, "a", 1, FoundationManager()])
def test_only_foundations_are_added(foundation):
    with pytest.raises(TypeError, match="^foundation: a Foundation is wanted, not "):
        FoundationManager().add(foundation)


def test_removing_takes_the_current_one():
    manager = named("a", "b")
    manager.current = manager[0]

    manager.remove(manager[0])

    assert (manager.current, names(manager)) == (None, ["b"])


def test_removing_another_raises():
    with pytest.raises(ValueError, match="not in the manager"):
        named("a").remove(Foundation("a"))


def test_a_removed_one_comes_back_at_the_end():
    manager = named("a", "b")
    first = manager[0]

    manager.remove(first, keep_removed=True)
    between = names(manager), manager.removed, first.manager
    manager.redo(first)

    assert between == (["b"], [first], None) and between[1][0] is first
    assert names(manager) == ["b", "a"] and manager.removed == [] and first.manager is manager


def test_what_waits_for_redo_is_in_the_manager_still():
    manager = named("a")
    first = manager[0]
    manager.remove(first, keep_removed=True)

    with pytest.raises(ValueError, match="has this foundation already"):
        manager.add(first)
    with pytest.raises(ValueError, match="not in the manager"):
        manager.remove(first)
    assert first not in manager


def test_redo_of_another_raises():
    manager = named("a")

    for other in (manager[0], Foundation()):
        with pytest.raises(ValueError, match="not among the removed ones"):
            manager.redo(other)


def test_removed_ones_can_be_forgotten():
    manager = named("a", "b", "c")
    manager.current = manager[2]
    first = manager[0]
    manager.remove(first, keep_removed=True)
    manager.remove(manager[0], keep_removed=True)

    manager.forget_removed()

    assert manager.removed == [] and names(manager) == ["c"] and manager.current is manager[0]
    assert manager.add(first) is first


def test_reset_takes_all_out():
    manager = named("a", "b")
    first = manager.current = manager[0]
    manager.remove(manager[1], keep_removed=True)
    manager.max_value = 5

    manager.reset()

    assert (len(manager), manager.current, first.name, first.manager) == (0, None, "a", None)
    assert names(manager.removed) == ["b"] and manager.max_value == 5


def test_the_first_match_is_found():
    manager = FoundationManager(
        [Foundation("a", number=1), Foundation("a", number=2, area=(1, 1, 1)), Foundation("b", number=2, area=(1, 1, 1))]
    )

    assert manager.find("a") is manager[0] and manager.find(2) is manager[1]
    assert manager.find(Foundation("x", area=(1, 1, 1))) is manager[1]


@pytest.mark.parametrize("key", ["x", "", 9, -1, 0, Foundation(area=(9, 9, 9))])
def test_nothing_is_found_without_a_match(key):
    assert named("a").find(key) is None


@pytest.mark.parametrize("key", [None, 1.0, b"a", True, ("a",)])
def test_other_keys_raise(key):
    with pytest.raises(TypeError):
        named("a").find(key)


def test_give_finds_or_makes_by_name():
    manager = named("a")

    assert manager.give("a") is manager[0]
    assert repr(manager.give("b")) == "Foundation(number=2, name='b')" and len(manager) == 2


def test_give_finds_or_copies_by_value():
    manager = FoundationManager([Foundation("a", number=7, area=(1, 1, 1))])
    pattern = Foundation(area=(1, 1, 1))

    equal = manager.give(pattern)
    copy = manager.give(pattern, find_equal=False)

    assert equal is manager[0] and pattern.manager is None
    assert (copy.name, copy.number, copy == pattern, copy is pattern) == ("Found0008", 8, True, False)


def test_give_copies_one_of_its_own():
    manager = FoundationManager([Foundation("a", number=7, area=(1, 1, 1))])

    copy = manager.give(manager[0], find_equal=False)

    assert (copy.name, copy.number, len(manager)) == ("a", 8, 2)


@pytest.mark.parametrize("start, name", [(0, "Found0003"), (5, "Found0005"), (2**31 - 1, "Found2147483647"), (-5, "Found0003")])
def test_default_names_are_free(start, name):
    manager = named("a", "Found0002")

    assert manager.give_next_name(start) == name


def test_the_current_one_is_in_the_list():
    manager = named("a")

    for other in (Foundation(), named("a")[0]):
        with pytest.raises(ValueError, match="^current: the foundation is not in the manager$"):
            manager.current = other
    manager.current = manager[0]
    manager.current = None

    assert manager.current is None


def test_the_largest_stiffness_is_computed():
    manager = FoundationManager([Foundation(area=(3, 4, 0)), Foundation(line=(float("nan"), 0, 0))])

    assert manager.max_value == 0.0
    assert manager.update_max_value() == 5.0 and manager.max_value == 5.0


def test_all_generated_ones_are_removed():
    manager = FoundationManager(Foundation(str(i), number=i, generated=i % 2 == 1) for i in range(5))

    gone = manager.remove_all_generated()

    assert names(gone) == ["1", "3"]
    assert [(f.name, f.number) for f in manager] == [("0", 1), ("2", 2), ("4", 3)]


def test_repr_tells_how_many():
    class Model(FoundationManager):
        pass

    assert repr(named("a")) == "<FoundationManager of 1 foundation>"
    assert repr(Model()) == "<Model of 0 foundations>"


def test_a_slice_that_changes_the_manager_is_taken_of_what_is_left():
    manager = named("a", "b", "c")

    class Resetting:
        def __index__(self):
            manager.remove(manager[0])
            return 10

    assert names(manager[0 : Resetting()]) == ["b", "c"]


def test_an_index_that_changes_the_manager_is_one_of_what_is_left():
    manager = named("a", "b")

    class Resetting:
        def __index__(self):
            manager.reset()
            return 0

    with pytest.raises(IndexError):
        manager[Resetting()]


def test_thousands_are_handled_in_no_time():
    manager = FoundationManager(Foundation(number=i) for i in range(20_000))
    kept = manager[::2]

    for foundation in itertools.islice(kept, 100):
        manager.remove(foundation, keep_removed=True)
    manager.forget_removed()
    manager.reset()

    assert all(foundation.manager is None for foundation in kept)


def test_a_manager_is_a_sequence_to_python():
    manager = named("a", "b", "a")

    assert isinstance(manager, collections.abc.Sequence)
    assert [manager.count(one) for one in (manager[0], Foundation("a"), "a")] == [1, 0, 0]
    assert manager.index(manager[2], 1) == manager.index(manager[2], -1, 10**30) == 2
    for bounds in ((0, 2), (3,), (None, -1)):
        with pytest.raises(ValueError, match="^the foundation is not in the manager$"):
            manager.index(manager[2], *bounds)
    with pytest.raises(ValueError, match="^the foundation is not in the manager$"):
        manager.index("a")


def test_an_int_that_can_be_no_number_is_not_found():
    assert [named("a").find(number) for number in (10**30, -(10**30), 2**31, -(2**31) - 1)] == [None] * 4
    with pytest.raises(TypeError):
        named("a").find(True)


@pytest.mark.parametrize(
    "call, sentence",
    [
        (lambda: Foundation(nmae="a"), "Foundation() got an unexpected keyword argument 'nmae'"),
        (lambda: kv.Model().new("a", nmae="b"), "Foundation() got an unexpected keyword argument 'nmae'"),
        (lambda: Foundation("a", 3), "Foundation() takes 1 positional argument but 2 were given"),
        (lambda: Foundation("a", name="b"), "Foundation() got multiple values for argument 'name'"),
        (lambda: FoundationManager(foundation=[]), "FoundationManager() got an unexpected keyword argument 'foundation'"),
        (lambda: FoundationManager([], []), "FoundationManager() takes 1 positional argument but 2 were given"),
    ],
)
def test_arguments_that_do_not_fit_are_told_as_in_python(call, sentence):
    with pytest.raises(TypeError, match=f"^{re.escape(sentence)}$"):
        call()


def test_odd_keywords_raise():
    for keyword in ("\ud800", "\udcff", ""):
        with pytest.raises((TypeError, ValueError)):
            Foundation(**{keyword: 1})


def test_a_subclass_may_take_other_arguments():
    class Pile(Foundation):
        def __init__(self, length, *, head):
            super().__init__(f"Pile {length}")
            self.head = head

    assert (Pile(12, head=3).name, Pile(12, head=3).head) == ("Pile 12", 3)


def test_messages_name_what_is_public():
    for made in (Foundation(), FoundationManager()):
        with pytest.raises(AttributeError, match=f"^'kvfound.{type(made).__name__}' object has no attribute 'nmae'"):
            made.nmae
    with pytest.raises(TypeError, match="unlike kvfound.Foundation$"):
        FoundationManager().add_user(Foundation())
