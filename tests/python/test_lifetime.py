"""A Foundation object is never invalid, whatever happens to its manager."""

import gc
import io
import os
import pathlib
import pickle
import resource
import subprocess
import sys
import threading
import weakref

import pytest

import kvfound as kv
from kvfound import Foundation, FoundationManager


def make(*names):
    return FoundationManager(Foundation(name, number=i + 1, area=(i, 0, 0)) for i, name in enumerate(names))


def test_one_object_stands_for_one_foundation():
    manager = FoundationManager()
    raft = manager.add(Foundation("Raft"))

    assert manager[0] is raft and manager.find("Raft") is raft and manager.foundations[0] is raft


def test_a_held_foundation_keeps_its_manager():
    manager = make("a")
    raft = manager[0]
    gone = weakref.ref(manager)
    del manager
    gc.collect()

    assert raft.manager is gone()


def test_a_manager_goes_with_the_last_of_its_foundations():
    manager = make("a", "b")
    raft = manager[0]
    gone = weakref.ref(manager)
    del manager

    del raft

    assert gone() is None


DEPARTURES = {
    "remove": lambda m: m.remove(m[0]),
    "forget": lambda m: (m.remove(m[0], keep_removed=True), m.forget_removed()),
    "reset": lambda m: m.reset(),
    "unused": lambda m: m.remove_all_not_used(),
    "generated": lambda m: m.remove_all_generated(),
    "unused generated": lambda m: m.remove_all_not_used_generated(),
    "read": lambda m: m.read_xml(b"<SMOD/>"),
}


@pytest.mark.parametrize("leave", DEPARTURES.values(), ids=DEPARTURES)
def test_a_foundation_that_leaves_lives_on(leave):
    manager = FoundationManager([Foundation("Raft", number=3, area=(1, 2, 3), generated=True)])
    raft = manager[0]

    leave(manager)
    gone = weakref.ref(manager)
    del manager

    assert repr(raft) == "Foundation(number=3, name='Raft', area=(1.0, 2.0, 3.0), generated=True)"
    assert raft.manager is None and gone() is None
    raft.area = (4, 5, 6)
    assert FoundationManager([raft])[0].area == (4, 5, 6)


@pytest.mark.parametrize("leave", DEPARTURES.values(), ids=DEPARTURES)
def test_what_leaves_and_is_not_held_is_let_go(leave):
    def count():
        return sum(isinstance(one, Foundation) for one in gc.get_objects())

    manager = FoundationManager(Foundation(generated=True) for _ in range(10))
    before = count()

    leave(manager)

    assert count() == before


def test_adding_twice_raises():
    manager = make("a")

    with pytest.raises(ValueError, match="has this foundation already"):
        manager.add(manager[0])


def test_adding_to_another_manager_raises():
    manager, other = make("a"), FoundationManager()

    with pytest.raises(ValueError, match="take it out there first"):
        other.add(manager[0])


def test_reference_counts_stay():
    manager = make("a", "b")
    raft = manager[0]
    manager.add_user(lambda f: f.name == "a")
    before = sys.getrefcount(manager), sys.getrefcount(raft), sys.getrefcount(None) // 1000

    for _ in range(1000):
        manager[0], manager.foundations, manager.find("a"), manager.number_of_used, raft.manager
        manager.remove(raft)
        manager.add(raft)
        manager.remove(raft, keep_removed=True)
        manager.redo(raft)
        with pytest.raises(ValueError):
            manager.add(raft)
        repr(raft), raft.area, raft.fail_area_z, raft == manager[1]
        manager.current = manager.current
        list(manager), manager[:], reversed(manager)

    assert (sys.getrefcount(manager), sys.getrefcount(raft), sys.getrefcount(None) // 1000) == before


@pytest.mark.skipif("PYTHONMALLOC" in os.environ, reason="a sanitizer keeps what is freed")
def test_memory_does_not_grow():
    document = b"<SMOD><FOUNDATIONS>" + b"<FOUND NAME='a' FZAREA='1'/>" * 50 + b"</FOUNDATIONS></SMOD>"
    beddings = b"<Beddings>" + b"<SurfaceBedding Number='7' Name='a'/><X/>" * 50 + b"</Beddings>"

    class Raising(kv.ReadMessenger):
        def on_read_finished(self, count):
            raise KeyError("mine")

    def work(times):
        for _ in range(times):
            manager = FoundationManager(Pile("p") for _ in range(10))
            manager.add_user(lambda f, held=manager[0]: f is held)
            manager.read_xml(document)
            with pytest.raises(KeyError):
                manager.read_exchange(beddings, messenger=Raising())
            manager.read_exchange(beddings)
            held = manager.foundations
            manager.remove(held[0], keep_removed=True)
            manager.give("new"), manager.__copy__(), repr(held[1])
            manager.remove_all_not_used()
            manager.write_xml(io.BytesIO())
        gc.collect()
        return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss

    work(100)
    before = work(100)

    # In kilobytes: a turn makes more than a hundred foundations, of more than a hundred bytes each.
    assert work(300) - before < 300


class Deleting:
    """A number whose conversion runs code."""

    def __init__(self, code):
        self.code = code

    def __float__(self):
        self.code()
        return 7.0

    def __index__(self):
        self.code()
        return 1


@pytest.mark.parametrize("name", ["number", "fail_area_z", "fail_line_x", "factor_area", "factor_line", "fail_possible", "generated", "changed"])
def test_a_conversion_may_delete_the_foundation_that_it_is_for(name):
    manager = make("a")
    raft = manager[0]

    def delete():
        manager.reset()
        gc.collect()

    setattr(raft, name, Deleting(delete))

    assert getattr(raft, name) == (7.0 if name.startswith("factor") else 1) and raft.manager is None


@pytest.mark.parametrize("name", ["area", "line", "rotation"])
def test_a_component_may_delete_the_foundation_that_it_is_for(name):
    manager = make("a")

    setattr(manager[0], name, (1, Deleting(manager.reset), 2))

    assert len(manager) == 0


@pytest.mark.parametrize(
    "call",
    [
        lambda m, n: m[0].scale_values(n),
        lambda m, n: m[0].interpolate(m[0], m[1], n),
        lambda m, n: m[0].set_failure_area(n, 1),
        lambda m, n: m[0].set_failure_line(1, n),
        lambda m, n: m[0].value_line(n),
        lambda m, n: m.find(n),
        lambda m, n: m.give_next_name(n),
        lambda m, n: m.remove(m[0], keep_removed=n),
        lambda m, n: m.give("a", find_equal=n),
        lambda m, n: m.give(m[0], find_equal=n),
        lambda m, n: setattr(m, "max_value", n),
        lambda m, n: m[n],
        lambda m, n: m[n:],
        lambda m, n: kv.modify_value(n, 1.0),
    ],
)
def test_a_conversion_may_empty_the_manager(call):
    manager = make("a", "b")

    try:
        call(manager, Deleting(manager.reset))
    except (IndexError, ValueError):
        pass

    assert [f.name for f in manager] in ([], ["a"], ["Found0001"])


def test_a_collection_may_empty_the_manager():
    manager = make(*"abcdefgh")
    done = []

    class Trap:
        def __init__(self):
            self.me = self

        def __del__(self):
            done.append(len(manager))
            manager.reset()

    thresholds = gc.get_threshold()
    try:
        for call in (lambda: manager[0], lambda: manager.foundations, lambda: list(manager), lambda: manager.find("a"), lambda: manager[2:5], lambda: manager.give("a")):
            manager.reset()
            manager.extend(Foundation(letter) for letter in "abcdefgh")
            Trap()
            gc.set_threshold(1)
            try:
                call()
            except (IndexError, RuntimeError):
                pass
            gc.set_threshold(*thresholds)
            gc.collect()
            [repr(f) for f in manager]
    finally:
        gc.set_threshold(*thresholds)

    assert len(done) == 6


@pytest.mark.parametrize("count", [3, 2000])
def test_listing_ends_although_every_collection_adds_some(count):
    model = kv.Model()
    manager = model.foundations

    def add(phase, info):
        if phase == "stop":
            for _ in range(count):
                manager.add(Foundation("late"))

    thresholds = gc.get_threshold()
    refusals = []
    gc.callbacks.append(add)
    try:
        for call in (lambda: manager.foundations, lambda: manager[:], lambda: model.select(name="*")):
            manager.reset()
            manager.extend(Foundation(letter) for letter in "abcdefgh")
            gc.set_threshold(1, 1, 1)
            try:
                call()
            except RuntimeError as error:
                gc.set_threshold(*thresholds)
                refusals.append(str(error))
    finally:
        gc.set_threshold(*thresholds)
        gc.callbacks.remove(add)

    assert refusals == ["the manager was changed again and again while its foundations were listed"] * 3
    assert len(manager.foundations) == len(manager) > 8


class Pile(Foundation):
    """Keeps more than the values."""


def test_an_object_of_a_subclass_stays_with_its_manager():
    manager = FoundationManager([Pile("p")])
    manager[0].length = 12
    gc.collect()

    assert type(manager[0]) is Pile and manager[0].length == 12
    assert type(manager.remove_all_not_used()[0]) is Pile


def test_an_object_of_a_subclass_ends_behind_its_departure():
    manager = FoundationManager([Pile("p")])
    gone = weakref.ref(manager[0])

    manager.remove(manager[0])

    assert gone() is None


def test_circles_through_objects_of_subclasses_are_collected():
    manager = FoundationManager([Pile("p"), Pile("q")])
    manager.remove(manager[1], keep_removed=True)
    gone = [weakref.ref(manager), weakref.ref(manager[0]), weakref.ref(manager.removed[0])]
    del manager
    gc.collect()

    assert [reference() for reference in gone] == [None] * 3


@pytest.mark.parametrize("leave", DEPARTURES.values(), ids=DEPARTURES)
def test_the_end_of_an_object_may_use_and_change_the_manager(leave):
    manager = FoundationManager()
    found = []

    class Last:
        def __del__(self):
            found.extend(manager.foundations)
            manager.reset()
            manager.add(Foundation("late"))

    manager.add(Pile("p", generated=True)).last = Last()
    manager.add(Foundation("q", generated=True))

    leave(manager)
    gc.collect()

    assert [f.name for f in manager] == ["late"] and {f.name for f in found} <= {"q"}


def test_an_object_that_comes_back_from_its_end_is_the_same():
    manager = FoundationManager()
    kept = []

    class Returning(Foundation):
        def __del__(self):
            kept.append(manager.add(self))

    manager.remove(manager.add(Returning("p")))

    assert manager[0] is kept[0] and type(kept[0]) is Returning


def test_a_collection_may_see_an_object_that_is_being_made():
    thresholds = gc.get_threshold()
    gc.set_threshold(1)
    try:
        for _ in range(100):
            for base in (Foundation, FoundationManager):
                made = type("Made", (base,), {})()
                assert made.__class__.__name__ == "Made"
    finally:
        gc.set_threshold(*thresholds)


def test_a_weak_reference_ends_with_the_object():
    manager = make("a")
    called = []
    reference = weakref.ref(manager[0], called.append)

    assert reference() is None and len(called) == 1


def test_circles_through_a_foundation_are_collected():
    pile = Pile()
    pile.me = pile
    gone = weakref.ref(pile)
    del pile
    gc.collect()

    assert gone() is None


def test_threads_share_a_manager():
    manager = FoundationManager()
    errors = []

    def work():
        try:
            for i in range(300):
                raft = manager.add(Foundation("a", number=i, generated=i % 2 == 0))
                manager.foundations, manager.find(i), manager.update_max_value()
                raft.area = (i, 0, 0)
                manager.remove(raft)
                assert raft.area == (i, 0, 0)
                manager.read_exchange(b"<Beddings/>")
        except RuntimeError as error:
            if "cannot be changed while" not in str(error):
                errors.append(error)
        except Exception as error:
            errors.append(error)

    threads = [threading.Thread(target=work) for _ in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()

    assert errors == []


def test_other_threads_run_while_a_document_is_read():
    elements = "".join(f'<FOUND NUMBER="{i}" NAME="n{i}" FZAREA="5"/>' for i in range(100_000))
    document = f"<SMOD><FOUNDATIONS>{elements}</FOUNDATIONS></SMOD>".encode()
    ticks, done = [], threading.Event()

    def tick():
        while not done.wait(0.001):
            ticks.append(1)

    ticking = threading.Thread(target=tick)
    manager = FoundationManager()
    ticking.start()
    before = len(ticks)
    manager.read_xml(document)
    after = len(ticks)
    done.set()
    ticking.join()

    assert len(manager) == 100_000 and after - before >= 2


def run(code):
    package = pathlib.Path(kv.__file__).absolute().parents[1]
    environment = dict(os.environ, PYTHONPATH=str(package))
    return subprocess.run(
        [sys.executable, "-X", "faulthandler", "-c", code],
        capture_output=True,
        text=True,
        timeout=60,
        env=environment,
    )


def test_threads_may_run_while_the_interpreter_ends():
    ended = run(
        "import threading, kvfound as kv\n"
        "m = kv.FoundationManager([kv.Foundation('a')])\n"
        "m.add_user(lambda f: True)\n"
        "def work():\n"
        "    while True:\n"
        "        m.number_of_used, m.foundations, kv.FoundationManager().read_exchange(b'<Beddings/>')\n"
        "for _ in range(3): threading.Thread(target=work, daemon=True).start()\n"
        "import time; time.sleep(0.2)\n"
    )

    assert (ended.returncode, ended.stderr) == (0, "")


@pytest.mark.parametrize("work", ["kv.open(content, form='csv')", "model.to_bytes()", "model.diff(model)", "model.check()"])
def test_threads_may_work_on_a_model_while_the_interpreter_ends(work):
    ended = run(
        "import threading, time, kvfound as kv\n"
        "model = kv.Model('csv')\n"
        "for i in range(1000): model.add(kv.Foundation(f'n{i}', area=(1, 2, i + 1)))\n"
        "content = model.to_bytes()\n"
        "def work():\n"
        f"    while True: {work}\n"
        "for _ in range(3): threading.Thread(target=work, daemon=True).start()\n"
        "time.sleep(0.2)\n"
    )

    assert (ended.returncode, ended.stderr) == (0, "")


DYING = {
    "manager": "manager = make(); manager.add_user(Collecting()); manager = None",
    "manager of a subclass": "manager = Sub(); manager.add_user(Collecting()); manager = None",
    "manager, weakly known": "manager = make(); known = weakref.ref(manager, collect); manager = None",
    "foundation": "keep = manager[0]; known = weakref.ref(keep, collect); del keep",
    "foundation of its own": "f = kv.Foundation(); known = weakref.ref(f, collect); del f",
    "foundation of a subclass": "f = SubFoundation(); f.x = Collecting(); known = weakref.ref(f, collect); del f",
    "manager of the last foundation": "f = make()[0]; f.manager.add_user(Collecting()); del f",
    "iterator": "walk = iter(make()); known = weakref.ref(walk, collect); del walk",
    "manager of an iterator": "n = make(); n.add_user(Collecting()); walk = iter(n); del n; del walk",
    "circle": "n = Sub(); n.me = n; n.add_user(Collecting()); del n; gc.collect()",
}


@pytest.mark.parametrize("dying", DYING.values(), ids=DYING)
def test_the_collector_may_run_while_an_object_dies(dying):
    ended = run(
        "import gc, weakref, kvfound as kv\n"
        "class Sub(kv.FoundationManager): pass\n"
        "class SubFoundation(kv.Foundation): pass\n"
        "def make(): return kv.FoundationManager([kv.Foundation('a'), SubFoundation('b')])\n"
        "def collect(*_):\n"
        "    gc.collect()\n"
        "    return [make() for _ in range(9)], manager and manager.foundations\n"
        "class Collecting:\n"
        "    def __call__(self, f): return True\n"
        "    def __del__(self): collect()\n"
        "for _ in range(30):\n"
        "    manager = make()\n"
        f"    {dying}\n"
        "    [kv.FoundationManager() for _ in range(9)], [kv.Foundation() for _ in range(9)]\n"
        "    manager = None\n"
        "print('ended')\n"
    )

    assert (ended.returncode, ended.stdout, ended.stderr) == (0, "ended\n", "")


def test_two_threads_may_import_numpy_first():
    ended = run(
        "import threading, sys, kvfound as kv\n"
        "assert 'numpy' not in sys.modules\n"
        "start = threading.Barrier(3)\n"
        "def work():\n"
        "    start.wait()\n"
        "    import numpy\n"
        "    assert kv.modify_value(1, numpy.ones(3)).tolist() == [1e-5] * 3\n"
        "    kv.Foundation(area=numpy.ones(3))\n"
        "threads = [threading.Thread(target=work) for _ in range(2)]\n"
        "for t in threads: t.start()\n"
        "start.wait()\n"
        "for t in threads: t.join()\n"
    )

    assert (ended.returncode, ended.stderr) == (0, "")


def test_objects_of_all_kinds_may_outlive_the_interpreter():
    ended = run(
        "import kvfound as kv, builtins\n"
        "m = kv.FoundationManager([kv.Foundation('a')])\n"
        "m.add_user(lambda f: True)\n"
        "builtins.kept = [m, m[0], iter(m), kv.Failure.TENSION, m.remove]\n"
        "class F(kv.Foundation):\n"
        "    def __del__(self): self.name, self.manager\n"
        "f = F(); m.add(f); f.me = f\n"
    )

    assert (ended.returncode, ended.stderr) == (0, "")


def test_an_interruption_ends_many_questions():
    ended = run(
        "import kvfound as kv, signal, threading, os, time\n"
        "signal.signal(signal.SIGINT, signal.default_int_handler)  # a shell may have it ignored\n"
        "m = kv.FoundationManager(kv.Foundation() for _ in range(300_000))\n"
        "m.add_user([].__contains__)\n"
        "threading.Timer(0.05, lambda: os.kill(os.getpid(), signal.SIGINT)).start()\n"
        "try:\n"
        "    while True: m.number_of_used\n"
        "except KeyboardInterrupt: print('interrupted', len(m))\n"
    )

    assert ended.stdout == "interrupted 300000\n", ended.stderr


class Plain(Foundation):
    __slots__ = ()


class Other(FoundationManager):
    __slots__ = ()


@pytest.mark.parametrize(
    "value, wanted",
    [
        (Foundation(), FoundationManager),
        (FoundationManager(), Foundation),
        (Plain(), Other),
        (iter(FoundationManager()), Foundation),
        (kv.Model()._state, type(kv.Model().check()._checked[0])),
    ],
)
def test_no_object_becomes_one_of_another_class(value, wanted):
    with pytest.raises(TypeError, match="layout differs|immutable"):
        value.__class__ = wanted


def test_no_class_gets_another_base():
    with pytest.raises(TypeError, match="layout differs"):
        Plain.__bases__ = (FoundationManager,)


def test_a_foundation_becomes_one_of_a_subclass():
    raft = Foundation("Raft")
    raft.__class__ = Plain

    assert type(raft) is Plain and raft.name == "Raft"


def list_inner():
    """Objects of the core that users do not make."""
    model = kv.Model()
    return [iter(model), model._state, model.check()._checked[0], kv.diff(model, model)._comparison]


@pytest.mark.parametrize("inner", list_inner(), ids=lambda inner: type(inner).__name__)
def test_inner_objects_are_made_by_the_package_only(inner):
    cls = type(inner)
    for make_one in (cls, lambda: cls.__new__(cls)):
        with pytest.raises(TypeError, match="cannot create '.*' instances"):
            make_one()
    for protocol in range(pickle.HIGHEST_PROTOCOL + 1):
        with pytest.raises(TypeError):
            pickle.dumps(inner, protocol)


def test_the_base_of_the_classes_cannot_be_made():
    base = Foundation.__base__
    for cls in (base, type("Derived", (base,), {})):
        with pytest.raises(TypeError, match="cannot create '.*' instances"):
            cls()


@pytest.mark.parametrize("where", ["", "import kvfound as kv"], ids=["first", "again"])
def test_another_interpreter_is_refused(where):
    ended = run(
        f"{where}\n"
        "import _xxsubinterpreters as interpreters\n"
        "for _ in range(2):\n"
        "    other = interpreters.create()\n"
        "    try: interpreters.run_string(other, 'import kvfound')\n"
        "    except interpreters.RunFailedError as error: print(error)\n"
        "    interpreters.destroy(other)\n"
        "import kvfound as kv\n"
        "try: kv.open(b'')\n"
        "except kv.DocumentError: print(kv.Foundation('a'))\n"
    )

    refused = "<class 'ImportError'>: kvfound works in the main interpreter only\n"
    assert (ended.returncode, ended.stdout, ended.stderr) == (0, 2 * refused + "Foundation(name='a')\n", "")


@pytest.mark.parametrize("cls", map(type, [Foundation(), FoundationManager(), *list_inner()]))
def test_operations_refuse_what_is_none_of_theirs(cls):
    """Also where Python calls them as functions, with any first argument."""
    given = [None, 1, Foundation(), FoundationManager(), *list_inner()]
    for name, operation in vars(cls).items():
        if not callable(operation) or name in ("__new__", "__class__"):
            continue
        for first in given:
            if isinstance(first, cls) or (cls, name) == (type(iter(kv.Model())), "__iter__"):
                continue
            for count in range(3):
                with pytest.raises((TypeError, ValueError, AttributeError)):
                    operation(first, *[None] * count)


@pytest.mark.skipif("asan" in os.environ.get("LD_PRELOAD", ""), reason="the sanitizer needs much memory itself")
@pytest.mark.parametrize("cls", ["kv.Foundation", "Pile"])
@pytest.mark.parametrize("work", ["[cls() for _ in range(10**7)]", "(manager.foundations, [cls() for _ in range(10**7)])"])
def test_memory_may_run_out(cls, work):
    ended = run(
        "import resource, kvfound as kv\n"
        "class Pile(kv.Foundation): pass\n"
        f"cls = {cls}\n"
        "manager = kv.FoundationManager(kv.Foundation() for _ in range(50_000))\n"
        "pages = int(open('/proc/self/statm').read().split()[0])\n"
        "resource.setrlimit(resource.RLIMIT_AS, (pages * resource.getpagesize() + 2**20,) * 2)\n"
        "for _ in range(5):\n"
        f"    try: {work}\n"
        "    except MemoryError: print(len(manager))\n"
    )

    assert (ended.returncode, ended.stdout) == (0, 5 * "50000\n")
