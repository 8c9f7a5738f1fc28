"""The worked examples: figures against closed formulas, files against the program's own rules."""

import math
import os
import pathlib
import shutil
import subprocess
import sys

import pytest

import kvfound as kv

np = pytest.importorskip("numpy")

PROJECT = pathlib.Path(__file__).resolve().parent.parent.parent
FOLDER = PROJECT / "examples" / "python"
sys.path.insert(0, str(FOLDER))

import raft  # noqa: E402
import winkler_beam as winkler  # noqa: E402


def run(name, *arguments, folder):
    """What an example prints, run as its users run it."""
    path = os.pathsep.join(filter(None, sys.path))
    done = subprocess.run(
        [sys.executable, "-B", FOLDER / f"{name}.py", *arguments],
        cwd=folder,
        env={**os.environ, "PYTHONPATH": path, "PYTHONIOENCODING": "utf-8"},
        capture_output=True,
        encoding="utf-8",
        check=False,
    )
    assert (done.returncode, done.stderr) == (0, "")
    return done.stdout


# A strip of EI = 200,000 kNm² on 50,000 kN/m².
EI = 200e3
K = 50e3
LAMBDA = 0.5  # (50,000 / (4 * 200,000))^(1/4)


def bedding(k=K, fails=False):
    return kv.Foundation(line=(0, 0, k), fail_line_z=kv.Failure.TENSION, fail_possible=fails)


class TestWinklerBeam:
    def test_lambda_is_hetenyis(self):
        assert winkler.get_lambda(K, EI) == pytest.approx(LAMBDA, rel=1e-15)

    def test_a_very_long_beam_is_like_an_endless_one(self):
        beam = winkler.Beam(60.0, EI, 600)
        result = winkler.solve_bedded(beam, bedding(), winkler.central_force(beam, 100.0))
        w, moment = winkler.infinite_beam(K, EI, 100.0, beam.x - 30.0)
        np.testing.assert_allclose(result.w, w, rtol=0, atol=1e-6 * w.max())
        np.testing.assert_allclose(result.moment, moment, rtol=0, atol=5e-4 * moment.max())
        assert result.w[300] == pytest.approx(100.0 * LAMBDA / (2 * K), rel=1e-6)
        assert result.moment[300] == pytest.approx(100.0 / (4 * LAMBDA), rel=5e-4)

    @pytest.mark.parametrize("length", [0.5, 2.0, 6.0, 12.0])
    def test_a_short_beam_is_like_hetenyis(self, length):
        beam = winkler.Beam(length, EI, 100)
        result = winkler.solve_bedded(beam, bedding(), winkler.central_force(beam, 100.0))
        middle, end, moment = winkler.finite_beam(K, EI, 100.0, length)
        assert result.w[50] == pytest.approx(middle, rel=1e-6)
        assert result.w[0] == pytest.approx(end, rel=1e-5)
        assert result.w[-1] == pytest.approx(end, rel=1e-5)
        assert result.moment[50] == pytest.approx(moment, rel=1e-3)

    def test_a_very_stiff_beam_sinks_evenly(self):
        beam = winkler.Beam(4.0, 1e10, 8)
        result = winkler.solve_bedded(beam, bedding(), winkler.central_force(beam, 100.0))
        np.testing.assert_allclose(result.w, 100.0 / (K * 4.0), rtol=1e-5)

    @pytest.mark.parametrize("fails", [False, True])
    def test_forces_balance(self, fails):
        beam = winkler.Beam(20.0, EI, 200)
        result = winkler.solve_bedded(beam, bedding(fails=fails), winkler.central_force(beam, 100.0))
        assert result.reactions.sum() == pytest.approx(100.0, rel=1e-9)
        centres = (beam.x[1:] + beam.x[:-1]) / 2
        # The reactions of both sides balance about the middle.
        assert (result.reactions * (centres - 10.0)).sum() == pytest.approx(0.0, abs=1e-7)

    def test_nothing_pulls_once_tension_has_failed(self):
        beam = winkler.Beam(20.0, EI, 200)
        forces = winkler.central_force(beam, 100.0)
        held = winkler.solve_bedded(beam, bedding(), forces)
        lifted = winkler.solve_bedded(beam, bedding(fails=True), forces)
        assert held.rounds == 1
        assert held.reactions.min() < -0.01
        assert lifted.rounds > 1
        assert lifted.reactions.min() > -1e-6
        deflections = winkler.mean_deflections(beam, lifted.w, lifted.slope)
        np.testing.assert_array_equal(lifted.stiffness, np.where(deflections > 0, K, 1e-5))

    def test_a_beam_that_lifts_off_rests_on_pi_by_lambda(self):
        beam = winkler.Beam(20.0, EI, 800)
        result = winkler.solve_bedded(
            beam, bedding(fails=True), winkler.central_force(beam, 100.0)
        )
        length, middle, moment = winkler.lifting_beam(K, EI, 100.0)
        assert length == pytest.approx(math.pi / LAMBDA, rel=1e-15)
        # coth(pi / 2) is how much both exceed those of an endless beam that is held down.
        coth = 1.0 / math.tanh(math.pi / 2)
        assert middle == pytest.approx(coth * 100.0 * LAMBDA / (2 * K), rel=1e-12)
        assert moment == pytest.approx(coth * 100.0 / (4 * LAMBDA), rel=1e-12)
        resting = np.count_nonzero(result.stiffness > 1.0) * beam.step
        assert resting == pytest.approx(length, abs=2 * beam.step)
        assert result.w[400] == pytest.approx(middle, rel=1e-4)
        assert result.moment[400] == pytest.approx(moment, rel=1e-3)

    def test_runs_as_a_program(self, tmp_path):
        lines = run("winkler_beam", folder=tmp_path).splitlines()
        assert lines[0] == "line bedding 36000 kN/m², EI 312500 kNm², 16 m, load 800 kN"
        held, formula, lifted, lifted_formula = (
            [float(word) for word in line.split() if word[0] in "-0123456789"]
            for line in lines[2:]
        )
        assert held[1:3] == pytest.approx(formula[:2], abs=1e-4)
        assert held[3] == pytest.approx(formula[2], rel=1e-4)
        assert [lifted[1], lifted[3]] == pytest.approx(lifted_formula[:2], rel=1e-4)
        assert lifted[4] == pytest.approx(lifted_formula[2], abs=0.04)


class TestRaft:
    def test_a_uniform_load_settles_it_by_q_by_k(self):
        slab = raft.Raft(12.0, 8.0, 0.4, 9, 6)
        np.testing.assert_allclose(raft.settle(slab, 15000.0, uniform=30.0), 0.002, rtol=1e-9)

    @pytest.mark.parametrize("k", [500.0, 15000.0, 300000.0])
    @pytest.mark.parametrize("poisson", [0.0, 0.2])
    def test_whatever_the_stiffnesses(self, k, poisson):
        slab = raft.Raft(7.0, 3.0, 0.25, 5, 4, poisson=poisson)
        np.testing.assert_allclose(raft.settle(slab, k, uniform=10.0), 10.0 / k, rtol=1e-8)

    @pytest.mark.parametrize("length", [2.0, 6.0, 12.0])
    def test_a_wall_on_the_edge_bends_it_like_hetenyis_beam(self, length):
        slab = raft.Raft(length, 2.0, 0.4, 24, 4, poisson=0.0)
        w = raft.settle(slab, 15000.0, wall=100.0)
        near, far = raft.wall_on_strip(15000.0, slab.bending_stiffness, 100.0, length)
        np.testing.assert_allclose(w[0], near, rtol=2e-3)
        np.testing.assert_allclose(w[-1], far, rtol=0, atol=2e-3 * near)

    def test_a_long_one_takes_the_wall_like_an_endless_one(self):
        slab = raft.Raft(40.0, 0.5, 0.4, 100, 1, poisson=0.0)
        near, far = raft.wall_on_strip(15000.0, slab.bending_stiffness, 100.0, 40.0)
        a = (15000.0 / (4 * slab.bending_stiffness)) ** 0.25
        assert near == pytest.approx(2 * 100.0 * a / 15000.0, rel=1e-9)
        assert far == pytest.approx(0.0, abs=1e-6 * near)
        np.testing.assert_allclose(raft.settle(slab, 15000.0, wall=100.0)[0], near, rtol=2e-3)

    def test_forces_balance(self):
        slab = raft.Raft(12.0, 8.0, 0.4, 18, 12)
        unknowns = raft.solve(slab, 15000.0, 35.0, 120.0)
        _, _, weights = raft.element_matrices(*slab.size, slab.poisson)
        volume = sum(unknowns[freedoms] @ weights for freedoms in raft.find_freedoms(slab))
        assert 15000.0 * volume == pytest.approx(35.0 * 12.0 * 8.0 + 120.0 * 8.0, rel=1e-9)

    def test_a_rigid_one_tilts_as_statics_say(self):
        slab = raft.Raft(12.0, 8.0, 40.0, 12, 4)
        w = raft.settle(slab, 1000.0, wall=100.0)
        # Pressure P/A ± P e/W of a rigid raft with its load on the edge: 4 and -2 times the mean.
        mean = 100.0 / 12.0 / 1000.0
        np.testing.assert_allclose(w[0], 4 * mean, rtol=1e-3)
        np.testing.assert_allclose(w[-1], -2 * mean, rtol=2e-3)

    def test_runs_as_a_program(self, tmp_path):
        lines = run("raft", folder=tmp_path).splitlines()
        assert lines[0] == "area bedding 15000 kN/m³, plate 166667 kNm, 12 m by 8 m"
        assert lines[1] == "35 kN/m² everywhere: 2.333333 to 2.333333 mm"
        assert lines[2] == "  q/k: 2.333333 mm"
        assert lines[-1] == "lowest pressure 26.6 kN/m²: the raft rests everywhere"


@pytest.fixture
def soil():
    pytest.importorskip("pandas")
    import soil_layers

    return soil_layers


TABLE = """Aufschluss;Schicht;Dicke m;Steifemodul kN/m²;Tangential
B 7;Sand;2,5;50000;0,2
B 7;Kies;5,0;100000;0,3
"""


class TestSoilLayers:
    def test_layers_are_springs_in_a_row(self, soil, tmp_path):
        (tmp_path / "layers.csv").write_text(TABLE, encoding="utf-8-sig")
        table = soil.make_beddings(soil.read_layers(tmp_path / "layers.csv"), 21)
        # 1 / (2.5 / 50,000 + 5 / 100,000) = 10,000
        assert table.to_dict("records") == [
            {
                "number": 21,
                "name": "Raft at B 7",
                "areaX": pytest.approx(2000.0),
                "areaY": pytest.approx(2000.0),
                "areaZ": pytest.approx(10000.0),
                "areaFailureZ": "tension",
            }
        ]

    @pytest.mark.parametrize("cell", ["0", "-1,5", ""])
    def test_a_layer_without_thickness_is_told_with_its_line(self, soil, tmp_path, cell):
        path = tmp_path / "layers.csv"
        path.write_text(TABLE.replace("5,0;100000", f"{cell};100000"), encoding="utf-8")
        with pytest.raises(ValueError, match="layers.csv:3: thickness and modulus"):
            soil.read_layers(path)

    def test_the_model_has_the_beddings_behind_its_own(self, soil, tmp_path):
        merged = soil.convert(soil.LAYERS, soil.MODEL, tmp_path)
        before = kv.open(soil.MODEL)
        after = kv.open(tmp_path / "model.xml")
        assert [f.name for f in merged] == [f.name for f in after]
        assert len(after) == len(before) + 3
        assert all(a == b and a.name == b.name for a, b in zip(before, after))
        first = after[13]
        assert first.name == "Raft at BK 1"
        # 1 / (0.8 / 24,000 + 2.4 / 9,500 + 3.6 / 65,000)
        assert first.area == pytest.approx((292.954850689, 292.954850689, 2929.54850689))
        assert first.fail_area_z == kv.Failure.TENSION
        assert len(after.check()) == len(before.check())

    def test_every_other_byte_of_the_model_stays(self, soil, tmp_path):
        soil.convert(soil.LAYERS, soil.MODEL, tmp_path)
        lines = (tmp_path / "model.xml").read_bytes().splitlines()
        kept = [line for line in lines if b"Raft at BK" not in line]
        assert kept == soil.MODEL.read_bytes().splitlines()

    def test_the_report_shows_them(self, soil, tmp_path):
        soil.convert(soil.LAYERS, soil.MODEL, tmp_path)
        page = (tmp_path / "model.html").read_text(encoding="utf-8")
        assert all(f"Raft at BK {number}" in page for number in (1, 2, 3))

    def test_runs_as_a_program(self, soil, tmp_path):
        lines = run("soil_layers", "out", folder=tmp_path).splitlines()
        assert lines[0].split() == ["13", "Raft", "at", "BK", "1", "2929.5", "kN/m³"]
        assert lines[-1].startswith("15 foundations in ")
        assert sorted(path.name for path in (tmp_path / "out").iterdir()) == [
            "model.html",
            "model.xml",
            "soil.xml",
        ]


class TestPictures:
    @pytest.mark.skipif("asan" in os.environ.get("LD_PRELOAD", ""), reason="what draws leaks")
    def test_all_are_drawn_again(self, tmp_path):
        pytest.importorskip("matplotlib")
        pytest.importorskip("pandas")
        if not shutil.which("bash"):
            pytest.skip("there is no bash")
        package = pathlib.Path(kv.__file__).absolute().parent.parent
        subprocess.run(
            [PROJECT / "scripts" / "make-pictures.sh", tmp_path],
            env={**os.environ, "KVFOUND_PYTHON_PATH": str(package)},
            check=True,
        )
        kept = {path.name: path for path in (PROJECT / "docs" / "pictures").glob("*.png")}
        assert {path.name for path in tmp_path.iterdir()} == set(kept)
        for path in tmp_path.iterdir():
            assert get_size(path) == get_size(kept[path.name]), path.name
            assert path.stat().st_size > 5000


def get_size(path):
    """Width and height of a picture, as its header tells them."""
    header = path.read_bytes()[:24]
    assert header[:8] == b"\x89PNG\r\n\x1a\n"
    return int.from_bytes(header[16:20], "big"), int.from_bytes(header[20:24], "big")
