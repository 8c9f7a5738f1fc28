"""Pages show a model or some of its foundations, with the findings of all."""

import os

import pytest

import kvfound as kv


def test_a_page_is_written_and_replaced(examples, tmp_path):
    model = kv.open(examples / "model.xml")
    path = tmp_path / "page.html"
    model.report(path, units=("kN", "m"))
    model[3].area = (1, 2, 77777)
    model.report(str(path), units=("kN", "m"))

    page = path.read_text(encoding="utf-8")
    assert page.endswith("</html>\n") and "77777" in page
    assert "Raft on stiff clay" in page


def test_nothing_but_a_page_is_replaced(examples, tmp_path):
    path = tmp_path / "model.xml"
    path.write_bytes((examples / "model.xml").read_bytes())
    model = kv.open(path)
    with pytest.raises(FileExistsError, match="no page"):
        model.report(path)
    with pytest.raises(FileNotFoundError):
        model.report(tmp_path / "missing" / "page.html")
    assert path.read_bytes() == (examples / "model.xml").read_bytes()


def test_a_selection_is_shown(examples):
    model = kv.open(examples / "model.xml")
    page = model.to_html(numbers=[3])

    assert "Raft on stiff clay" in page and "Slab on dense sand" not in page
    with pytest.raises(ValueError, match="no foundation"):
        model.to_html(numbers="99")
    with pytest.raises(ValueError, match="no foundation is selected"):
        model.to_html(name="nothing")


def test_units_are_labels(examples):
    table = kv.open(b"#units,kN,m\nnumber,name,areaZ\n1,A,1\n", form="csv")
    with pytest.raises(ValueError, match="its units are kN and m"):
        table.to_html(units=("N", "mm"))
    with pytest.raises(TypeError):
        table.to_html(units="kN")
    assert "kN/m" in table.to_html()


@pytest.mark.skipif(not os.path.exists("/proc/self/mem"), reason="needs a file that cannot be read")
def test_a_file_that_cannot_be_read_is_not_replaced(examples):
    with pytest.raises(OSError) as caught:
        kv.open(examples / "model.xml").report("/proc/self/mem")
    assert caught.value.filename == "/proc/self/mem"
