"""What all tests of the Python package share."""

import pathlib

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]


@pytest.fixture
def examples():
    """The folder of sample documents."""
    return ROOT / "examples"


@pytest.fixture
def seeds():
    """The folder of the fuzz targets' seeds, well-formed and malformed."""
    return ROOT / "fuzz" / "seeds"
