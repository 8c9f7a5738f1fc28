"""Copies and pickles."""

import copy
import pickle

import pytest

import kvfound as kv
from kvfound import Foundation, FoundationManager

PROTOCOLS = range(pickle.HIGHEST_PROTOCOL + 1)
WAYS = [copy.copy, copy.deepcopy] + [lambda x, p=p: pickle.loads(pickle.dumps(x, p)) for p in PROTOCOLS]

FULL = Foundation(
    "R\u00e4ft\x00\n",
    number=3,
    area=(1, 2, 3),
    line=(4, float("inf"), 6),
    rotation=(7, 8, 9),
    fail_area_z=-1,
    fail_line_x=9,
    fail_possible=True,
    factor_area=-0.0,
    factor_line=0.1,
    generated=True,
)


class Pile(Foundation):
    """Keeps more than the values."""

    def __init__(self, length):
        super().__init__("P")
        self.length = length


class Model(FoundationManager):
    """Keeps more than the foundations."""


@pytest.mark.parametrize("way", WAYS)
@pytest.mark.parametrize("changed", [True, False])
def test_a_copy_of_a_foundation_has_everything(way, changed):
    original = copy.copy(FULL)
    original.changed = changed

    made = way(original)

    assert made is not original and repr(made) == repr(FULL) and made.changed == changed


@pytest.mark.parametrize("way", WAYS)
def test_a_copy_is_one_of_its_own(way):
    manager = FoundationManager([Foundation("a", area=(1, 2, 3))])

    made = way(manager[0])
    made.area = None

    assert made.manager is None and manager[0].area == (1, 2, 3)


@pytest.mark.parametrize("way", WAYS)
def test_a_copy_of_a_subclass_keeps_its_attributes(way):
    pile = Pile(12)
    pile.name = "Q"

    made = way(pile)

    assert type(made) is Pile and (made.name, made.length) == ("Q", 12)


@pytest.mark.parametrize("way", WAYS)
def test_a_copy_of_a_manager_has_copies_of_the_foundations(way):
    manager = Model([Foundation("a", number=1), Pile(12), Foundation("c")])
    manager.current = manager[2]
    manager.max_value = 7
    manager.title = "bridge"
    manager.add_user(len)
    manager.remove(manager.add(Foundation()), keep_removed=True)
    pile = manager[1]

    made = way(manager)

    assert type(made) is Model and [repr(f) for f in made] == [repr(f) for f in manager]
    assert not any(copied in manager for copied in made)
    assert made.current is made[2] and made.max_value == 7 and made.title == "bridge"
    assert made.users == [] and made.removed == []
    assert pile.manager is manager


@pytest.mark.parametrize("protocol", PROTOCOLS)
def test_what_is_pickled_together_stays_together(protocol):
    manager = FoundationManager([Foundation("a")])

    raft, made = pickle.loads(pickle.dumps((manager[0], manager), protocol))

    assert made[0] is raft


def test_what_is_copied_together_stays_together():
    manager = FoundationManager([Foundation("a")])

    raft, made = copy.deepcopy((manager[0], manager))

    assert made[0] is raft and raft is not manager[0]


@pytest.mark.parametrize("protocol", PROTOCOLS)
def test_a_foundation_may_refer_to_its_manager(protocol):
    manager = Model([Pile(1)])
    pile = manager[0]
    pile.owner = manager

    made = pickle.loads(pickle.dumps(manager, protocol))

    assert made[0].owner is made


@pytest.mark.parametrize(
    "state", [None, 1, (), ([], None, 0.0), ([], 0, 0.0, None), ([1], None, 0.0, None), ([], None, "x", None), (None, None, 0.0, None)]
)
def test_a_state_that_is_none_is_refused(state):
    manager = FoundationManager()

    with pytest.raises((TypeError, ValueError, IndexError)):
        manager.__setstate__(state)

    assert len(manager) == 0


def test_a_manager_with_foundations_takes_no_state():
    with pytest.raises(ValueError, match="only an empty manager"):
        FoundationManager([Foundation()]).__setstate__(([], None, 0.0, None))


@pytest.mark.parametrize("values", [{"number": 7.5}, {"name": 7}, {"area": (1, 2)}, {"nonsense": 1}])
def test_a_pickle_of_other_values_is_refused(values):
    restore, (cls, _, changed), _ = Foundation().__reduce__()

    with pytest.raises((TypeError, ValueError)):
        restore(cls, values, changed)


def test_what_is_no_class_of_foundations_is_refused():
    restore = Foundation().__reduce__()[0]

    for cls in (int, FoundationManager, object):
        with pytest.raises(TypeError):
            restore(cls, {}, False)


def test_a_pickle_is_read_by_its_public_names():
    assert b"kvfound\nFoundation\n" in pickle.dumps(Foundation(), 0)


def test_models_and_managers_equal_themselves_only(examples):
    model = kv.open(examples / "model.xml")
    other = copy.copy(model)
    assert model == model != other and not model.diff(other)
    assert model.foundations == model.foundations != other.foundations
    assert len({model, other, model.foundations, other.foundations}) == 4


def test_a_manager_is_of_one_model():
    model = kv.Model()
    model.new("A")
    restore, state = model.__reduce__()
    with pytest.raises(ValueError, match="another model"):
        restore(*state)
    both = copy.deepcopy([model, model.foundations, model["A"]])
    assert both[0].foundations is both[1] and both[0]["A"] is both[2]
    assert both[1] is not model.foundations
