#!/usr/bin/env python3
"""A concrete raft on an area bedding: settlement under its own uniform load and a wall on one edge.

    examples/python/raft.py [--picture FILE.png]

Units: kN, m. Settlements w and loads are positive downwards. The bedding gives the subgrade
modulus k in kN/m³. The raft is a thin plate of rectangular elements with 12 degrees of freedom
each (w and both slopes in the corners); bedding and loads act through the same shape functions.
So a uniform load q settles the raft by q/k exactly, and the raft stays flat.
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
Indices = npt.NDArray[np.int64]

MODEL = pathlib.Path(__file__).parent.parent / "model.xml"
UNIFORM = 35.0  # kN/m², own weight and storage
WALL = 120.0  # kN/m, along the edge x = 0

# x^i y^j, of which the deflection of an element is made up.
POWERS = [(0, 0), (1, 0), (0, 1), (2, 0), (1, 1), (0, 2)]
POWERS += [(3, 0), (2, 1), (1, 2), (0, 3), (3, 1), (1, 3)]

# Points and weights of Gauss between -1 and 1, exact for polynomials of degree 7.
GAUSS = [
    (-0.8611363115940526, 0.3478548451374538),
    (-0.3399810435848563, 0.6521451548625461),
    (0.3399810435848563, 0.6521451548625461),
    (0.8611363115940526, 0.3478548451374538),
]


@dataclass
class Raft:
    """A rectangle from (0, 0) on, divided evenly in both directions."""

    length: float  # in x, m
    width: float  # in y, m
    thickness: float  # m
    columns: int  # elements in x
    rows: int  # elements in y
    modulus: float = 30e6  # Young's, kN/m²
    poisson: float = 0.2

    @property
    def bending_stiffness(self) -> float:
        """D of the plate, kNm."""
        return self.modulus * self.thickness**3 / (12.0 * (1.0 - self.poisson**2))

    @property
    def size(self) -> tuple[float, float]:
        """Of one element, m."""
        return self.length / self.columns, self.width / self.rows

    @property
    def shape(self) -> tuple[int, int]:
        """Nodes in x and in y."""
        return self.columns + 1, self.rows + 1


def derive(x: float, y: float, dx: int, dy: int) -> Array:
    """The derivatives of all POWERS at a point."""

    def factor(power: int, times: int) -> float:
        return float(math.perm(power, times))

    return np.array(
        [
            factor(i, dx) * factor(j, dy) * x ** max(i - dx, 0) * y ** max(j - dy, 0)
            for i, j in POWERS
        ]
    )


def element_matrices(a: float, b: float, poisson: float) -> tuple[Array, Array, Array]:
    """Bending for D = 1, bedding for k = 1 and loads for q = 1, of an element of a by b."""
    corners = [(0.0, 0.0), (a, 0.0), (0.0, b), (a, b)]
    values = np.array([derive(x, y, *d) for x, y in corners for d in ((0, 0), (1, 0), (0, 1))])
    shapes = np.linalg.inv(values)
    shear = (1.0 - poisson) / 2.0
    elasticity = np.array([[1.0, poisson, 0.0], [poisson, 1.0, 0.0], [0.0, 0.0, shear]])
    bending = np.zeros((12, 12))
    bedding = np.zeros((12, 12))
    load = np.zeros(12)
    for u, weight_u in GAUSS:
        for v, weight_v in GAUSS:
            x, y = a * (1.0 + u) / 2.0, b * (1.0 + v) / 2.0
            weight = weight_u * weight_v * a * b / 4.0
            seconds = [derive(x, y, 2, 0), derive(x, y, 0, 2), 2.0 * derive(x, y, 1, 1)]
            curvature = np.array(seconds) @ shapes
            w = derive(x, y, 0, 0) @ shapes
            bending += weight * curvature.T @ elasticity @ curvature
            bedding += weight * np.outer(w, w)
            load += weight * w
    return bending, bedding, load


def find_freedoms(raft: Raft) -> Indices:
    """For each element the 12 unknowns of its corners."""
    nodes = np.arange(raft.shape[0] * raft.shape[1]).reshape(raft.shape)
    corners = np.stack([nodes[:-1, :-1], nodes[1:, :-1], nodes[:-1, 1:], nodes[1:, 1:]], axis=-1)
    freedoms: Indices = (3 * corners.reshape(-1, 4, 1) + np.arange(3)).reshape(-1, 12)
    return freedoms


def wall_load(raft: Raft, load: float) -> Array:
    """A line load (kN/m) along the edge x = 0, as forces and moments in the nodes there."""
    b = raft.size[1]
    loads = np.zeros((*raft.shape, 3))
    loads[0, :-1] += load * np.array([b / 2.0, 0.0, b * b / 12.0])
    loads[0, 1:] += load * np.array([b / 2.0, 0.0, -b * b / 12.0])
    return loads.ravel()


def solve(raft: Raft, k: float, uniform: float, wall: float) -> Array:
    """Settlement (m) and both slopes (rad) of each node, in a row."""
    bending, bedding, load = element_matrices(*raft.size, raft.poisson)
    element = raft.bending_stiffness * bending + k * bedding
    right_side = wall_load(raft, wall)
    matrix = np.zeros((len(right_side), len(right_side)))
    for freedoms in find_freedoms(raft):
        matrix[np.ix_(freedoms, freedoms)] += element
        right_side[freedoms] += uniform * load
    return np.linalg.solve(matrix, right_side)


def settle(raft: Raft, k: float, uniform: float = 0.0, wall: float = 0.0) -> Array:
    """Settlements of the nodes in m, by x and y: kN/m² everywhere, kN/m on the edge x = 0."""
    return solve(raft, k, uniform, wall)[::3].reshape(raft.shape)


def wall_on_strip(
    k: float, bending_stiffness: float, load: float, length: float
) -> tuple[float, float]:
    """Hetényi's beam with free ends and a load on one: w below the load and at the other end, m.

    Per metre of width. A raft with a wall along its edge bends to a cylinder where Poisson's
    ratio is 0; otherwise it comes close to that.
    """
    a = math.pow(k / (4.0 * bending_stiffness), 0.25)
    al = a * length
    sine, cosine, sinh, cosh = math.sin(al), math.cos(al), math.sinh(al), math.cosh(al)
    scale = 2.0 * load * a / k / (sinh**2 - sine**2)
    return scale * (sinh * cosh - sine * cosine), scale * (sinh * cosine - sine * cosh)


def make_case() -> tuple[Raft, float]:
    """The raft, and the modulus of what the model has below it."""
    bedding = kv.open(MODEL)["Raft on stiff clay"]
    raft = Raft(length=12.0, width=8.0, thickness=0.4, columns=18, rows=12)
    return raft, bedding.value_area(2)


def draw(path: str) -> None:
    import matplotlib

    matplotlib.use("Agg")
    from matplotlib import pyplot

    raft, k = make_case()
    settlements = 1000 * settle(raft, k, UNIFORM, WALL)
    figure: Any
    figure, axes = pyplot.subplots(figsize=(6.4, 3.8), layout="constrained")
    x = np.linspace(0.0, raft.length, raft.shape[0])
    y = np.linspace(0.0, raft.width, raft.shape[1])
    filled = axes.contourf(x, y, settlements.T, levels=12, cmap="viridis_r")
    figure.colorbar(filled, label="settlement in mm")
    axes.plot([0.0, 0.0], [0.0, raft.width], color="black", linewidth=5, solid_capstyle="butt")
    axes.set_title(f"{UNIFORM:g} kN/m², and {WALL:g} kN/m on the left edge", fontsize="medium")
    axes.set_xlabel("x in m")
    axes.set_ylabel("y in m")
    axes.set_aspect("equal")
    figure.savefig(path, dpi=80)
    pyplot.close(figure)


def main() -> None:
    parser = argparse.ArgumentParser(description="A raft on an area bedding.")
    parser.add_argument("--picture", metavar="FILE", help="draws the settlements")
    arguments = parser.parse_args()
    if arguments.picture:
        return draw(arguments.picture)
    raft, k = make_case()
    stiffness = raft.bending_stiffness
    size = f"{raft.length:g} m by {raft.width:g} m"
    print(f"area bedding {k:g} kN/m³, plate {stiffness:g} kNm, {size}")

    flat = 1000 * settle(raft, k, UNIFORM)
    print(f"{UNIFORM:g} kN/m² everywhere: {flat.min():.6f} to {flat.max():.6f} mm")
    print(f"  q/k: {1000 * UNIFORM / k:.6f} mm")

    loaded = 1000 * settle(raft, k, UNIFORM, WALL)
    middle = raft.rows // 2
    near, far = loaded[0, middle], loaded[-1, middle]
    print(f"and {WALL:g} kN/m on the edge x = 0: {near:.3f} mm there, {far:.3f} mm opposite")
    strip = wall_on_strip(k, stiffness, WALL, raft.length)
    near, far = (1000 * (UNIFORM / k + w) for w in strip)
    print(f"  as a strip of a beam: {near:.3f} mm there, {far:.3f} mm opposite")

    least = k * loaded.min() / 1000
    verdict = "the raft rests everywhere" if least >= 0 else "the raft lifts off"
    print(f"lowest pressure {least:.1f} kN/m²: {verdict}")


if __name__ == "__main__":
    main()
