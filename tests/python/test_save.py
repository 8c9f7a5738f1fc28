"""A document is saved with what changed, and every other byte stays."""

import io
import math
import os
import pathlib
import stat
import subprocess
import sys
import threading
import time

import pytest

import kvfound as kv

MODEL = (
    '<?xml version="1.0" encoding="UTF-8"?>\r\n<SMOD  a = "1">\r\n<!-- kept -->\r\n'
    '<FOUNDATIONS CURRENT="A">\r\n'
    "<FOUND NUMBER='1' NAME='A' FXAREA='1.50' FYAREA='2' FZAREA='3' OWN='kept'/>\r\n"
    '<FOUND NUMBER="2" NAME="B" FZAREA="4"/>\r\n'
    "</FOUNDATIONS>\r\n<REST>kept</REST></SMOD>\r\n"
).encode()


@pytest.fixture
def path(tmp_path):
    path = tmp_path / "model.xml"
    path.write_bytes(MODEL)
    return path


def test_an_unchanged_model_touches_nothing(path):
    os.utime(path, ns=(1, 1))
    os.chmod(path, 0o444)

    model = kv.open(path)
    model.save()

    assert path.read_bytes() == MODEL
    assert path.stat().st_mtime_ns == 1


def test_a_changed_and_restored_model_is_unchanged(path):
    model = kv.open(path)
    area = model[1].area
    model[1].area = (7, 8, 9)
    model[1].area = area
    model.save()

    assert path.read_bytes() == MODEL


def test_only_what_changed_is_written(path):
    model = kv.open(path)
    model[1].area = (1.5, 2, 30)
    model.save()

    assert path.read_bytes() == MODEL.replace(b"FZAREA='3'", b"FZAREA='30'")


def test_saving_again_goes_on_from_what_was_saved(path):
    model = kv.open(path)
    first, second = model
    first.area = (1.5, 2, 30)
    model.save()
    second.name = "C"
    model.save()
    model.remove(first)
    model.save()

    saved = kv.open(path)
    assert [f.name for f in saved] == ["C"]
    assert b"kept" in path.read_bytes() and b"OWN" not in path.read_bytes()


def test_a_new_foundation_takes_the_place_of_one_with_its_number(path):
    model = kv.open(path)
    model.remove(1)
    model.new("Other", number=1, area=(5, 6, 7))
    model.save()

    saved = path.read_bytes()
    assert b"OWN='kept'" in saved and b"NAME='Other'" in saved
    assert [f.number for f in kv.open(path)] == [1, 2]


def test_added_ones_come_last(path):
    model = kv.open(path)
    added = model.new("Straße 東", area=(1, 1, 1))
    model.current = added
    model.save()

    saved = kv.open(path)
    assert [f.number for f in saved] == [1, 2, 3]
    assert saved.current is saved["Straße 東"]
    assert added is model[3]
    added.name = "later"
    model.save()
    assert [f.name for f in kv.open(path)] == ["A", "B", "later"]


def test_a_foundation_that_left_and_came_back_is_the_same(path):
    model = kv.open(path)
    first = model[1]
    model.foundations.remove(first)
    first.area = (0, 0, 8)
    model.foundations.add(first)
    model.save()

    assert b"OWN='kept'" in path.read_bytes()
    assert kv.open(path)[1].area == (0, 0, 8)


def test_models_saved_elsewhere_after_a_change_of_folder(path, tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    model = kv.open("model.xml")
    (tmp_path / "other").mkdir()
    monkeypatch.chdir(tmp_path / "other")
    model[1].name = "Z"
    model.save()

    assert kv.open(path)[1].name == "Z"
    assert os.listdir(".") == []


def test_a_link_stays_a_link(path, tmp_path):
    link = tmp_path / "link.xml"
    link.symlink_to("model.xml")
    model = kv.open(link)
    model[1].name = "Z"
    model.save()

    assert link.is_symlink()
    assert kv.open(path)[1].name == "Z"


def test_permissions_stay(path):
    path.chmod(0o640)
    model = kv.open(path)
    model[1].name = "Z"
    model.save()

    assert stat.S_IMODE(path.stat().st_mode) == 0o640


def test_no_temporary_file_is_left(path, tmp_path):
    model = kv.open(path)
    model[1].name = "Z"
    model.save()

    assert os.listdir(tmp_path) == ["model.xml"]


def test_a_file_that_another_program_changed_is_not_overwritten(path):
    model = kv.open(path)
    model[1].name = "Z"
    path.write_bytes(MODEL + b"<!-- new -->")
    with pytest.raises(kv.ChangedError, match="changed by another program"):
        model.save()
    assert path.read_bytes() == MODEL + b"<!-- new -->"

    model.save(overwrite=True)
    assert kv.open(path)[1].name == "Z"
    assert b"new" not in path.read_bytes()


def test_an_unchanged_model_leaves_what_another_program_wrote(path):
    model = kv.open(path)
    path.write_bytes(b"other")
    model.save()

    assert path.read_bytes() == b"other"


def test_a_file_that_is_gone_is_written(path):
    model = kv.open(path)
    path.unlink()
    model.save()

    assert path.read_bytes() == MODEL


def test_a_folder_that_is_gone_is_an_error(path, tmp_path):
    model = kv.open(path)
    model[1].name = "Z"
    path.unlink()
    os.rmdir(tmp_path)
    with pytest.raises(FileNotFoundError):
        model.save()
    tmp_path.mkdir()
    model.save()
    assert kv.open(path)[1].name == "Z"


@pytest.mark.skipif(os.geteuid() == 0, reason="nothing is forbidden to root")
def test_a_folder_for_reading_only_is_an_error(path, tmp_path):
    model = kv.open(path)
    model[1].name = "Z"
    tmp_path.chmod(0o500)
    try:
        with pytest.raises(PermissionError):
            model.save()
    finally:
        tmp_path.chmod(0o700)
    assert path.read_bytes() == MODEL


def test_a_full_device_is_an_error():
    if not os.path.exists("/dev/full"):
        pytest.skip("there is no /dev/full")
    model = kv.open(MODEL)
    with pytest.raises(OSError, match="cannot be written"):
        model.write("/dev/full", replace=True)


def test_a_model_from_bytes_has_no_file():
    model = kv.open(MODEL)
    with pytest.raises(ValueError, match="save_as"):
        model.save()


def test_save_as_takes_the_document_along(path, tmp_path):
    model = kv.open(path)
    model[1].area = (1.5, 2, 30)
    other = tmp_path / "other.xml"
    model.save_as(other)

    assert other.read_bytes() == MODEL.replace(b"FZAREA='3'", b"FZAREA='30'")
    assert path.read_bytes() == MODEL
    assert model.path == other
    model[1].name = "Z"
    model.save()
    assert kv.open(other)[1].name == "Z"


def test_save_as_refuses_what_is_there(path, tmp_path):
    other = tmp_path / "other.xml"
    other.write_bytes(b"there")
    model = kv.open(path)
    with pytest.raises(FileExistsError) as caught:
        model.save_as(other)
    assert caught.value.filename == str(other)
    assert other.read_bytes() == b"there"
    assert model.path == path
    with pytest.raises(ValueError, match="existing"):
        model.save_as(other, existing="own")

    model.save_as(other, existing="replace")
    assert other.read_bytes() == MODEL


def test_save_as_may_change_only_the_foundations_of_what_is_there(path, tmp_path):
    other = tmp_path / "other.xml"
    other.write_bytes(MODEL.replace(b"kept", b"mine").replace(b"'3'", b"'5'"))
    model = kv.open(path)
    model.save_as(other, existing="update")

    assert other.read_bytes() == MODEL.replace(b"kept", b"mine")
    assert model.path == other
    model[2].name = "Z"
    model.save()
    assert b"mine" in other.read_bytes() and b"Z" in other.read_bytes()


@pytest.mark.parametrize("form", ["legacy", "exchange", "exchange-1.0", "csv", "json"])
def test_every_form_can_be_saved_and_read(path, tmp_path, form):
    model = kv.open(path)
    other = tmp_path / ("other.csv" if form == "csv" else "other.json" if form == "json" else "o.xml")
    model.save_as(other, to=form, lossy=True)
    assert model.form == form
    model.new("C", area=(7, 8, 9))
    model.save(lossy=True)

    saved = kv.open(other)
    assert saved.form == form
    assert [f.name for f in saved] == ["A", "B", "C"]
    assert saved["C"].area == (7, 8, 9)


def test_the_ending_tells_tables_and_data(path, tmp_path):
    model = kv.open(path)
    model.save_as(tmp_path / "table.CSV")
    assert model.form == "csv"
    with pytest.raises(ValueError, match="tell which form"):
        model.save_as(tmp_path / "table.xml")
    model.save_as(tmp_path / "other.xml", to="legacy")
    assert kv.open(tmp_path / "other.xml").form == "legacy"


def test_losses_are_refused_before_anything_is_written(path, tmp_path):
    model = kv.open(path)
    other = tmp_path / "other.xml"
    with pytest.raises(kv.LossError) as caught:
        model.save_as(other, to="exchange")
    assert caught.value.losses == ('number 1 "A": is no longer the current foundation',)
    assert caught.value.losses == model.losses("exchange")
    assert not other.exists()
    assert model.form == "legacy" and model.path == path

    model.save_as(other, to="exchange", lossy=True)
    assert [f.name for f in kv.open(other)] == ["A", "B"]


def test_what_was_skipped_counts_as_lost_in_another_form():
    model = kv.open(
        b'<?xml version="1.0"?>\n<Beddings>\n'
        b'<SurfaceBedding Number="0" Name="A" StiffnessZ="1"/>\n'
        b'<SurfaceBedding Number="1" Name="B" StiffnessZ="1"/>\n</Beddings>'
    )

    assert model.losses() == ()
    assert model.losses("csv") == model.notes


def test_unread_beddings_do_not_go_unseen():
    content = (
        b'<?xml version="1.0"?>\n<Beddings>\n'
        b'<SurfaceBedding Number="1" Name="A" StiffnessZ="1"/>\n'
        b'<SurfaceBedding Number="1" Name="B" StiffnessZ="2"/>\n</Beddings>'
    )
    model = kv.open(content)
    model.remove("A")
    with pytest.raises(kv.LossError) as caught:
        model.to_bytes()
    assert caught.value.losses == ('number 1 "B": goes without ever having been read (line 4)',)
    assert b"B" not in model.to_bytes(lossy=True).split(b"?>")[1].replace(b"Beddings", b"")


@pytest.mark.parametrize("content", [MODEL, b"number,name,areaZ\n1,A,1\n2,B,2\n"])
def test_numbers_and_names_that_are_taken_twice_are_refused(content, tmp_path):
    path = tmp_path / ("model.xml" if content == MODEL else "model.csv")
    path.write_bytes(content)
    model = kv.open(path)
    model[2].number = 1
    with pytest.raises(kv.DocumentError, match="number 1 is taken by"):
        model.save()
    model["B"].number = 2
    model["B"].name = "A"
    with pytest.raises(kv.DocumentError, match='the name "A" is taken by'):
        model.save()
    assert path.read_bytes() == content


def test_what_a_document_holds_twice_already_may_stay():
    content = MODEL.replace(b'NUMBER="2"', b'NUMBER="1"')
    model = kv.open(content)
    model["B"].area = (0, 0, 9)

    assert model.to_bytes() == content.replace(b'"4"', b'"9"')


def test_numbers_may_be_exchanged():
    model = kv.open(MODEL)
    first, second = model
    first.number, second.number = 2, 1

    saved = kv.open(model.to_bytes())
    assert {f.name: f.number for f in saved} == {"A": 2, "B": 1}


@pytest.mark.parametrize("name", ["a\0b", "a\x01b", "\ud800", "\ufffe", "a\nb\tc", "", " ", "<&>\"'"])
@pytest.mark.parametrize("form", ["legacy", "exchange", "csv", "json"])
def test_names_are_written_so_that_they_read_back_or_not_at_all(path, tmp_path, form, name):
    model = kv.Model(form)
    foundation = model.foundations.add(kv.Foundation("x", number=1, area=(1, 2, 3)))
    try:
        foundation.name = name
    except UnicodeEncodeError:
        assert name == "\ud800"
        return
    try:
        content = model.to_bytes()
    except (ValueError, kv.LossError):
        with pytest.raises((ValueError, kv.LossError)):
            model.save_as(tmp_path / "model", to=form)
        assert list(tmp_path.iterdir()) == [path]
        return
    spreadsheet = form if form in ("csv", "json") else None
    assert [f.name for f in kv.open(content, form=spreadsheet)] == [name]


@pytest.mark.parametrize("value", [float("nan"), float("inf"), -1.5, 1e-320, 0.1 + 0.2])
@pytest.mark.parametrize("form", ["legacy", "csv", "json"])
def test_values_come_back_exactly_or_not_at_all(form, value):
    model = kv.Model(form)
    model.new("A", area=(1, 2, value))
    try:
        content = model.to_bytes()
    except kv.LossError:
        return
    read = kv.open(content, form=form if form != "legacy" else None)["A"].area
    assert repr(read) == repr((1.0, 2.0, value))


def test_a_code_page_stays(tmp_path):
    path = tmp_path / "model.xml"
    path.write_bytes(MODEL.replace(b"UTF-8", b"ISO-8859-1"))
    model = kv.open(path)
    model[1].name = "Straße €"
    model.save()

    assert b"NAME='Stra\xdfe &#" in path.read_bytes()
    assert kv.open(path)[1].name == "Straße €"


def test_a_table_of_an_old_encoding_names_what_it_lacks():
    model = kv.open(b"number;name\n1;Stra\xdfe\n", form="csv")
    model[1].name = "東"
    with pytest.raises(kv.DocumentError, match="windows-1252"):
        model.to_bytes()


def test_a_table_keeps_its_dialect(tmp_path):
    path = tmp_path / "table.csv"
    path.write_bytes(b"\xef\xbb\xbfnumber;name;areaZ\r\n1;A;1,5\r\n2;B;2,5\r\n")
    model = kv.open(path)
    model["A"].area = (0, 0, 3.5)
    model.save()

    assert path.read_bytes() == b"\xef\xbb\xbfnumber;name;areaZ\r\n1;A;3,5\r\n2;B;2,5\r\n"


def test_tables_are_written_as_told():
    model = kv.open(MODEL)
    german = model.to_bytes("csv", separator=";", decimal=",")

    assert b";1,5;" in german
    assert kv.open(german, form="csv")[1].area == (1.5, 2, 3)
    with pytest.raises(ValueError, match="csv only"):
        model.to_bytes("json", separator=";")


class Raw(io.RawIOBase):
    """Takes what `take` makes of the count of bytes that it is given."""

    def __init__(self, take):
        self.take = take
        self.got = b""

    def writable(self):
        return True

    def write(self, data):
        count = self.take(len(data))
        self.got += bytes(data[:count])
        return count


def write_xml(model, file):
    model.foundations.write_xml(file)


WRITES = pytest.mark.parametrize("write", [kv.Model.write, write_xml])


@WRITES
@pytest.mark.parametrize("most", [1, 100, 10**6])
def test_a_raw_file_gets_everything(path, write, most):
    model = kv.open(path)
    whole = io.BytesIO()
    write(model, whole)

    raw = Raw(lambda size: min(most, size))
    write(model, raw)

    assert raw.got == whole.getvalue()


@WRITES
@pytest.mark.parametrize("bad, error", [(0, OSError), (None, BlockingIOError), (-1, OSError), (2**64 - 1, OSError),
                                        (10**30, OSError), ("9", TypeError)])  # fmt: skip
def test_a_raw_file_that_takes_nothing_more_raises(path, write, bad, error):
    class Full(Raw):
        def write(self, data):
            return super().write(data) if len(self.got) < 20 else bad

    with pytest.raises(error):
        write(kv.open(path), Full(lambda size: min(10, size)))


@WRITES
def test_a_count_above_what_was_given_raises(path, write):
    with pytest.raises(OSError, match="not between 0 and"):
        write(kv.open(path), Raw(lambda size: size + 1 if size else 0))


@WRITES
def test_a_file_object_may_tell_no_count(path, write):
    class Untold:
        got = b""

        def write(self, data):
            self.got += data

    untold, told = Untold(), io.BytesIO()
    write(kv.open(path), untold)
    write(kv.open(path), told)

    assert untold.got == told.getvalue()


def test_a_copy_is_written_to_files_and_file_objects(path, tmp_path):
    model = kv.open(path)
    buffer = io.BytesIO()
    model.write(buffer)
    assert buffer.getvalue() == MODEL
    model.write(tmp_path / "copy.json")
    assert kv.open(tmp_path / "copy.json")[1].area == (1.5, 2, 3)
    with pytest.raises(FileExistsError):
        model.write(tmp_path / "copy.json")
    with pytest.raises(TypeError):
        model.write(io.StringIO())
    assert b"<Kvml" in model.to_bytes("kvml", lossy=True)
    with pytest.raises(ValueError, match="only written"):
        model.save_as(tmp_path / "x.xml", to="kvml")
    assert model.path == path


def test_units_of_a_table():
    model = kv.open(MODEL)
    with pytest.raises(ValueError, match="only csv and json"):
        model.units = ("kN", "m")
    table = kv.open(b"number,name,areaZ\n1,A,1\n", form="csv")
    assert table.units is None
    table.units = ("kN", "m")

    assert table.to_bytes().startswith(b"#units,kN,m\n")
    for wrong in (("kN",), "kN", ("kN", ""), ("kN", 1)):
        with pytest.raises((TypeError, ValueError)):
            table.units = wrong
    table.units = None
    assert table.to_bytes() == b"number,name,areaZ\n1,A,1\n"


def test_new_models_of_every_form(tmp_path):
    for form in ("legacy", "exchange", "exchange-1.0", "csv", "json"):
        model = kv.Model(form)
        assert model.form == form and len(model) == 0 and model.path is None
        model.new("A", area=(1, 2, 3))
        saved = kv.open(model.to_bytes(), form=form if form in ("csv", "json") else None)
        assert saved["A"].area == (1, 2, 3)
    with pytest.raises(ValueError, match="there is no form"):
        kv.Model("xml")
    with pytest.raises(ValueError, match="only written"):
        kv.Model("kvml")


def test_a_path_for_a_listing_gets_one(tmp_path):
    model = kv.Model()
    model.new("A", area=(1, 2, 3))
    path = tmp_path / "model.kvml"
    with pytest.raises(ValueError, match="only written"):
        model.save_as(path)
    assert not path.exists()
    model.write(path, lossy=True)
    assert b"<Kvml" in path.read_bytes()
    model.write(path, to="legacy", replace=True)
    assert len(kv.open(path)) == 1


def test_what_cannot_be_written_to_or_with_is_named(tmp_path):
    model = kv.Model("csv")
    for target in (5, None):
        with pytest.raises(TypeError, match="^target: a path or a binary file object is wanted"):
            model.write(target)
    for wrong, told in (("|", "separator"), ("", "separator"), (" ", "decimal"), ("", "decimal")):
        for write in (model.to_bytes, lambda **marks: model.save_as(tmp_path / "x.csv", **marks)):
            with pytest.raises(ValueError, match=f"^{told}: only"):
                write(**{told: wrong})
    assert not list(tmp_path.iterdir())


def test_saving_goes_on_while_other_threads_change_the_model(tmp_path):
    path = tmp_path / "model.json"
    model = kv.Model("json")
    for i in range(3000):
        model.foundations.add(kv.Foundation(f"F{i}", number=i + 1, area=(1, 2, 3)))
    model.save_as(path)
    done = threading.Event()
    changes = 0

    def change():
        nonlocal changes
        while not done.is_set():
            first = model.foundations[0]
            model.foundations.remove(first)
            model.foundations.add(first)
            changes += 1

    thread = threading.Thread(target=change)
    thread.start()
    try:
        for _ in range(5):
            model.foundations[1].area = (1, 2, 4)
            model.save()
    finally:
        done.set()
        thread.join()
    model.save()
    assert changes > 0
    assert sorted(f.number for f in kv.open(path)) == list(range(1, 3001))


@pytest.mark.parametrize(
    "work",
    [
        lambda model, path: model.to_bytes(),
        lambda model, path: model.save_as(path),
        lambda model, path: model.check(),
        lambda model, path: model.diff(model),
        lambda model, path: model.merge(model),
        lambda model, path: model.to_html(),
    ],
)
def test_other_threads_run_meanwhile(tmp_path, work):
    model = kv.Model()
    for i in range(5000):
        model.foundations.add(kv.Foundation(f"F{i}", number=i + 1, area=(1, 2, 3)))
    counted = 0
    stop = threading.Event()

    def count():
        nonlocal counted
        while not stop.is_set():
            counted += 1

    switch = sys.getswitchinterval()
    thread = threading.Thread(target=count)
    try:
        thread.start()
        while counted == 0:
            time.sleep(0.001)
        sys.setswitchinterval(0.5)  # too long for threads to be switched by it
        before = counted
        work(model, tmp_path / "model.xml")
        during = counted - before
    finally:
        stop.set()
        thread.join()
        sys.setswitchinterval(switch)
    assert during > 1000


def test_two_threads_do_not_save_one_model_at_once(path):
    model = kv.open(path)
    errors = []

    def save():
        try:
            for _ in range(20):
                model.save()
        except RuntimeError as error:
            errors.append(str(error))

    threads = [threading.Thread(target=save) for _ in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert set(errors) <= {"another thread saves the model at this moment"}
    assert path.read_bytes() == MODEL


def start_saving(model, path):
    """Saves in a thread to a pipe, which nobody reads; behind it that has begun."""

    def save():
        while True:
            try:
                model.save_as(path, existing="replace")
                return
            except RuntimeError:  # the other thread was at it
                pass

    os.mkfifo(path)
    thread = threading.Thread(target=save)
    thread.start()
    while True:
        try:
            model.save_as(path.with_name("other"), to=model.form, existing="replace")
        except RuntimeError as error:
            assert "another thread saves" in str(error)
            return thread


@pytest.mark.skipif(not hasattr(os, "mkfifo"), reason="needs a pipe that a thread waits for")
@pytest.mark.parametrize("by_hand", [False, True])
def test_units_that_come_while_it_is_saved_stay(tmp_path, by_hand):
    model = kv.Model("csv")
    model.units = ("kN", "m")
    model.new("A", area=(1e6, 2e6, 3e6))
    thread = start_saving(model, tmp_path / "pipe.csv")
    if by_hand:
        model.units = ("N", "mm")
        model["A"].area = (1, 2, 3)
    else:
        model.convert_units(("kN", "m"), ("N", "mm"))
    written = kv.open((tmp_path / "pipe.csv").read_bytes(), form="csv")
    thread.join()

    assert written.units == ("kN", "m") and written["A"].area == (1e6, 2e6, 3e6)
    assert model.units == ("N", "mm") and model["A"].area == (1, 2, 3)
    model.save_as(tmp_path / "next.csv")
    written = kv.open(tmp_path / "next.csv")
    assert written.units == ("N", "mm") and written["A"].area == (1, 2, 3)


def test_units_that_were_written_are_those_of_the_document(tmp_path):
    model = kv.Model("csv")
    model.units = ("kN", "m")
    model.save_as(tmp_path / "table.csv")
    assert model.units == ("kN", "m")
    model.save_as(tmp_path / "model.xml", to="legacy")
    assert model.units is None


class Wandering:
    """A path that is another one each time."""

    def __init__(self, folder):
        self.paths = iter([folder / "first.xml", folder / "second.csv", folder / "third.json"])

    def __fspath__(self):
        return str(next(self.paths))


@pytest.mark.parametrize("operation", ["save_as", "write", "report"])
def test_a_path_is_asked_for_once(path, tmp_path, operation):
    path = path.rename(tmp_path / "model")
    getattr(kv.open(path), operation)(Wandering(tmp_path))

    assert sorted(p.name for p in tmp_path.iterdir()) == ["first.xml", "model"]
    if operation != "report":
        assert (tmp_path / "first.xml").read_bytes() == MODEL


ROTATED = ('number 1 "A": lineRotationY 2 is lost', 'number 1 "A": lineRotationZ -3.5 is lost')


@pytest.mark.parametrize("form", ["legacy", "exchange", "exchange-1.0", "csv", "json"])
def test_rotation_about_y_and_z_is_lost_in_every_form(tmp_path, form):
    model = kv.Model(form)
    raft = model.new("A", line=(1, 1, 1), rotation=(1, 2, -3.5), area=(0, 0, 0))
    assert set(ROTATED) <= set(model.losses())
    for save in (model.to_bytes, lambda: model.save_as(tmp_path / "m", to=form), model.check):
        with pytest.raises(kv.LossError) as caught:
            save()
        assert set(ROTATED) <= set(caught.value.losses)
    assert not (tmp_path / "m").exists()
    model.save_as(tmp_path / "m", to=form, lossy=True)
    assert raft.rotation == (1, 2, -3.5)
    raft.rotation = (1, 0, -0.0)
    assert not any("Rotation" in line for line in model.losses())


@pytest.mark.parametrize("form", ["kvml", "legacy", "csv"])
def test_rotation_about_y_alone_is_lost_in_other_forms(form):
    model = kv.Model("json")
    model.new("A", rotation=(0, math.nan, 0))
    assert 'number 1 "A": lineRotationY nan is lost' in model.losses(form)


def test_the_first_exchange_version_counts_what_was_saved(tmp_path, examples):
    path = tmp_path / "beddings.xml"
    model = kv.open(examples / "beddings-1.0.xml")
    fourth = model[4]
    model.remove(3)
    model.to_bytes()
    assert fourth.number == 4
    model.save_as(path)

    assert fourth.number == 3
    assert [(f.number, f.name) for f in model] == [(f.number, f.name) for f in kv.open(path)]
    model.remove(1)
    model.new("Last", line=(1, 1, 1))
    model.save()
    assert fourth.number == 2 and model["Last"].number == 11
    assert [(f.number, f.name) for f in model] == [(f.number, f.name) for f in kv.open(path)]


def test_other_forms_keep_the_numbers_that_were_saved(tmp_path):
    model = kv.Model()
    model.new("A", number=10, area=(1, 1, 1))
    model.save_as(tmp_path / "model.xml")
    assert model["A"].number == 10
    model.save_as(tmp_path / "first.xml", to="exchange-1.0", lossy=True)
    assert model["A"].number == 1


@pytest.mark.skipif(not hasattr(os, "fork"), reason="only a fork takes over what threads are at")
def test_a_child_saves_a_model_that_a_thread_was_saving(tmp_path):
    done = subprocess.run(
        [
            sys.executable,
            "-c",
            "import os, threading, time, kvfound as kv\n"
            "model = kv.Model('csv')\n"
            "for i in range(5000): model.foundations.add(kv.Foundation(f'n{i}', number=i + 1, area=(1, 2, 3)))\n"
            "def work():\n"
            "    while True: model.save_as('thread.csv', existing='replace')\n"
            "threading.Thread(target=work, daemon=True).start()\n"
            "for i in range(5):\n"
            "    time.sleep(0.05)\n"
            "    child = os.fork()\n"
            "    if child == 0:\n"
            "        try: model.save_as(f'child{i}.csv')\n"
            "        finally: os._exit(0)\n"
            "    os.waitpid(child, 0)\n",
        ],
        cwd=tmp_path,
        env={**os.environ, "PYTHONPATH": str(pathlib.Path(kv.__file__).absolute().parents[1])},
        capture_output=True,
        text=True,
        timeout=60,
    )

    assert (done.returncode, done.stderr) == (0, "")
    assert [len(kv.open(tmp_path / f"child{i}.csv")) for i in range(5)] == [5000] * 5


def test_a_name_that_becomes_another_is_told_in_quotes():
    model = kv.Model()
    model.foundations.add(kv.Foundation("", number=3, area=(1, 2, 3)))

    with pytest.raises(kv.LossError, match='^something would be lost: number 3 "": name "" becomes Found0001$'):
        model.to_bytes()
