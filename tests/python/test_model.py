"""A model is a sequence of foundations that knows its document."""

import copy
import gc
import html.parser
import pickle
import sys
import threading
import weakref

import pytest

import kvfound as kv

MODEL = (
    b'<?xml version="1.0"?>\n<SMOD><FOUNDATIONS CURRENT="B">\n'
    b'<FOUND NUMBER="7" NAME="A" FZAREA="1"/>\n<FOUND NUMBER="2" NAME="B" FZLINE="2"/>\n'
    b'<FOUND NUMBER="9" NAME="B" IsGenerated="1"/>\n</FOUNDATIONS></SMOD>'
)


@pytest.fixture
def model():
    return kv.open(MODEL)


def test_keys_are_names_and_numbers(model):
    assert model["A"] is model[7]
    assert model["B"].number == 2
    assert model.find(9) is model.foundations[2]
    assert model.find("C") is None and model.find(1) is None
    for key in ("C", 1, 10**30, -1):
        assert key not in model
        with pytest.raises(KeyError) as caught:
            model[key]
        assert caught.value.args == (key,)
    for key in (1.5, None, b"A"):
        with pytest.raises(TypeError):
            model[key]


def test_it_is_iterated_and_counted(model):
    assert [f.name for f in model] == ["A", "B", "B"]
    assert len(model) == 3
    assert "A" in model and 7 in model and model[7] in model
    assert "C" not in model and 1 not in model and kv.Foundation("A") not in model
    assert None not in model


def test_the_current_foundation(model):
    assert model.current is model["B"]
    model.current = model["A"]
    assert model.foundations.current is model["A"]
    model.current = None
    assert kv.open(model.to_bytes()).current is None


def test_new_ones_get_a_free_number(model):
    made = model.new("C", area=(1, 2, 3), generated=True)

    assert (made.number, made.name, made.generated) == (10, "C", True)
    assert model["C"] is made and made.manager is model.foundations
    assert model.new("D", number=1).number == 1


@pytest.mark.parametrize("name, number", [("A", 20), ("E", 7)])
def test_new_ones_need_a_name_and_number_of_their_own(model, name, number):
    with pytest.raises(ValueError, match="taken"):
        model.new(name, number=number)
    assert len(model) == 3


def test_added_ones_keep_a_number_and_get_one_otherwise(model):
    assert model.add(kv.Foundation("C")).number == 10
    assert model.add(kv.Foundation("D", number=4)).number == 4
    with pytest.raises(ValueError, match="add a copy"):
        model.add(model[7])
    with pytest.raises(TypeError):
        model.add("E")


def test_removed_ones_live_on(model):
    removed = model.remove("A")

    assert removed.name == "A" and removed.area == (0, 0, 1) and removed.manager is None
    model.remove(removed := model[2])
    model.remove(9)
    assert len(model) == 0
    with pytest.raises(ValueError):
        model.remove(removed)
    with pytest.raises(KeyError):
        model.remove(9)


def test_selections(model):
    def names(*arguments, **options):
        return [f.number for f in model.select(*arguments, **options)]

    assert names() == [7, 2, 9]
    assert names("1-7") == [7, 2]
    assert names(9) == [9]
    assert names([2, 9]) == [2, 9]
    assert names([]) == names(iter(())) == []
    assert names(name="B*") == [2, 9]
    assert names(name="B*", generated=True) == [9]
    assert names(part="line") == [2]
    assert model.select(7)[0] is model[7]
    with pytest.raises(ValueError, match="numbers and ranges"):
        names("x")
    with pytest.raises(ValueError, match="area or line"):
        names(part="x")
    with pytest.raises(TypeError):
        names(name=3)
    with pytest.raises(TypeError, match="^numbers: .* not float$"):
        names([2.7])


def test_what_counts_as_a_number_does_so_everywhere(model):
    class Two:
        def __index__(self):
            return 2

    assert Two() in model and model[Two()] is model.find(Two()) is model[2]
    assert model.select(Two()) == model.select([Two()]) == [model[2]]
    assert 2.0 not in model and None not in model
    with pytest.raises(TypeError, match="^key: a name .* or a number .* is wanted, not slice$"):
        model[1:3]


def test_a_foundation_keeps_its_manager_but_not_the_model():
    model = kv.open(MODEL)
    foundation = model[7]
    gone = weakref.ref(model)
    del model
    gc.collect()

    assert gone() is None
    foundation.area = (1, 2, 3)
    assert foundation.manager[0] is foundation


def test_a_model_in_a_cycle_is_collected():
    model = kv.open(MODEL)
    model.foundations.add_user(lambda foundation, model=model: model is not None)
    gone = weakref.ref(model)
    del model
    gc.collect()

    assert gone() is None


@pytest.mark.parametrize("copied", [copy.copy, copy.deepcopy, lambda m: pickle.loads(pickle.dumps(m))])
def test_copies_have_their_own_foundations_and_save_alike(tmp_path, copied):
    path = tmp_path / "model.xml"
    path.write_bytes(MODEL)
    model = kv.open(path)
    model[7].area = (0, 0, 5)
    model.remove(9)
    model.new("C", line=(1, 1, 1))
    twin = copied(model)

    assert twin.path == model.path and twin.form == model.form
    assert [f.name for f in twin] == ["A", "B", "C"]
    assert twin[7] is not model[7] and twin[7] == model[7]
    assert twin.current is twin["B"]
    assert twin.to_bytes() == model.to_bytes()
    twin["B"].name = "Z"
    assert model.find("Z") is None
    twin.save()
    assert kv.open(path)["Z"].number == 2


def test_copies_of_a_table_keep_units_and_dialect():
    model = kv.open(b"name;areaZ\nA;1.500\n", form="csv", decimal=",".replace(",", "."))
    model.units = ("kN", "m")
    twin = pickle.loads(pickle.dumps(model))

    assert twin.units == ("kN", "m")
    assert twin["A"].area == (0, 0, 1.5)
    assert twin.to_bytes() == model.to_bytes()


def test_a_state_that_cannot_be_is_refused(model):
    restore, (cls, foundations, state) = model.__reduce__()
    first = state[7][0]
    listings = [(state[7], [0, 0, 1]), (state[7], [0, 1, 9]), (state[7], [0]), ([first, first], [0, 1])]
    for listed, origins in listings:
        broken = (*state[:7], listed, origins, state[9])
        with pytest.raises(ValueError, match="no state of a model"):
            restore(*copy.deepcopy((cls, foundations, broken)))


@pytest.mark.parametrize("copied", [copy.deepcopy, lambda value: pickle.loads(pickle.dumps(value))])
def test_a_model_may_change_while_it_is_copied(model, copied):
    """As another thread does between its state and its foundations."""
    restore, arguments = model.__reduce__()
    model.remove(model.foundations[0])
    model.new("Late", area=(1, 2, 3))
    twin = restore(*copied(arguments))

    assert twin.to_bytes() == model.to_bytes()


def test_units_are_converted_exactly():
    model = kv.open(b"#units,kN,m\nnumber,name,areaZ,lineX,lineRotationX\n1,A,1500,2,3\n", form="csv")
    model.convert_units(("kN", "m"), ("N", "mm"))

    assert model.units == ("N", "mm")
    assert model[1].area[2] == 0.0015
    assert model[1].line[0] == 0.002
    assert model[1].rotation[0] == 3000
    assert model.to_bytes().startswith(b"#units,N,mm\n")
    with pytest.raises(ValueError, match="the units are N and mm"):
        model.convert_units(("kN", "m"), ("N", "mm"))
    with pytest.raises(ValueError, match="there is no unit"):
        model.convert_units(("N", "mm"), ("N", "parsec"))
    for no_pair in ("kN", ("kN",), ("kN", "m", "s"), None, 5):
        with pytest.raises(TypeError, match="^units: a tuple of force and length is wanted"):
            model.convert_units(no_pair, ("N", "m"))


def test_units_are_scaled_by_factors(model):
    model.scale_units(force=1000)
    assert model[7].area[2] == 1000
    model.scale_units(length="0.5")
    assert model[7].area[2] == 8000
    with pytest.raises(ValueError):
        model.scale_units(force=0)


def test_units_that_make_a_value_too_large_change_nothing(model):
    model[7].area = (1, 1, 1)
    model[2].line = (0, 0, 1e300)
    with pytest.raises(OverflowError, match="nothing was converted"):
        model.scale_units(force=1e25)
    assert model[7].area == (1, 1, 1)


def test_what_cannot_be_read_keeps_a_document_from_being_converted():
    model = kv.open(
        b'<Beddings><SurfaceBedding Number="1" Name="A" StiffnessZ="1"/>'
        b'<SurfaceBedding Number="1" Name="B" StiffnessZ="1"/></Beddings>'
    )
    with pytest.raises(ValueError, match="would keep its units"):
        model.scale_units(force=10)


def test_repr_tells_document_form_and_size(model):
    assert repr(model) == "<Model '<bytes>': legacy, 3 foundations>"


class _Tags(html.parser.HTMLParser):
    """Requires that every tag is closed."""

    def __init__(self):
        super().__init__()
        self.open = []
        self.rows = 0

    def handle_starttag(self, tag, attrs):
        self.open.append(tag)
        self.rows += tag == "tr"

    def handle_endtag(self, tag):
        assert self.open.pop() == tag


@pytest.mark.parametrize("count, rows", [(0, 1), (60, 61), (1000, 62)])
def test_a_notebook_shows_a_table(count, rows):
    model = kv.Model()
    for i in range(count):
        model.foundations.add(kv.Foundation(f"<b>{i}&", number=i + 1, area=(1, 2, 3.5)))
    page = model._repr_html_()

    tags = _Tags()
    tags.feed(page)
    assert tags.open == [] and tags.rows == rows
    if count:
        assert "&lt;b&gt;0&amp;" in page and "<b>" not in page and "1 / 2 / 3.5" in page


def test_operations_that_change_the_list_are_refused_while_users_are_asked(model):
    def user(foundation):
        model.merge(kv.open(MODEL.replace(b'"A"', b'"Z"').replace(b'"7"', b'"70"')))
        return True

    with pytest.raises(RuntimeError):
        model.prune(used_by=user)
    assert len(model) == 3 and model.foundations.users == []


@pytest.mark.parametrize("make", ["new", "add"])
def test_no_number_is_given_twice_in_threads(make):
    model = kv.Model()
    refused = []

    def work(thread):
        for i in range(100):
            name = f"{thread} {i}"
            if make == "add":
                model.add(kv.Foundation(name))
                continue
            model.new(name)
            try:
                model.new(f"of all {i}")
            except ValueError:
                refused.append(i)

    switch = sys.getswitchinterval()
    sys.setswitchinterval(1e-6)
    try:
        threads = [threading.Thread(target=work, args=(i,)) for i in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
    finally:
        sys.setswitchinterval(switch)
    count = 500 if make == "new" else 400
    assert [f.number for f in model] == list(range(1, count + 1))
    assert len({f.name for f in model}) == count
    assert len(refused) == (300 if make == "new" else 0)


def test_new_refuses_what_is_taken_and_adds_nothing():
    model = kv.Model()
    first = model.new("A", number=5)
    assert model.new("B").number == 6
    with pytest.raises(ValueError, match="'A' is taken"):
        model.new("A")
    with pytest.raises(ValueError, match="5 is taken"):
        model.new("C", number=5)
    with pytest.raises(ValueError):
        model.add(first)
    assert [f.name for f in model] == ["A", "B"] and first.number == 5


def test_a_new_one_without_a_name_gets_one():
    model = kv.Model()
    made = [model.new(), model.new("", number=7), model.new(area=(1, 2, 3))]

    assert [(one.number, one.name) for one in made] == [(1, "Found0001"), (7, "Found0007"), (8, "Found0008")]
