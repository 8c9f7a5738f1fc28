"""Documents are read from whatever holds them, or refused with a place and a reason."""

import errno
import inspect
import io
import mmap
import os
import pathlib
import pickle
import threading

import pytest

import kvfound as kv

MODEL = (
    '<?xml version="1.0" encoding="UTF-8"?>\n<SMOD>\n<FOUNDATIONS CURRENT="Ü">\n'
    '<FOUND NUMBER="3" NAME="Ü" FXAREA="1" FYAREA="2" FZAREA="3" OWN="kept"/>\n'
    "</FOUNDATIONS>\n</SMOD>\n"
)


def make_model(count):
    lines = "".join(f'<FOUND NUMBER="{i}" NAME="F{i}" FZAREA="{i}"/>\n' for i in range(1, count + 1))
    return (
        '<?xml version="1.0"?>\n<SMOD>\n<FOUNDATIONS>\n' + lines + "</FOUNDATIONS>\n</SMOD>\n"
    ).encode()


@pytest.mark.parametrize(
    "name, form, count",
    [
        ("model.xml", "legacy", 12),
        ("beddings.xml", "exchange", 12),
        ("beddings-1.0.xml", "exchange-1.0", 12),
        ("soil.csv", "csv", 12),
    ],
)
def test_every_form_is_recognised(examples, name, form, count):
    model = kv.open(examples / name)

    assert model.form == form
    assert len(model) == len(model.foundations) > 0
    assert model.path == examples / name


def test_paths_may_be_text_or_path_like(examples, monkeypatch):
    monkeypatch.chdir(examples)
    for path in ("model.xml", pathlib.Path("model.xml"), os.path.join(".", "model.xml")):
        assert len(kv.open(path)) == 12


@pytest.mark.parametrize("wrap", [bytes, bytearray, memoryview, io.BytesIO])
def test_bytes_and_what_holds_them(wrap):
    model = kv.open(wrap(MODEL.encode()))

    assert model[3].name == "Ü"
    assert model.path is None
    assert model.current is model["Ü"]


def test_a_binary_file_and_a_mapped_one(tmp_path):
    path = tmp_path / "model.xml"
    path.write_text(MODEL, encoding="utf-8")
    with open(path, "rb") as file:
        assert kv.open(file)[3].name == "Ü"
        with mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ) as mapped:
            assert kv.open(mapped)[3].name == "Ü"


def test_the_name_of_a_file_object_tells_the_form(tmp_path):
    path = tmp_path / "soil.csv"
    path.write_bytes(b"number;name;areaZ\n1;A;1,5\n")
    with open(path, "rb") as file:
        assert kv.open(file)[1].area == (0, 0, 1.5)


def test_a_file_in_text_mode_is_a_type_error(tmp_path):
    path = tmp_path / "model.xml"
    path.write_text(MODEL, encoding="utf-8")
    with open(path, encoding="utf-8") as file, pytest.raises(TypeError, match="text mode"):
        kv.open(file)
    with pytest.raises(TypeError, match="text mode"):
        kv.open(io.StringIO(MODEL))


@pytest.mark.parametrize("source", [None, 3, 1.5, [1], object()])
def test_what_is_no_source_is_a_type_error(source):
    with pytest.raises(TypeError, match="source"):
        kv.open(source)


def test_a_file_that_raises_passes_its_error_on():
    class Broken(io.RawIOBase):
        def read(self, size=-1):
            raise OSError(errno.EIO, "broken")

    with pytest.raises(OSError, match="broken"):
        kv.open(Broken())


def test_missing_files_and_folders_are_errors_of_the_system(tmp_path):
    with pytest.raises(FileNotFoundError) as caught:
        kv.open(tmp_path / "missing.xml")
    assert caught.value.errno == errno.ENOENT
    assert caught.value.filename == str(tmp_path / "missing.xml")
    with pytest.raises(IsADirectoryError):
        kv.open(tmp_path)
    with pytest.raises(ValueError, match="zero byte"):
        kv.open("model\0.xml")
    with pytest.raises(FileNotFoundError):
        kv.open("")


def test_a_malformed_document_tells_where(tmp_path):
    path = tmp_path / "model.xml"
    path.write_bytes(b'<?xml version="1.0"?>\n<SMOD>\n<FOUNDATIONS>\n')
    with pytest.raises(kv.DocumentError) as caught:
        kv.open(path)
    error = caught.value
    assert (error.filename, error.lineno) == (str(path), 3)
    assert error.colno is not None
    assert str(error) == f"{path}:3:{error.colno}: {error.reason}"
    assert isinstance(error, ValueError) and isinstance(error, kv.Error)


@pytest.mark.parametrize(
    "content, line",
    [
        (b"", 1),
        (b"  \n ", 2),
        (b"\xff\xfe<\0a\0/\0>\0", None),
        ("<a/>".encode("utf-16"), None),
        (b"<a/>", None),
        (b"text", None),
        (b'{"foundations": [', 1),
        (b'{"foundations": [{"number": 1.5}]}', 1),
    ],
)
def test_what_is_no_document(content, line):
    with pytest.raises(kv.DocumentError) as caught:
        kv.open(content)
    assert caught.value.filename == "<bytes>"
    if line is not None:
        assert caught.value.lineno == line


def test_an_empty_table_is_told():
    with pytest.raises(kv.DocumentError, match="this table is empty"):
        kv.open(b"", form="csv")


def test_seeds_are_read_or_refused(seeds):
    for path in sorted(seeds.rglob("*")):
        if path.is_dir():
            continue
        try:
            model = kv.open(path.read_bytes())
        except kv.DocumentError as error:
            assert error.reason
        else:
            for foundation in model:
                assert isinstance(foundation.name, str)
            assert len(model.foundations) == len(model)


def test_a_german_table():
    model = kv.open(b"number;name;areaZ\r\n1;Stra\xdfe;1500,5\r\n2;B;2,5\r\n", form="csv")

    assert model.encoding == "windows-1252"
    assert model[1].name == "Straße"
    assert model[1].area == (0, 0, 1500.5)
    assert model["B"].area == (0, 0, 2.5)


def test_decimals_that_can_be_read_in_two_ways_must_be_told():
    table = b"name;areaZ\nA;1.500\n"
    with pytest.raises(kv.DocumentError, match="say which") as caught:
        kv.open(table, form="csv")
    assert (caught.value.lineno, caught.value.colno) == (2, None)
    assert "--" not in str(caught.value)

    assert kv.open(table, form="csv", decimal=".")["A"].area == (0, 0, 1.5)


@pytest.mark.parametrize(
    "options, error",
    [
        ({"form": "xml"}, ValueError),
        ({"form": "legacy"}, ValueError),
        ({"form": 3}, TypeError),
        ({"decimal": "x"}, ValueError),
        ({"decimal": ""}, ValueError),
        ({"separator": "|"}, ValueError),
        ({"separator": b";"}, TypeError),
        ({"version": 1.0}, TypeError),
    ],
)
def test_options_that_cannot_be(options, error):
    with pytest.raises(error):
        kv.open(b"name\nA\n", **options)


def test_the_version_of_an_exchange_document_may_be_told():
    bare = b'<?xml version="1.0"?>\n<Beddings/>'

    assert kv.open(bare).form == "exchange"
    assert kv.open(bare, version="1.0").form == "exchange-1.0"
    with pytest.raises(ValueError, match="no version"):
        kv.open(bare, version="new")


def test_names_in_a_code_page_are_str(tmp_path):
    path = tmp_path / "model.xml"
    path.write_bytes(MODEL.replace("UTF-8", "ISO-8859-1").encode("latin-1"))

    model = kv.open(path)

    assert model.encoding == "ISO-8859-1"
    assert model["Ü"] is model[3]


def test_notes_tell_what_was_skipped():
    model = kv.open(
        b'<?xml version="1.0"?>\n<Beddings>\n'
        b'<SurfaceBedding Number="0" Name="A" StiffnessZ="1"/>\n'
        b'<SurfaceBedding Number="1" Name="B" StiffnessZ="1"/>\n</Beddings>'
    )

    assert [f.name for f in model] == ["B"]
    assert model.notes == (
        "<bytes>:3:1: the number 0 of a <SurfaceBedding> is below 1; it was skipped",
    )


def test_other_threads_run_while_a_document_is_read():
    content = make_model(20000)
    counted = 0
    stop = threading.Event()

    def count():
        nonlocal counted
        while not stop.is_set():
            counted += 1

    thread = threading.Thread(target=count)
    thread.start()
    try:
        before = counted
        kv.open(content)
        during = counted - before
    finally:
        stop.set()
        thread.join()
    assert during > 1000


def test_threads_read_the_same_file(examples):
    results = []
    threads = [
        threading.Thread(target=lambda: results.append(len(kv.open(examples / "model.xml"))))
        for _ in range(8)
    ]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert results == [12] * 8


def test_open_is_known_by_its_name(examples):
    assert pickle.loads(pickle.dumps(kv.open)) is kv.open
    assert str(inspect.signature(kv.open)).startswith("(source")
    with pytest.raises(TypeError, match=r"^open\(\) takes 1 positional argument"):
        kv.open(examples / "model.xml", "r")


def test_a_dash_is_the_name_of_a_file(tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    with pytest.raises(FileNotFoundError) as caught:
        kv.open("-")
    assert caught.value.filename == "-"
    (tmp_path / "-").write_bytes(kv.Model().to_bytes())
    model = kv.open("-")
    assert model.path == tmp_path / "-"
    model.new("A", area=(1, 2, 3))
    model.save()
    assert [f.name for f in kv.open("-")] == ["A"]


def test_messages_call_a_file_as_it_was_called(tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    (tmp_path / "bad.xml").write_bytes(b"<SMOD>")
    with pytest.raises(kv.DocumentError) as caught:
        kv.open("bad.xml")
    assert caught.value.filename == "bad.xml"
    for name, error in [("none.xml", FileNotFoundError), ("", FileNotFoundError), (".", OSError)]:
        with pytest.raises(error) as failed:
            kv.open(name)
        assert failed.value.filename == (name or None)


@pytest.mark.parametrize("content", [5, 10**11, list(b"<SMOD/>"), None, "<SMOD/>", 1.5])
@pytest.mark.parametrize("read", [kv.open, kv.FoundationManager().read_xml])
def test_a_file_object_that_reads_no_bytes_is_refused(read, content):
    class File:
        def read(self):
            return content

    with pytest.raises(TypeError):
        read(File())


@pytest.mark.parametrize("kind", [bytes, bytearray, memoryview])
def test_a_file_object_may_read_anything_with_a_buffer(kind):
    class File:
        def read(self):
            return kind(kv.Model().to_bytes())

    assert len(kv.open(File())) == 0


@pytest.mark.parametrize("form, content, sentence", [
    ("csv", b"<?xml version='1.0'?>\n<SMOD>\n</SMOD>\n", "this is legacy, not csv"),
    ("json", b'<Beddings version="2.0"/>', "this is exchange, not json"),
    ("csv", b'{"foundations": []}', "this is json, not csv"),
])  # fmt: skip
def test_a_form_that_is_not_that_of_the_document_is_refused(form, content, sentence):
    assert kv.open(content).form
    with pytest.raises(kv.DocumentError, match=f"^<bytes>: {sentence}$"):
        kv.open(content, form=form)
