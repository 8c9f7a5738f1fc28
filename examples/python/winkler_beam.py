#!/usr/bin/env python3
"""A strip footing as a beam on an elastic line bedding, with and without tension between both.

    examples/python/winkler_beam.py [--picture FILE.png]

Units: kN, m. Deflections w and loads are positive downwards, moments where the underside is in
tension. The bedding gives the line stiffness k in kN/m² and says whether it fails in tension.
Formulas: M. Hetényi, Beams on Elastic Foundation, 1946.
"""

from __future__ import annotations

import argparse
import math
import pathlib
from dataclasses import dataclass
from typing import Any

import kvfound as kv
import numpy as np
import numpy.typing as npt

Array = npt.NDArray[np.float64]

MODEL = pathlib.Path(__file__).parent.parent / "model.xml"
BENDING_STIFFNESS = 30e6 * 1.0 * 0.5**3 / 12  # EI in kNm²: C25/30, 1.0 m wide, 0.5 m deep
LOAD = 800.0  # kN, one column in the middle


@dataclass
class Beam:
    """A straight beam of elements of the same length, free at both ends."""

    length: float  # m
    bending_stiffness: float  # EI, kNm²
    elements: int

    @property
    def step(self) -> float:
        return self.length / self.elements

    @property
    def x(self) -> Array:
        """The nodes, from the left end, m."""
        return np.linspace(0.0, self.length, self.elements + 1)


@dataclass
class Result:
    """What a beam does under its load."""

    beam: Beam
    w: Array  # deflection of the nodes, m
    slope: Array  # of the nodes, rad
    stiffness: Array  # of the line bedding that acts below each element, kN/m²
    rounds: int = 1  # how often the equations were solved

    @property
    def moment(self) -> Array:
        """Bending moment in the nodes, kNm: the mean of the elements on both sides."""
        step, w, slope = self.beam.step, self.w, self.slope
        difference = 6.0 * (w[1:] - w[:-1]) / step**2
        left = difference - (4.0 * slope[:-1] + 2.0 * slope[1:]) / step
        right = -difference + (2.0 * slope[:-1] + 4.0 * slope[1:]) / step
        curvature = np.concatenate([[0.0], (right[:-1] + left[1:]) / 2.0, [0.0]])
        moment: Array = -self.beam.bending_stiffness * curvature
        return moment

    @property
    def reactions(self) -> Array:
        """What the bedding below each element carries, kN."""
        return self.stiffness * mean_deflections(self.beam, self.w, self.slope) * self.beam.step


def mean_deflections(beam: Beam, w: Array, slope: Array) -> Array:
    """The mean over each element, m."""
    return (w[:-1] + w[1:]) / 2.0 + beam.step * (slope[:-1] - slope[1:]) / 12.0


def element_matrices(step: float) -> tuple[Array, Array]:
    """Bending for EI = 1 and consistent bedding for k = 1, for w and slope at both ends."""
    l = step
    bending = np.array(
        [
            [12.0, 6 * l, -12.0, 6 * l],
            [6 * l, 4 * l * l, -6 * l, 2 * l * l],
            [-12.0, -6 * l, 12.0, -6 * l],
            [6 * l, 2 * l * l, -6 * l, 4 * l * l],
        ]
    ) / l**3
    bedding = np.array(
        [
            [156.0, 22 * l, 54.0, -13 * l],
            [22 * l, 4 * l * l, 13 * l, -3 * l * l],
            [54.0, 13 * l, 156.0, -22 * l],
            [-13 * l, -3 * l * l, -22 * l, 4 * l * l],
        ]
    ) * (l / 420.0)
    return bending, bedding


def solve(beam: Beam, stiffness: Array, forces: Array) -> Result:
    """Deflections under `forces` on the nodes (kN), with a line stiffness for each element."""
    bending, bedding = element_matrices(beam.step)
    matrix = np.zeros((2 * beam.elements + 2, 2 * beam.elements + 2))
    for i, k in enumerate(stiffness):
        ends = slice(2 * i, 2 * i + 4)
        matrix[ends, ends] += beam.bending_stiffness * bending + k * bedding
    right_side = np.zeros(len(matrix))
    right_side[::2] = forces
    solution = np.linalg.solve(matrix, right_side)
    return Result(beam, solution[::2], solution[1::2], stiffness)


def solve_bedded(beam: Beam, bedding: kv.Foundation, forces: Array, most: int = 100) -> Result:
    """The same on a bedding, which loses what fails until nothing changes any more.

    The sign of an element's deflection tells whether its bedding is pressed (positive) or pulled.
    """
    whole = np.full(beam.elements, bedding.value_line(2))
    failure = bedding.failure_line(2)
    acting = whole
    for rounds in range(1, most + 1):
        result = solve(beam, acting, forces)
        result.rounds = rounds
        pressed = np.copysign(whole, mean_deflections(beam, result.w, result.slope))
        remaining = np.abs(kv.modify_value(failure, pressed))
        if np.array_equal(remaining, acting):
            return result
        acting = remaining
    raise RuntimeError(f"no equilibrium after {most} rounds")


def central_force(beam: Beam, load: float) -> Array:
    """`load` on the node in the middle, kN."""
    forces = np.zeros(beam.elements + 1)
    forces[beam.elements // 2] = load
    return forces


def get_lambda(k: float, bending_stiffness: float) -> float:
    """Hetényi's λ in 1/m: the larger, the faster a deflection dies away."""
    return math.pow(k / (4.0 * bending_stiffness), 0.25)


def infinite_beam(
    k: float, bending_stiffness: float, load: float, distance: Array
) -> tuple[Array, Array]:
    """Deflection (m) and moment (kNm) of an endless beam at a distance (m) from one load."""
    a = get_lambda(k, bending_stiffness)
    x = a * np.abs(distance)
    w = load * a / (2.0 * k) * np.exp(-x) * (np.cos(x) + np.sin(x))
    moment = load / (4.0 * a) * np.exp(-x) * (np.cos(x) - np.sin(x))
    return w, moment


def finite_beam(
    k: float, bending_stiffness: float, load: float, length: float
) -> tuple[float, float, float]:
    """A beam with free ends, the load in its middle: w there and at the ends (m), moment (kNm)."""
    a = get_lambda(k, bending_stiffness)
    al = a * length
    below = math.sinh(al) + math.sin(al)
    middle = load * a / (2.0 * k) * (math.cosh(al) + math.cos(al) + 2.0) / below
    end = 2.0 * load * a / k * math.cosh(al / 2.0) * math.cos(al / 2.0) / below
    moment = load / (4.0 * a) * (math.cosh(al) - math.cos(al)) / below
    return middle, end, moment


def lifting_beam(k: float, bending_stiffness: float, load: float) -> tuple[float, float, float]:
    """A long beam without weight on ground that cannot pull: the length that still rests (m), w (m)
    and moment (kNm) below the load. What rests is a finite beam whose ends do not deflect."""
    a = get_lambda(k, bending_stiffness)
    length = math.pi / a
    middle, _, moment = finite_beam(k, bending_stiffness, load, length)
    return length, middle, moment


def make_case(elements: int = 400) -> tuple[Beam, kv.Foundation]:
    """A beam of 16 m on the strip footing of the model."""
    bedding = kv.open(MODEL)["Strip footing, axis D"]
    return Beam(16.0, BENDING_STIFFNESS, elements), bedding


def compute() -> tuple[Result, Result]:
    """The beam on a bedding that holds it down as well, and on one that fails in tension."""
    beam, bedding = make_case()
    forces = central_force(beam, LOAD)
    bedding.fail_possible = False
    held = solve_bedded(beam, bedding, forces)
    bedding.fail_possible = True
    lifted = solve_bedded(beam, bedding, forces)
    return held, lifted


def describe(name: str, result: Result) -> str:
    middle = result.beam.elements // 2
    resting = np.count_nonzero(result.reactions > 1e-3) * result.beam.step
    return (
        f"{name:18} {result.rounds:6} {1000 * result.w[middle]:10.4f} {1000 * result.w[0]:10.4f}"
        f" {result.moment[middle]:10.2f} {resting:10.2f}"
    )


def draw(path: str) -> None:
    import matplotlib

    matplotlib.use("Agg")
    from matplotlib import pyplot

    held, lifted = compute()
    figure: Any
    figure, (above, below) = pyplot.subplots(
        2, 1, sharex=True, figsize=(7.2, 4.4), layout="constrained"
    )
    for result, label in ((held, "holds in tension"), (lifted, "fails in tension")):
        above.plot(result.beam.x, 1000 * result.w, label=label)
        below.plot(result.beam.x, result.moment, label=label)
    beam = held.beam
    k = float(held.stiffness[0])
    w, _ = infinite_beam(k, beam.bending_stiffness, LOAD, beam.x - beam.length / 2)
    above.plot(beam.x[::20], 1000 * w[::20], "k.", label="Hetényi, endless beam")
    above.set_ylabel("deflection in mm")
    below.set_ylabel("moment in kNm")
    below.set_xlabel("x in m")
    for axes in (above, below):
        axes.invert_yaxis()
        axes.axhline(0.0, color="0.6", linewidth=0.8)
    above.legend(frameon=False)
    figure.savefig(path, dpi=80)
    pyplot.close(figure)


def main() -> None:
    parser = argparse.ArgumentParser(description="A beam on an elastic line bedding.")
    parser.add_argument("--picture", metavar="FILE", help="draws deflections and moments")
    arguments = parser.parse_args()
    if arguments.picture:
        return draw(arguments.picture)
    held, lifted = compute()
    k, beam = float(held.stiffness[0]), held.beam
    stiffness = beam.bending_stiffness
    print(f"line bedding {k:g} kN/m², EI {stiffness:g} kNm², {beam.length:g} m, load {LOAD:g} kN")
    print(f"{'':18} rounds  w mid, mm  w end, mm     M, kNm   rests, m")
    print(describe("holds in tension", held))
    middle, end, moment = finite_beam(k, stiffness, LOAD, beam.length)
    print(f"{'  closed formula':25} {1000 * middle:10.4f} {1000 * end:10.4f} {moment:10.2f}")
    print(describe("fails in tension", lifted))
    length, middle, moment = lifting_beam(k, stiffness, LOAD)
    print(f"{'  closed formula':25} {1000 * middle:10.4f} {'':10} {moment:10.2f} {length:10.2f}")


if __name__ == "__main__":
    main()
