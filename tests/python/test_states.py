"""Random sequences of all operations against a simple model: lists and dicts.

KVFOUND_PYTHON_STEPS tells how many steps are taken, about 2,000 when it does not.
"""

import copy
import gc
import io
import os
import pickle

import hypothesis
import pytest
from hypothesis import strategies as st
from hypothesis.stateful import Bundle, RuleBasedStateMachine, consumes, initialize, invariant, rule, run_state_machine_as_test

import kvfound as kv

STEPS_OF_A_RUN = 50
RUNS = max(1, int(os.environ.get("KVFOUND_PYTHON_STEPS", "2000")) // STEPS_OF_A_RUN)

NAMES = st.sampled_from(["", "a", "b", "R\u00e4ft", "Found0001", "Found0003", "a\x00b", "\x01", "\U0001f3d7"])
NUMBERS = st.sampled_from([-1, 0, 1, 2, 3, 7, 2**31 - 1, -(2**31)])
VECTORS = st.one_of(
    st.none(),
    st.tuples(*[st.sampled_from([0.0, -0.0, 1.0, 2.5, -3.0, 1e300, float("inf"), float("nan")])] * 3),
)
FLAGS = st.booleans()
MODES = st.sampled_from([-1, 0, 1, 9])
FACTORS = st.sampled_from([0.0, 0.5, 1.0, float("inf")])
PROPERTIES = {
    "name": NAMES,
    "number": NUMBERS,
    "area": VECTORS,
    "line": VECTORS,
    "rotation": VECTORS,
    "fail_area_z": MODES,
    "fail_line_x": MODES,
    "fail_line_y": MODES,
    "fail_line_z": MODES,
    "fail_possible": FLAGS,
    "factor_area": FACTORS,
    "factor_line": FACTORS,
    "generated": FLAGS,
}
REFUSED = {
    "name": [7, None, b"a", "\ud800"],
    "number": [7.5, float("nan"), True, "1", None, 2**31, 10**30],
    "area": [(1, 2), (1, 2, 3, 4), "123", 7, {1, 2, 3}, (1, None, 2)],
    "fail_line_x": [0.5, "TENSION", None, 2**40],
    "fail_possible": [float("nan"), 0.0, "no", 2, None],
    "factor_area": ["1", None, True, 10**400, 1j],
}


class Pile(kv.Foundation):
    """Keeps more than the values."""


class Twin:
    """What a foundation should be: its values, and the manager that has it."""

    def __init__(self, values):
        self.values = values
        self.manager = None
        self.put_aside = False


class Model:
    """What a manager should be."""

    def __init__(self):
        self.list = []
        self.removed = []
        self.current = None
        self.users = []
        self.max_value = 0.0


def read(foundation):
    return {name: getattr(foundation, name) for name in PROPERTIES}


def key(values):
    """Comparable, also where there are NaNs."""
    plain = {name: int(value) if name.startswith("fail_") else value for name, value in values.items()}
    return {name: repr(value) for name, value in plain.items()}


class Code:
    """A number whose conversion runs code; what that raises stays inside."""

    def __init__(self, code, value):
        self.code = code
        self.value = value

    def __float__(self):
        self.code()
        return float(self.value)

    def __index__(self):
        self.code()
        return int(self.value)


class Mine(Exception):
    """Raised by users and messengers."""


class Managers(RuleBasedStateMachine):
    managers = Bundle("managers")
    foundations = Bundle("foundations")

    def __init__(self):
        super().__init__()
        self.models = {}  # id of manager -> (manager, Model)
        self.twins = {}  # id of foundation -> (foundation, Twin), all of them held

    # What the model knows.

    def model(self, manager):
        return self.models[id(manager)][1]

    def twin(self, foundation):
        return self.twins[id(self.know(foundation))][1]

    def know(self, foundation):
        if id(foundation) not in self.twins:
            self.twins[id(foundation)] = (foundation, Twin(read(foundation)))
        return foundation

    def adopt(self, manager, foundation):
        """The foundation is at the end of the manager's list now."""
        twin = self.twin(self.know(foundation))
        twin.manager = manager
        self.model(manager).list.append(foundation)

    def leave(self, manager, foundations):
        model = self.model(manager)
        for foundation in foundations:
            model.list = [listed for listed in model.list if listed is not foundation]
            self.twin(foundation).manager = None
            if model.current is foundation:
                model.current = None

    def renumber(self, manager):
        for number, foundation in enumerate(self.model(manager).list, 1):
            self.twin(foundation).values["number"] = number

    def used(self, manager, foundation):
        return any(self.answer(user, foundation) for user in self.model(manager).users)

    def answer(self, user, foundation):
        return user.name == self.twin(foundation).values["name"]

    # Rules.

    @initialize(target=managers)
    def begin(self):
        return self.make_manager()

    def make_manager(self):
        manager = kv.FoundationManager()
        self.models[id(manager)] = (manager, Model())
        return manager

    @rule(target=managers)
    def another_manager(self):
        if len(self.models) >= 3:
            return next(iter(self.models.values()))[0]
        return self.make_manager()

    @rule(target=foundations, name=NAMES, number=NUMBERS, area=VECTORS, line=VECTORS, generated=FLAGS, cls=st.sampled_from([kv.Foundation, Pile]))
    def make(self, name, number, area, line, generated, cls):
        return self.know(cls(name, number=number, area=area, line=line, generated=generated))

    @rule(foundation=foundations, what=st.sampled_from(sorted(PROPERTIES)), data=st.data())
    def set(self, foundation, what, data):
        value = data.draw(PROPERTIES[what])
        before = self.twin(foundation).values[what]
        setattr(foundation, what, value)
        # A factor that compares equal to the one that is there is not stored, so that a sign stays.
        self.twin(foundation).values[what] = before if what.startswith("factor") and before == value else value

    @rule(foundation=foundations, what=st.sampled_from(sorted(REFUSED)), data=st.data())
    def set_what_is_refused(self, foundation, what, data):
        with pytest.raises((TypeError, ValueError, OverflowError)):
            setattr(foundation, what, data.draw(st.sampled_from(REFUSED[what])))

    @rule(foundation=foundations, manager=managers, what=st.sampled_from(["factor_area", "number", "area", "fail_possible"]))
    def set_while_the_manager_is_emptied(self, foundation, manager, what):
        def code():
            manager.reset()
            gc.collect(0)

        number = Code(code, 1)
        setattr(foundation, what, (1, number, 1) if what == "area" else number)
        self.twin(foundation).values[what] = {"area": (1.0, 1.0, 1.0), "factor_area": 1.0, "number": 1, "fail_possible": True}[what]
        self.leave(manager, list(self.model(manager).list))

    @rule(foundation=foundations, factor=FACTORS)
    def scale(self, foundation, factor):
        foundation.scale_values(factor)
        values = self.twin(foundation).values
        for what in ("area", "line", "rotation"):
            if values[what] is not None:
                values[what] = tuple(x * factor for x in values[what])

    @rule(foundation=foundations, other=foundations)
    def assign(self, foundation, other):
        foundation.assign(other)
        mine, theirs = self.twin(foundation).values, self.twin(other).values
        for what in theirs:
            if what in ("name", "number") or (what in ("area", "line", "rotation") and theirs[what] is None):
                continue
            if what.startswith("factor") and mine[what] == theirs[what]:
                continue
            mine[what] = theirs[what]

    @rule(foundation=foundations, a=foundations, b=foundations, t=st.sampled_from([0, 0.5, 1, 2]))
    def interpolate(self, foundation, a, b, t):
        foundation.interpolate(a, b, t)
        self.twin(foundation).values = read(foundation)

    @rule(foundation=foundations, other=foundations)
    def add_values(self, foundation, other):
        foundation.add_values(other)
        self.twin(foundation).values = read(foundation)

    @rule(manager=managers, foundation=foundations)
    def add(self, manager, foundation):
        if self.twin(foundation).manager is None and not self.twin(foundation).put_aside:
            assert manager.add(foundation) is foundation
            self.adopt(manager, foundation)
        else:
            with pytest.raises(ValueError):
                manager.add(foundation)

    @rule(manager=managers, foundation=foundations, keep=FLAGS)
    def remove(self, manager, foundation, keep):
        twin = self.twin(foundation)
        if twin.manager is not manager:
            with pytest.raises(ValueError):
                manager.remove(foundation, keep_removed=keep)
            return
        manager.remove(foundation, keep_removed=keep)
        self.leave(manager, [foundation])
        if keep:
            twin.put_aside = True
            self.model(manager).removed.append(foundation)

    @rule(manager=managers, foundation=foundations)
    def redo(self, manager, foundation):
        model = self.model(manager)
        if not any(removed is foundation for removed in model.removed):
            with pytest.raises(ValueError):
                manager.redo(foundation)
            return
        manager.redo(foundation)
        model.removed = [removed for removed in model.removed if removed is not foundation]
        self.twin(foundation).put_aside = False
        self.adopt(manager, foundation)

    @rule(manager=managers)
    def forget_removed(self, manager):
        manager.forget_removed()
        for foundation in self.model(manager).removed:
            self.twin(foundation).put_aside = False
        self.model(manager).removed = []

    @rule(manager=managers)
    def reset(self, manager):
        manager.reset()
        self.leave(manager, list(self.model(manager).list))

    @rule(manager=managers)
    def remove_in_an_iteration(self, manager):
        model = self.model(manager)
        if len(model.list) < 2:
            return
        with pytest.raises(RuntimeError):
            for foundation in manager:
                manager.remove(foundation)
                self.leave(manager, [foundation])

    @rule(manager=managers, pick=st.sampled_from(["all", "unused", "generated"]))
    def prune(self, manager, pick):
        listed = self.model(manager).list
        generated = {id(f) for f in listed if self.twin(f).values["generated"]}
        unused = {id(f) for f in listed if not self.used(manager, f)}
        leaving, take = {
            "all": (generated, manager.remove_all_generated),
            "unused": (unused, manager.remove_all_not_used),
            "generated": (generated & unused, manager.remove_all_not_used_generated),
        }[pick]
        expected = [f for f in listed if id(f) in leaving]
        gone = take()
        assert [id(f) for f in gone] == [id(f) for f in expected]
        self.leave(manager, expected)
        if pick != "unused":
            self.renumber(manager)

    @rule(manager=managers, name=NAMES)
    def add_user(self, manager, name):
        class Uses:
            def __init__(self, name):
                self.name = name

            def uses_foundation(self, foundation):
                return foundation.name == self.name

        user = Uses(name)
        assert manager.add_user(user) is user
        self.model(manager).users.append(user)

    @rule(manager=managers, index=st.integers(0, 3))
    def remove_user(self, manager, index):
        users = self.model(manager).users
        if index < len(users):
            manager.remove_user(users[index])
            del users[index]
        else:
            with pytest.raises(ValueError):
                manager.remove_user(object())

    @rule(manager=managers, call=st.sampled_from(["number_of_used", "remove_all_not_used", "remove_all_not_used_generated"]))
    def ask_a_user_that_raises(self, manager, call):
        def raising(foundation):
            raise Mine

        manager.add_user(raising)
        try:
            asked = [f for f in self.model(manager).list if call != "remove_all_not_used_generated" or self.twin(f).values["generated"]]
            if any(not self.used(manager, f) for f in asked):
                with pytest.raises(Mine):
                    value = getattr(manager, call)
                    value()
            elif call == "remove_all_not_used_generated":
                assert manager.remove_all_not_used_generated() == []
                self.renumber(manager)
        finally:
            manager.remove_user(raising)

    @rule(manager=managers, name=NAMES)
    def ask_a_user_that_changes_the_manager(self, manager, name):
        def changing(foundation):
            for change in (manager.reset, lambda: manager.add(kv.Foundation()), lambda: manager.give("new"), manager.remove_all_not_used, lambda: manager.read_xml(b"<SMOD/>")):
                with pytest.raises(RuntimeError):
                    change()
            if foundation.manager is manager:
                with pytest.raises(RuntimeError):
                    manager.remove(foundation)
            foundation.name = name
            gc.collect(0)
            return False

        manager.add_user(changing)
        asked = [f for f in self.model(manager).list if not self.used(manager, f)]
        manager.number_of_used
        manager.remove_user(changing)
        for foundation in asked:
            self.twin(foundation).values["name"] = name

    @rule(manager=managers, foundation=foundations)
    def ask_about_any(self, manager, foundation):
        assert manager.is_used(foundation) == self.used(manager, foundation)

    @rule(manager=managers, name=NAMES)
    def find_by_name(self, manager, name):
        expected = [f for f in self.model(manager).list if self.twin(f).values["name"] == name]
        assert manager.find(name) is (expected[0] if expected else None)

    @rule(manager=managers, number=NUMBERS)
    def find_by_number(self, manager, number):
        expected = [f for f in self.model(manager).list if self.twin(f).values["number"] == number]
        assert manager.find(number) is (expected[0] if expected else None)

    @rule(target=foundations, manager=managers, name=NAMES)
    def give_by_name(self, manager, name):
        listed = self.model(manager).list
        found = [f for f in listed if self.twin(f).values["name"] == name]
        highest = max([0] + [self.twin(f).values["number"] for f in listed])
        given = manager.give(name)
        if found:
            assert given is found[0]
        else:
            assert (given.name, given.number) == (name, min(highest + 1, 2**31 - 1))
            self.adopt(manager, given)
        return given

    @rule(target=foundations, manager=managers, pattern=foundations, equal=FLAGS)
    def give_by_value(self, manager, pattern, equal):
        count = len(self.model(manager).list)
        found = manager.find(pattern)
        given = manager.give(pattern, find_equal=equal)
        if equal and found is not None:
            assert given is found
        else:
            assert len(manager) == count + 1 and given is manager[-1]
            self.adopt(manager, given)
        return given

    @rule(manager=managers, foundation=foundations)
    def set_current(self, manager, foundation):
        if self.twin(foundation).manager is manager:
            manager.current = foundation
            self.model(manager).current = foundation
        else:
            with pytest.raises(ValueError):
                manager.current = foundation

    @rule(manager=managers)
    def update_max_value(self, manager):
        self.model(manager).max_value = manager.update_max_value()

    @rule(target=foundations, foundation=foundations, way=st.sampled_from(["copy", "deepcopy", 0, 1, 2, 5]))
    def copy_foundation(self, foundation, way):
        made = self.duplicate(foundation, way)
        assert key(read(made)) == key(read(foundation)) and type(made) is type(foundation)
        return self.know(made)

    @rule(manager=managers, way=st.sampled_from(["copy", "deepcopy", 0, 1, 2, 5]))
    def copy_manager(self, manager, way):
        made = self.duplicate(manager, way)
        assert [key(read(f)) for f in made] == [key(read(f)) for f in manager]
        assert (made.current is None) == (manager.current is None)

    def duplicate(self, thing, way):
        if isinstance(way, int):
            return pickle.loads(pickle.dumps(thing, way))
        return getattr(copy, way)(thing)

    @rule(manager=managers, target_form=st.sampled_from(["write_xml", "write_exchange", "write_kvml"]))
    def write(self, manager, target_form):
        file = io.BytesIO()
        names = [self.twin(f).values["name"] for f in self.model(manager).list]
        try:
            getattr(manager, target_form)(file)
        except kv.DocumentError:
            assert any(name in ("a\x00b", "\x01") for name in names) and file.getvalue() == b""

    @rule(manager=managers, form=st.sampled_from(["read_xml", "read_exchange"]), tear=st.integers(0, 40))
    def read_again(self, manager, form, tear):
        document = (
            b"<SMOD><FOUNDATIONS CURRENT='a'><FOUND NUMBER='1' NAME='a'/><FOUND/></FOUNDATIONS></SMOD>"
            if form == "read_xml"
            else b"<Beddings><SurfaceBedding Number='7' Name='a'/><CurveBedding Number='9' Name='c'/><X/></Beddings>"
        )
        document = document[: len(document) - tear]
        before = manager.foundations
        try:
            count = getattr(manager, form)(document)
        except kv.DocumentError:
            assert tear > 0
            return
        if form == "read_xml":
            self.leave(manager, list(self.model(manager).list))
            before = []
        assert len(manager) == len(before) + count
        for foundation in manager.foundations[len(before) :]:
            self.adopt(manager, foundation)
        if form == "read_xml":
            self.model(manager).current = manager.find("a")

    @rule(manager=managers)
    def read_with_a_messenger_that_raises(self, manager):
        class Raising(kv.ReadMessenger):
            def on_read_finished(self, count):
                with pytest.raises(RuntimeError):
                    manager.reset()
                raise Mine

        with pytest.raises(Mine):
            manager.read_exchange(b"<Beddings><SurfaceBedding Number='77' Name='m'/></Beddings>", messenger=Raising())

    @rule(foundation=consumes(foundations))
    def let_go(self, foundation):
        """What no manager has may end with this."""
        twin = self.twin(foundation)
        if twin.manager is None and not twin.put_aside:
            del self.twins[id(foundation)]

    @rule()
    def collect(self):
        gc.collect()

    # What holds behind every step.

    @invariant()
    def managers_are_as_they_should(self):
        for manager, model in self.models.values():
            assert [id(f) for f in manager] == [id(f) for f in model.list]
            assert [id(f) for f in manager.removed] == [id(f) for f in model.removed]
            assert manager.current is model.current
            assert manager.users == model.users
            assert manager.max_value == model.max_value

    @invariant()
    def foundations_are_as_they_should(self):
        for foundation, twin in self.twins.values():
            assert key(read(foundation)) == key(twin.values)
            assert foundation.manager is twin.manager
            repr(foundation)


class Unheld(RuleBasedStateMachine):
    """The same without holding any objects, which come and go with every question."""

    def __init__(self):
        super().__init__()
        self.manager = kv.FoundationManager()
        self.names = []

    @rule(name=NAMES)
    def add(self, name):
        self.manager.add(kv.Foundation(name))
        self.names.append(name)

    @rule(index=st.integers(0, 5))
    def remove(self, index):
        if index < len(self.names):
            self.manager.remove(self.manager[index])
            del self.names[index]
        else:
            with pytest.raises(IndexError):
                self.manager[index]

    @rule(index=st.integers(0, 5), name=NAMES)
    def rename(self, index, name):
        if index < len(self.names):
            self.manager[index].name = name
            self.names[index] = name

    @rule(name=NAMES)
    def prune(self, name):
        def uses(foundation):
            gc.collect(0)
            return foundation.name == name

        self.manager.add_user(uses)
        gone = [foundation.name for foundation in self.manager.remove_all_not_used()]
        self.manager.remove_user(uses)
        assert gone == [one for one in self.names if one != name]
        self.names = [one for one in self.names if one == name]

    @rule()
    def collect_at_every_step(self):
        """A collection runs code that removes the first one, while objects are made."""

        class Trap:
            def __init__(self, manager, names):
                self.me, self.manager, self.names = self, manager, names

            def __del__(self):
                if self.names:
                    self.manager.remove(self.manager[0])
                    del self.names[0]

        Trap(self.manager, self.names)
        thresholds = gc.get_threshold()
        gc.set_threshold(1)
        try:
            self.manager.foundations, self.manager[1:3], self.manager.find("a"), self.manager.current
        finally:
            gc.set_threshold(*thresholds)
            gc.collect()

    @rule()
    def read_only_some(self):
        self.manager.read_xml(b"<SMOD><FOUNDATIONS><FOUND NUMBER='1' NAME='a'/></FOUNDATIONS></SMOD>")
        self.names = ["a"]

    @invariant()
    def names_are_as_they_should(self):
        assert [foundation.name for foundation in self.manager] == self.names


@pytest.mark.parametrize("machine", [Managers, Unheld])
def test_no_sequence_of_operations_leads_astray(machine):
    settings = hypothesis.settings(
        max_examples=RUNS if machine is Managers else max(1, RUNS // 4),
        stateful_step_count=STEPS_OF_A_RUN,
        deadline=None,
        database=None,
        suppress_health_check=list(hypothesis.HealthCheck),
    )
    run_state_machine_as_test(machine, settings=settings)
