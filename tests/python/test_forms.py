"""Reading and writing in the forms of the library."""

import io
import math
import os

import pytest

import kvfound as kv
from kvfound import Foundation, FoundationManager


class Recorder(kv.ReadMessenger):
    """Keeps all messages."""

    def __init__(self):
        self.told = []

    def __getattribute__(self, name):
        if not name.startswith("on_"):
            return super().__getattribute__(name)
        return lambda *arguments: self.told.append((name, *arguments))


def named(*names):
    return FoundationManager(Foundation(name, number=i + 1, area=(0, 0, 1)) for i, name in enumerate(names))


def names(foundations):
    return [foundation.name for foundation in foundations]


def write(method, *arguments, **keywords):
    file = io.BytesIO()
    method(file, *arguments, **keywords)
    return file.getvalue().decode()


def legacy(*names, encoding="UTF-8"):
    elements = "".join(f'<FOUND NUMBER="{i}" NAME="{name}" FZAREA="5"/>' for i, name in enumerate(names, 1))
    return f'<?xml version="1.0" encoding="{encoding}"?>\n<SMOD><FOUNDATIONS>{elements}</FOUNDATIONS></SMOD>'.encode(encoding)


SURFACE = '<SurfaceBedding Number="%d" Name="%s"/>'


def exchange(*elements):
    return ("<Beddings>" + "".join(elements) + "</Beddings>").encode()


def test_a_legacy_document_is_read(examples):
    manager = named("old")

    count = manager.read_xml(examples / "model.xml")

    assert count == len(manager) > 0
    assert manager.current.name == "Raft on stiff clay" and manager[0].line == (9000.0, 9000.0, 45000.0)


@pytest.mark.parametrize("make", [str, os.fspath, lambda p: p, lambda p: p.read_bytes(), lambda p: bytearray(p.read_bytes()), lambda p: open(p, "rb"), lambda p: io.BytesIO(p.read_bytes())])
def test_a_source_is_a_path_a_file_or_bytes(examples, make):
    manager = FoundationManager()
    source = make(examples / "model.xml")

    manager.read_xml(source)

    assert manager.find("Raft on stiff clay") is not None
    if hasattr(source, "close"):
        source.close()


@pytest.mark.parametrize("encoding", ["UTF-8", "ISO-8859-1", "windows-1252"])
def test_names_come_as_text_whatever_the_encoding(encoding):
    manager = FoundationManager()

    manager.read_xml(legacy("Gr\u00fcndung", "\u00e9", encoding=encoding))

    assert names(manager) == ["Gr\u00fcndung", "\u00e9"]


def test_references_beyond_the_encoding_come_as_text():
    manager = FoundationManager()

    manager.read_xml(legacy("\u00fc", encoding="ISO-8859-1").replace(b"\xfc", b"\xfc&#8364;&#252;"))

    assert names(manager) == ["\u00fc\u20ac\u00fc"]


def test_reading_lets_the_old_foundations_live():
    manager = named("old")
    old = manager[0]

    manager.read_xml(legacy("new"))

    assert (old.name, old.manager, names(manager)) == ("old", None, ["new"])


MALFORMED = b"<SMOD>\n  <FOUNDATIONS></SMOD>"


@pytest.mark.parametrize("method", ["read_xml", "read_exchange"])
def test_a_malformed_document_changes_nothing(method, tmp_path):
    manager = named("old")
    old = manager.current = manager[0]
    path = tmp_path / "broken.xml"
    path.write_bytes(MALFORMED)

    with pytest.raises(kv.DocumentError) as caught:
        getattr(manager, method)(path)

    assert (caught.value.filename, caught.value.lineno) == (str(path), 2)
    assert str(caught.value) == f"{path}:2:{caught.value.colno}: {caught.value.reason}"
    assert manager[0] is old and manager.current is old


def test_the_place_is_one_in_the_document_as_it_was_given():
    def place(encoding):
        with pytest.raises(kv.DocumentError) as caught:
            FoundationManager().read_xml(f'<?xml version="1.0" encoding="{encoding}"?>\n<SMOD x="\u00fc\u00fc\u00fc" <'.encode(encoding))
        return caught.value.filename, caught.value.lineno, caught.value.colno

    utf8, latin1 = place("UTF-8"), place("ISO-8859-1")

    assert utf8[:2] == latin1[:2] == (None, 2) and utf8[2] == latin1[2] + 3


@pytest.mark.parametrize("method", ["read_xml", "read_exchange"])
def test_what_cannot_be_read_raises_as_in_python(method, tmp_path):
    read = getattr(FoundationManager(), method)

    with pytest.raises(FileNotFoundError) as caught:
        read(tmp_path / "none.xml")
    assert caught.value.filename in (tmp_path / "none.xml", str(tmp_path / "none.xml"))
    with pytest.raises(IsADirectoryError):
        read(tmp_path)
    with pytest.raises(ValueError, match="null"):
        read("a\x00b")
    with pytest.raises(UnicodeEncodeError):
        read("\ud800")
    for source in (None, 3, 1.5, [], io.StringIO("<SMOD/>")):
        with pytest.raises(TypeError):
            read(source)


@pytest.mark.parametrize("method", ["write_xml", "write_exchange", "write_kvml"])
def test_what_cannot_be_written_raises_as_in_python(method, tmp_path):
    write_to = getattr(named("a"), method)

    with pytest.raises(FileNotFoundError) as caught:
        write_to(tmp_path / "none" / "out.xml")
    assert caught.value.filename == str(tmp_path / "none" / "out.xml")
    with pytest.raises(IsADirectoryError):
        write_to(tmp_path)
    with pytest.raises(ValueError):
        write_to("a\x00b")
    with pytest.raises(TypeError):
        write_to(io.StringIO())
    with pytest.raises(TypeError):
        write_to(None)


def test_what_a_file_raises_arrives():
    class Failing:
        def read(self):
            raise KeyError("mine")

        def write(self, data):
            raise KeyError("mine")

    manager = named("a")
    for method in (manager.read_xml, manager.read_exchange, manager.write_xml, manager.write_exchange):
        with pytest.raises(KeyError, match="mine"):
            method(Failing())
    assert names(manager) == ["a"]


def test_a_file_that_writes_little_at_a_time_gets_everything():
    class Slow(io.BytesIO):
        def write(self, data):
            return super().write(data[:7])

    slow = Slow()
    named("a").write_xml(slow)

    assert slow.getvalue().endswith(b"</SMOD>\n")


def test_a_file_may_change_the_manager_it_is_read_into():
    manager = named("a")

    class Changing(io.BytesIO):
        def read(self, *arguments):
            manager.reset()
            return super().read(*arguments)

    manager.read_exchange(Changing(exchange(SURFACE % (1, "a"))))

    assert names(manager) == ["a"]


def test_what_is_written_is_read_again(tmp_path):
    manager = FoundationManager(
        [
            Foundation("R\u00e4ft \u20ac", number=3, area=(1, 2, 3), fail_area_z=-1, factor_area=0.1),
            Foundation("B", number=4, area=(0, 0, 0), line=(math.inf, 5, 6), rotation=(7, 0, 0), fail_line_x=1, generated=True),
        ]
    )
    manager.current = manager[1]
    again = FoundationManager()

    manager.write_xml(tmp_path / "out.xml")
    again.read_xml(tmp_path / "out.xml")

    assert [repr(f) for f in again] == [repr(f) for f in manager]
    assert again.current is again[1]


def test_a_document_is_updated():
    manager = FoundationManager([Foundation("new", number=1), Foundation("b", number=2)])
    old = b"<!-- kept --><SMOD><FOUNDATIONS><FOUND NUMBER='1' NAME='old' x='y'/></FOUNDATIONS></SMOD>"

    text = manager.update_xml(old).decode()

    assert "<!-- kept -->" in text and "<FOUND NUMBER='1' NAME=\"new\" x='y'" in text
    assert '<FOUND NUMBER="2" NAME="b"' in text


def test_a_document_of_another_root_is_not_updated():
    with pytest.raises(kv.DocumentError, match="the root is no <SMOD>"):
        named("a").update_xml(b"<OTHER/>")
    assert b"NAME" in named("a").update_xml(b"<OTHER/>", "OTHER")


@pytest.mark.parametrize("name", ["a\x00b", "\x01", "a\x1f", "\udcff"])
@pytest.mark.parametrize("method", ["write_xml", "write_exchange", "write_kvml"])
def test_a_name_that_cannot_be_read_again_is_not_written(name, method, tmp_path):
    manager = FoundationManager([Foundation(name, number=3, area=(1, 1, 1))])
    path = tmp_path / "out.xml"

    with pytest.raises(kv.DocumentError, match="^the name of foundation number 3 "):
        getattr(manager, method)(path)

    assert not path.exists()


@pytest.mark.parametrize("name", ["a\tb", "a\nb", "a\rb", "<&>\"'", " ", "\u2028", "\U0001f3d7", "x" * 100_000])
def test_other_names_are_read_again(name):
    manager, again = named(name), FoundationManager()

    again.read_xml(write(manager.write_xml).encode())
    assert names(again) == [name]
    again.reset()
    again.read_exchange(write(manager.write_exchange).encode())
    assert names(again) == [name]


def test_an_exchange_document_is_added():
    manager = named("a")

    count = manager.read_exchange(exchange(SURFACE % (7, "b"), SURFACE % (8, "a")))

    assert count == 2 and [(f.number, f.name) for f in manager] == [(1, "a"), (7, "b"), (8, "a_1")]


def test_the_first_version_is_read_and_written():
    manager = named("a", "b")

    text = write(manager.write_exchange, "1.0")
    again = FoundationManager()

    assert text.count("<Bedding ") == 2
    assert again.read_exchange(text.encode()) == 0 and again.read_exchange(text.encode(), "1.0") == 2
    assert names(again) == ["a", "b"]


def test_the_root_is_chosen():
    assert "<Mine>" in write(named("a").write_exchange, root="Mine")
    with pytest.raises(ValueError):
        write(named("a").write_exchange, root="no name")


def test_the_messenger_is_told_everything_in_order():
    manager, recorder = named("a"), Recorder()
    document = exchange(
        "<Other/>",
        SURFACE % (1, "x"),
        SURFACE % (0, "x"),
        SURFACE % (2, ""),
        '<SurfaceBedding Number="3"/>',
        '<CurveBedding Name="x"/>',
        SURFACE % (4, "a"),
    )

    manager.read_exchange(document, messenger=recorder)

    assert recorder.told == [
        ("on_unknown_element", "Other"),
        ("on_invalid_number", "SurfaceBedding", 1),
        ("on_invalid_number", "SurfaceBedding", 0),
        ("on_empty_name", 2, ""),
        ("on_missing_name", 3),
        ("on_missing_number", "CurveBedding"),
        ("on_name_changed", "a", "a_1"),
        ("on_read_finished", 1),
    ]


def test_the_messages_of_the_first_version_are_told():
    recorder = Recorder()

    FoundationManager().read_exchange(exchange("<Bedding/>", '<Bedding Name=""/>'), "1.0", messenger=recorder)

    assert recorder.told == [("on_missing_bedding_name",), ("on_empty_bedding_name", ""), ("on_read_finished", 0)]


def test_any_object_with_some_of_the_methods_is_a_messenger():
    class Counting:
        def on_read_finished(self, count):
            self.count = count

    counting = Counting()
    FoundationManager().read_exchange(exchange("<Other/>", SURFACE % (1, "a")), messenger=counting)

    assert counting.count == 1


def test_a_messenger_hears_nothing_by_default():
    FoundationManager().read_exchange(
        exchange("<Other/>", SURFACE % (1, "a"), SURFACE % (0, "x"), SURFACE % (2, "")), messenger=kv.ReadMessenger()
    )


def test_a_messenger_that_raises_adds_nothing():
    manager = named("a")

    class Raising(kv.ReadMessenger):
        def on_read_finished(self, count):
            raise KeyError("mine")

    with pytest.raises(KeyError, match="mine"):
        manager.read_exchange(exchange(SURFACE % (7, "b")), messenger=Raising())

    assert names(manager) == ["a"]


def test_a_messenger_cannot_change_the_list():
    manager = named("a")

    class Changing(kv.ReadMessenger):
        def on_read_finished(self, count):
            manager.reset()

    with pytest.raises(RuntimeError, match="cannot be changed while"):
        manager.read_exchange(exchange(SURFACE % (7, "b")), messenger=Changing())

    assert names(manager) == ["a"]


def test_every_message_of_the_reader_has_a_method(examples):
    header = (examples.parent / "include" / "found" / "read_messenger.h").read_text()
    words = [word.split("(")[0] for word in header.split("virtual void ")[1:]]

    for word in words:
        method = "".join("_" + c.lower() if c.isupper() else c for c in word)
        assert callable(getattr(kv.ReadMessenger, method))


def test_a_listing_shows_what_is_chosen():
    manager = FoundationManager([Foundation("a", number=1, area=(1, 2, 3)), Foundation("b", number=2, line=(4, 5, 6))])

    everything = write(manager.write_kvml)
    areas = write(manager.write_kvml, areas=[manager[0], manager[0]], beams=[])

    assert everything.count("<BeddingArea") == everything.count("<BeddingBeam") == 1
    assert areas.count("<BeddingArea") == 1 and "<BeddingBeam" not in areas


def test_only_foundations_are_listed():
    with pytest.raises(TypeError, match="^areas: a Foundation is wanted, not str$"):
        named("a").write_kvml(io.BytesIO(), areas=["a"])


@pytest.mark.parametrize("method, folders", [("read_xml", ["legacy", "tree", "doctype", "document"]), ("read_exchange", ["exchange", "document", "json"])])
def test_seeds_are_read_or_refused(seeds, method, folders):
    read = refused = 0
    for path in (path for folder in folders for path in sorted((seeds / folder).iterdir())):
        for source in (path, path.read_bytes(), path.read_bytes()[:-7]):
            manager = named("a")
            before = manager[0]
            try:
                getattr(manager, method)(source)
                read += 1
            except kv.DocumentError as error:
                assert error.reason and manager[0] is before
                refused += 1
            [repr(foundation) for foundation in manager]

    assert read > 0 and refused > 0


@pytest.mark.parametrize("method", ["write_xml", "write_exchange", "write_kvml"])
def test_a_file_that_is_there_is_replaced_when_told_only(method, tmp_path):
    path = tmp_path / "there.xml"
    path.write_bytes(b"mine")
    write_to = getattr(FoundationManager([Foundation("a", number=1, area=(1, 2, 3))]), method)

    with pytest.raises(FileExistsError) as caught:
        write_to(path)
    assert caught.value.filename == str(path) and path.read_bytes() == b"mine"
    write_to(path, replace=True)
    assert b"<" in path.read_bytes()


@pytest.mark.parametrize("messenger", [object(), 1, "messenger", print])
def test_what_hears_nothing_is_no_messenger(messenger):
    manager = named("a")

    with pytest.raises(TypeError, match="^messenger: an object with methods of ReadMessenger is wanted, not "):
        manager.read_exchange(exchange(SURFACE % (7, "b")), messenger=messenger)

    assert names(manager) == ["a"]


@pytest.mark.parametrize("encoding", ["utf-16", "utf-16-le", "utf-16-be", "utf-32", "utf-32-be"])
def test_wide_documents_are_refused(encoding):
    wide = "<?xml version='1.0'?><SMOD/>".encode(encoding)
    for read in (FoundationManager().read_xml, FoundationManager().read_exchange, kv.open):
        with pytest.raises(kv.DocumentError, match="this is in UTF-16 or UTF-32; save it in UTF-8$"):
            read(wide)


def test_an_error_in_bytes_has_no_filename():
    with pytest.raises(kv.DocumentError, match="^the root is no <SMOD>$") as caught:
        named("a").update_xml(b"<OTHER/>")
    assert caught.value.filename is None
