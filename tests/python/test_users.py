"""Users of foundations, written in Python."""

import gc
import re
import traceback
import weakref

import numpy as np
import pytest

import kvfound as kv
from kvfound import Foundation, FoundationManager


class Beam:
    """Uses the foundations that it is given."""

    def __init__(self, *used):
        self.used = list(used)

    def uses_foundation(self, foundation):
        return any(foundation is used for used in self.used)


class Answering:
    """Answers always the same."""

    def __init__(self, answer):
        self.answer = answer

    def uses_foundation(self, foundation):
        return self.answer


def named(*names):
    return FoundationManager(Foundation(name) for name in names)


def names(foundations):
    return [foundation.name for foundation in foundations]


def test_users_tell_what_is_used():
    manager = named("a", "b", "c")
    manager.add_user(Beam(manager[0]))
    manager.add_user(lambda foundation: foundation.name == "c")

    assert [manager.is_used(f) for f in manager] == [True, False, True] and manager.number_of_used == 2


def test_pruning_takes_out_what_is_not_used():
    manager = named("a", "b", "c")
    held = manager[1]
    manager.add_user(Beam(manager[0]))

    gone = manager.remove_all_not_used()

    assert names(manager) == ["a"] and names(gone) == ["b", "c"] and gone[0] is held and held.manager is None


def test_pruning_of_generated_ones_asks_only_about_those():
    manager = FoundationManager([Foundation("a"), Foundation("b", generated=True), Foundation("c", generated=True)])
    asked = []
    manager.add_user(lambda f: asked.append(f.name) or f.name == "b")

    gone = manager.remove_all_not_used_generated()

    assert asked == ["b", "c"] and names(gone) == ["c"] and [f.number for f in manager] == [1, 2]


def test_the_first_user_that_uses_it_is_the_last_one_asked():
    manager = named("a")
    asked = []
    for answer in (False, True, True):
        manager.add_user(lambda f, answer=answer: asked.append(answer) or answer)

    assert manager.is_used(manager[0]) and asked == [False, True]


def test_one_of_no_manager_can_be_asked_about():
    other = Foundation("other")
    manager = FoundationManager()
    manager.add_user(lambda f: f is other)

    assert manager.is_used(other) and not manager.is_used(Foundation("other"))


@pytest.mark.parametrize("answer, used", [(True, True), (np.True_, True), (np.False_, False), (2, True), (0, False)])
def test_a_user_answers_with_a_bool_or_a_count(answer, used):
    manager = named("a")
    manager.add_user(lambda f: answer)

    assert manager.is_used(manager[0]) is used


@pytest.mark.parametrize("answer", [None, "", "yes", [0], 0.0, np.array([True])])
def test_another_answer_raises_and_nothing_goes(answer):
    model = kv.Model()
    model.foundations.extend([Foundation("a", number=1), Foundation("b", number=2)])
    kind = re.escape(type(answer).__name__)

    with pytest.raises(TypeError, match=f"^a user must return bool, not .*{kind}$"):
        model.prune(used_by=lambda f: answer)
    model.foundations.add_user(Answering(answer))
    for ask in (model.foundations.remove_all_not_used, lambda: model.foundations.is_used(model[1])):
        with pytest.raises(TypeError, match=f"^a user must return bool, not .*{kind}$"):
            ask()

    assert names(model) == ["a", "b"]


@pytest.mark.parametrize("user", [None, 1, "user", object()])
def test_what_cannot_be_asked_is_no_user(user):
    with pytest.raises(TypeError, match=r"^a user is a callable or has uses_foundation\(foundation\)"):
        FoundationManager().add_user(user)


def test_add_user_decorates():
    manager = named("a")

    @manager.add_user
    def uses_all(foundation):
        return True

    assert manager.users == [uses_all] and manager.number_of_used == 1


def test_a_user_registered_twice_is_removed_twice():
    manager, beam = named("a"), Beam()
    manager.add_user(beam)
    manager.add_user(beam)

    manager.remove_user(beam)
    once = list(manager.users)
    manager.remove_user(beam)

    assert once == [beam] and manager.users == []
    with pytest.raises(ValueError, match="no user of the manager"):
        manager.remove_user(beam)


def test_a_bound_method_is_removed_by_an_equal_one():
    manager, beam = named("a"), Beam()
    manager.add_user(beam.uses_foundation)

    manager.remove_user(beam.uses_foundation)

    assert manager.users == []


def test_a_manager_holds_its_users():
    manager = named("a")
    manager.add_user(Beam(manager[0]))
    gc.collect()

    assert manager.number_of_used == 1


def raising(foundation):
    raise KeyError("mine")


@pytest.mark.parametrize(
    "ask", [lambda m: m.is_used(m[0]), lambda m: m.number_of_used, lambda m: m.remove_all_not_used(), lambda m: m.remove_all_not_used_generated()]
)
def test_what_a_user_raises_arrives_with_its_traceback_and_changes_nothing(ask):
    manager = FoundationManager([Foundation("a", generated=True), Foundation("b", generated=True)])
    before = manager.foundations
    manager.add_user(lambda f: False)
    manager.add_user(raising)

    with pytest.raises(KeyError, match="mine") as caught:
        ask(manager)

    assert traceback.extract_tb(caught.value.__traceback__)[-1].name == "raising"
    assert [id(f) for f in manager] == [id(f) for f in before]
    manager.add(Foundation("c"))


CHANGES = {
    "add": lambda m: m.add(Foundation()),
    "extend": lambda m: m.extend([Foundation()]),
    "remove": lambda m: m.remove(m[0]),
    "keep": lambda m: m.remove(m[0], keep_removed=True),
    "redo": lambda m: m.redo(m.removed[0]),
    "forget": lambda m: m.forget_removed(),
    "reset": lambda m: m.reset(),
    "give": lambda m: m.give("new"),
    "copy": lambda m: m.give(Foundation(area=(7, 7, 7))),
    "generated": lambda m: m.remove_all_generated(),
    "unused": lambda m: m.remove_all_not_used(),
    "add_user": lambda m: m.add_user(len),
    "remove_user": lambda m: m.remove_user(m.users[0]),
    "read_xml": lambda m: m.read_xml(b"<SMOD/>"),
    "read_exchange": lambda m: m.read_exchange(b"<Beddings/>"),
}


@pytest.mark.parametrize("change", CHANGES.values(), ids=CHANGES)
def test_a_user_cannot_change_the_list(change):
    manager = named("a", "b", "c")
    manager.remove(manager[2], keep_removed=True)
    caught = []

    def changing(foundation):
        try:
            change(manager)
        except RuntimeError as error:
            caught.append(str(error))
        return True

    manager.add_user(changing)

    assert manager.number_of_used == 2
    assert len(caught) == 2 and "cannot be changed while" in caught[0]
    assert names(manager) == ["a", "b"] and names(manager.removed) == ["c"] and manager.users == [changing]


def test_a_user_may_change_values():
    manager = named("a")
    manager.add_user(lambda f: setattr(f, "area", (1, 2, 3)) is None)

    manager.is_used(manager[0])

    assert manager[0].area == (1, 2, 3)


def test_a_user_may_ask_in_turn():
    manager = named("a", "b")
    manager.add_user(lambda f: f.name == "a" and manager.find("b") is not None and manager.is_used(manager[1]))

    assert manager.number_of_used == 0


def test_a_user_that_asks_without_end_is_stopped():
    manager = named("a")
    manager.add_user(lambda f: manager.is_used(f))

    with pytest.raises(RecursionError):
        manager.is_used(manager[0])
    manager.add(Foundation())


def test_a_manager_that_uses_itself_is_collected():
    class Model(FoundationManager):
        def uses_foundation(self, foundation):
            return True

    model = Model([Foundation("a")])
    model.add_user(model)
    gone = weakref.ref(model)
    del model
    gc.collect()

    assert gone() is None


def test_a_user_that_holds_a_foundation_of_its_manager_is_collected():
    manager = named("a")
    beam = Beam(manager[0])
    manager.add_user(beam)
    gone = [weakref.ref(manager), weakref.ref(beam)]
    del manager, beam
    gc.collect()

    assert [reference() for reference in gone] == [None, None]


def test_a_user_that_holds_an_iteration_is_collected():
    manager = named("a")
    beam = Beam(iter(manager))
    manager.add_user(beam)
    gone = weakref.ref(beam)
    del manager, beam
    gc.collect()

    assert gone() is None


def test_a_removed_user_is_let_go():
    manager, beam = named("a"), Beam()
    manager.add_user(beam)
    gone = weakref.ref(beam)

    manager.remove_user(beam)
    del beam

    assert gone() is None


def test_a_comparison_may_change_the_users():
    manager = named("a")

    class Changing(Beam):
        def __eq__(self, other):
            if len(manager.users) == 2:
                manager.remove_user(manager.users[0])
                manager.remove_user(manager.users[0])
            return False

    changing = Changing()
    manager.add_user(changing)
    manager.add_user(len)

    with pytest.raises(ValueError, match="no user of the manager"):
        manager.remove_user(Beam())
    assert manager.users == []
