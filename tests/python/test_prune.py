"""Generated and unused foundations are removed as the program removes them."""

import copy
import gc
import sys
import threading

import pytest

import kvfound as kv


@pytest.fixture
def model():
    model = kv.Model()
    for number, (name, generated) in enumerate(
        [("A", True), ("B", False), ("C", True), ("D", False)], start=1
    ):
        model.new(name, number=number, generated=generated, area=(0, 0, number))
    return model


def tell(model):
    return [(f.number, f.name) for f in model]


def test_generated_ones_go_and_the_others_are_numbered(model):
    held = model["A"]
    removed = model.prune(generated=True)

    assert [f.name for f in removed] == ["A", "C"] and removed[0] is held
    assert held.area == (0, 0, 1) and held.manager is None
    assert tell(model) == [(1, "B"), (2, "D")]


def test_numbers_may_be_kept(model):
    model.prune(generated=True, keep_numbers=True)
    assert tell(model) == [(2, "B"), (4, "D")]


def test_lists_hold_names_numbers_and_foundations(model):
    model.prune(used_by=["A", 3, model["D"]])
    assert tell(model) == [(1, "A"), (3, "C"), (4, "D")]
    model.prune(used_by=[model["D"]])
    assert tell(model) == [(4, "D")]


def test_generated_ones_that_are_used_stay(model):
    model.prune(generated=True, used_by=["C"])
    assert tell(model) == [(1, "B"), (2, "C"), (3, "D")]


def test_users_are_callables_or_objects(model):
    class User:
        def uses_foundation(self, foundation):
            return foundation.number < 3

    model.prune(used_by=User())
    assert tell(model) == [(1, "A"), (2, "B")]
    model.prune(used_by=lambda foundation: foundation.name == "A")
    assert tell(model) == [(1, "A")]
    assert model.foundations.users == []


def test_users_that_were_added_are_asked(model):
    model.foundations.add_user(lambda foundation: foundation.name == "A")
    model.prune(used_by=["B"])
    assert tell(model) == [(1, "A"), (2, "B")]
    model.prune()
    assert tell(model) == [(1, "A")]


def test_a_user_that_raises_changes_nothing(model):
    def user(foundation):
        raise KeyError(foundation.name)

    with pytest.raises(KeyError):
        model.prune(used_by=user)
    with pytest.raises(KeyError):
        model.foundations.add_user(user)
        model.prune(used_by=["A"])
    model.foundations.remove_user(user)
    assert len(model) == 4 and model.foundations.users == []


def test_lists_that_fit_nothing_are_refused(model):
    with pytest.raises(ValueError, match="none of the foundations"):
        model.prune(used_by=["X"])
    with pytest.raises(ValueError, match="none of the foundations"):
        model.prune(used_by=["X"], ignore_missing=True)
    with pytest.raises(ValueError, match='there is no foundation "X"'):
        model.prune(used_by=["A", "X"])
    with pytest.raises(ValueError, match="tell what to prune"):
        model.prune()
    with pytest.raises(TypeError):
        model.prune(used_by="A")
    for none in (["A\nB"], [""], ["3"], [-1], [kv.Foundation("A")]):
        with pytest.raises(ValueError, match="none of the foundations"):
            model.prune(used_by=none)
    for no_number in (3.0, None, b"A"):
        with pytest.raises(TypeError, match="^used_by: a name, a number or a Foundation is wanted"):
            model.prune(used_by=["A", no_number])
    assert len(model) == 4
    model.prune(used_by=["A", "X"], ignore_missing=True)
    assert tell(model) == [(1, "A")]


def test_names_are_no_numbers(model):
    model["A"].name = "4"
    assert [f.number for f in copy.copy(model).prune(used_by=["4"])] == [2, 3, 4]
    assert [f.number for f in model.prune(used_by=[4])] == [1, 2, 3]


def test_foundations_of_another_model_are_missing(model):
    other = copy.copy(model)
    with pytest.raises(ValueError, match="none of the foundations"):
        model.prune(used_by=list(other))
    with pytest.raises(ValueError, match="there is no foundation Foundation"):
        model.prune(used_by=[model["A"], other["B"]])
    assert len(model) == 4
    model.prune(used_by=[model["A"], other["B"]], ignore_missing=True)
    assert tell(model) == [(1, "A")]


def test_an_empty_list_uses_nothing(model):
    assert len(model.prune(used_by=[])) == 4
    assert len(model) == 0


def test_pruned_models_save_what_is_left(tmp_path, examples):
    model = kv.open(examples / "model.xml")
    removed = model.prune(generated=True)
    path = tmp_path / "pruned.xml"
    model.save_as(path)
    del model
    gc.collect()

    assert len(kv.open(path)) == 12 - len(removed) == 9
    assert all(f.generated for f in removed)


def test_the_first_exchange_version_is_numbered_on(examples):
    model = kv.open(examples / "beddings-1.0.xml")
    model.prune(used_by=[2, 5], keep_numbers=True)

    assert [f.number for f in model] == [1, 2]


class Uncomparable:
    def uses_foundation(self, foundation):
        return False

    def __eq__(self, other):
        raise ArithmeticError("compared")


def test_users_are_not_compared(model):
    added = Uncomparable()
    model.foundations.add_user(added)
    removed = model.prune(used_by=lambda foundation: foundation.number == 1)

    assert len(removed) == 3 and tell(model) == [(1, "A")]
    assert [user is added for user in model.foundations.users] == [True]


def test_a_user_of_one_pruning_is_none_of_the_model(model):
    seen = []

    def user(foundation):
        seen.append(model.foundations.users)
        return True

    assert model.prune(used_by=user) == []
    assert seen and not any(seen)
    with pytest.raises(TypeError):
        model.prune(used_by=3)


def test_threads_that_prune_ask_their_own_users():
    switch = sys.getswitchinterval()
    sys.setswitchinterval(1e-6)
    try:
        for _ in range(100):
            prune_in_two_threads()
    finally:
        sys.setswitchinterval(switch)


def prune_in_two_threads():
    model = kv.Model()
    for number in range(1, 7):
        model.new(str(number), number=number)
    kept = ({1, 2, 3}, {3, 4, 5})
    done = []
    both = threading.Barrier(2)

    def prune(keep):
        both.wait()
        try:
            model.prune(used_by=lambda foundation: foundation.number in keep)
            done.append(keep)
        except RuntimeError:  # the other thread was at it
            pass

    threads = [threading.Thread(target=prune, args=(keep,)) for keep in kept]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert done and {f.number for f in model} == set.intersection(*done)
    assert model.foundations.users == []
