#!/usr/bin/env python3
"""Soil layers from a spreadsheet become area beddings of a model: checked, merged and reported.

    examples/python/soil_layers.py FOLDER
    examples/python/soil_layers.py --picture FILE.png

The table has a row a layer, from the foundation level down, as a German spreadsheet saves it:
thickness d in m, constrained modulus Es in kN/m² (of soil that cannot yield sideways), and the
share of the vertical stiffness that acts horizontally, which is that of the topmost layer. Layers
are springs in a row, so that below a wide raft the subgrade modulus is

    k = 1 / sum(d / Es)   in kN/m³.

Leaves soil.xml (the beddings), model.xml (the model with them) and model.html in the folder.
"""

from __future__ import annotations

import argparse
import pathlib
import shutil
import sys
from typing import Any

import kvfound as kv
import pandas as pd

HERE = pathlib.Path(__file__).parent
LAYERS = HERE / "soil_layers.csv"
MODEL = HERE.parent / "model.xml"

COLUMNS = {
    "Aufschluss": "borehole",
    "Schicht": "soil",
    "Dicke m": "thickness",
    "Steifemodul kN/m²": "modulus",
    "Tangential": "share",
}


def read_layers(path: pathlib.Path) -> pd.DataFrame:
    """The layers, as they stand in the table."""
    layers = pd.read_csv(path, sep=";", decimal=",", encoding="utf-8-sig").rename(columns=COLUMNS)
    wrong = layers[~((layers["thickness"] > 0) & (layers["modulus"] > 0))]
    if len(wrong):
        raise ValueError(f"{path}:{wrong.index[0] + 2}: thickness and modulus must be positive")
    return layers


def make_beddings(layers: pd.DataFrame, first_number: int) -> pd.DataFrame:
    """A row a borehole, in the columns of a model's table; only vertical tension fails."""
    layers = layers.assign(compliance=layers["thickness"] / layers["modulus"])
    boreholes = layers.groupby("borehole", sort=True).agg(
        compliance=("compliance", "sum"), share=("share", "first")
    )
    vertical = 1.0 / boreholes["compliance"]
    horizontal = boreholes["share"] * vertical
    return pd.DataFrame(
        {
            "number": range(first_number, first_number + len(boreholes)),
            "name": [f"Raft at {borehole}" for borehole in boreholes.index],
            "areaX": horizontal.to_numpy(),
            "areaY": horizontal.to_numpy(),
            "areaZ": vertical.to_numpy(),
            "areaFailureZ": "tension",
        }
    )


def convert(layers: pathlib.Path, model: pathlib.Path, folder: pathlib.Path) -> kv.Model:
    """Makes the three files; the model in the folder has the beddings behind its own."""
    merged_path = folder / "model.xml"
    shutil.copyfile(model, merged_path)
    merged = kv.open(merged_path)
    first_number = max(foundation.number for foundation in merged) + 1

    soil = kv.Model("exchange")
    soil.update(make_beddings(read_layers(layers), first_number), add=True)
    findings = soil.check()
    if findings:
        raise ValueError(str(findings))
    soil.save_as(folder / "soil.xml", existing="replace")

    merged.merge(soil)
    merged.save()
    merged.report(folder / "model.html", units=("kN", "m"))
    return merged


def draw(path: str) -> None:
    import matplotlib

    matplotlib.use("Agg")
    from matplotlib import pyplot

    layers = read_layers(LAYERS)
    beddings = make_beddings(layers, 1)
    soils = layers.sort_values("modulus", ascending=False)["soil"].drop_duplicates()
    shades = pyplot.get_cmap("YlOrBr")
    colours = {soil: shades(0.1 + 0.5 * i / len(soils)) for i, soil in enumerate(soils)}
    figure: Any
    figure, axes = pyplot.subplots(figsize=(6.4, 3.8), layout="constrained")
    for place, (borehole, group) in enumerate(layers.groupby("borehole", sort=True)):
        top = 0.0
        for layer in group.itertuples():
            colour = colours[layer.soil]
            axes.bar(place, layer.thickness, 0.8, top, color=colour, edgecolor="black")
            label = f"{layer.soil}\n$E_s$ = {layer.modulus / 1000:g} MN/m²"
            middle = top + layer.thickness / 2
            axes.text(place, middle, label, ha="center", va="center", fontsize="small")
            top += layer.thickness
        stiffness = beddings["areaZ"][place]
        axes.text(place, -0.15, f"k = {stiffness:.0f} kN/m³", ha="center", va="bottom")
    axes.set_xticks(range(len(beddings)), sorted(set(layers["borehole"])))
    axes.set_ylim(7.2, -0.8)
    axes.set_ylabel("depth below the raft in m")
    figure.savefig(path, dpi=80)
    pyplot.close(figure)


def main() -> None:
    parser = argparse.ArgumentParser(description="Beddings of a table of soil layers.")
    parser.add_argument("folder", nargs="?", type=pathlib.Path, help="for the three files")
    parser.add_argument("--picture", metavar="FILE", help="draws the layers and what they give")
    arguments = parser.parse_args()
    if arguments.picture:
        return draw(arguments.picture)
    folder: pathlib.Path = arguments.folder or parser.error("a folder is wanted")
    folder.mkdir(parents=True, exist_ok=True)
    try:
        merged = convert(LAYERS, MODEL, folder)
    except (kv.Error, ValueError, OSError) as error:
        sys.exit(str(error))
    for foundation in merged:
        if foundation.name.startswith("Raft at "):
            stiffness = foundation.value_area(2)
            print(f"{foundation.number:3} {foundation.name:14} {stiffness:9.1f} kN/m³")
    print(f"{len(merged)} foundations in {folder / 'model.xml'}, shown in {folder / 'model.html'}")


if __name__ == "__main__":
    main()
