"""Foundations as tables: lists of dicts, numpy arrays, frames of pandas, and back."""

from __future__ import annotations

import sys
from typing import TYPE_CHECKING, Any, Dict, Iterable, List, Mapping, Tuple, Union

from . import _core

if TYPE_CHECKING:
    import numpy as np
    import numpy.typing as npt
    import pandas as pd

    Table = Union[pd.DataFrame, Mapping[str, Any], Iterable[Mapping[str, Any]]]

_UNTOLD = object()  # in a row that lacks a column which others have


class Tables:
    """What models and managers have in common: their foundations as tables.

    A table has a row a foundation, in their order, and these columns:

    ==============  =======  ====================================================================
    column          type     meaning
    ==============  =======  ====================================================================
    number          int
    name            str
    generated       bool
    areaX, Y, Z     float    stiffness of the area, force / length³
    areaFailureZ    str      "none", "tension" or "compression" (another int as its digits)
    areaFactor      float    tangential factor of the area
    lineX, Y, Z     float    stiffness of the line, force / length²
    lineRotationX   float    stiffness of the line about x, moment / length / radian
    lineFailureX..  str      of the line in x, y and z
    lineFactor      float    tangential factor of the line
    current         bool     whether it is the current foundation of the model
    ==============  =======  ====================================================================

    These are the names and values of tables (CSV) and of JSON, too, and never change.
    """

    __slots__ = ()

    def to_dicts(self) -> List[Dict[str, Any]]:
        """The foundations as a list of dicts; a stiffness that is absent is None."""
        return _core.make_dicts(_get_manager(self))

    def to_numpy(self) -> Dict[str, npt.NDArray[Any]]:
        """The foundations as a dict of arrays of the same length, a column each.

        ``number`` is of int64, flags of bool, stiffness and factors of float64, names and failures
        of object. A stiffness that is absent is NaN. The arrays are copies. Needs numpy, else
        raises ImportError.
        """
        _import("numpy", "to_numpy()")
        return _core.make_arrays(_get_manager(self))

    def to_pandas(self) -> pd.DataFrame:
        """The foundations as a frame of pandas with the columns of :meth:`to_numpy`.

        Rows are counted from 0; ``set_index("number")`` or ``set_index("name")`` names them. Needs
        pandas, else raises ImportError.
        """
        pandas = _import("pandas", "to_pandas()")
        columns = _core.make_arrays(_get_manager(self))
        frame: pd.DataFrame = pandas.DataFrame(columns, copy=False)  # nobody else has them
        return frame

    def update(self, table: Table, *, by: str = "number", add: bool = False) -> int:
        """Give the foundations the values of a table, or change nothing and raise.

        ``table`` is a frame of pandas, a mapping of columns (arrays, lists) or an iterable of
        mappings, one a row. ``by`` is the column, "number" or "name", that tells which foundation
        a row is about; an index of that name does as well. Columns that are missing leave their
        values alone, keys that a row lacks and rows that are missing likewise. With ``add``, rows
        about no foundation become new ones at the end, without a name unless the table has one,
        and numbered on from the highest number unless the table has numbers. A model refuses names
        and numbers that another of its foundations has then, as saving would; a manager takes them.

        A stiffness that is None, NaN or missing to pandas is absent: a component of a vector of
        which another has a value counts as 0, and the vector goes when nothing is left of it. (So
        a table cannot store a NaN; one that is there stays, as a factor likewise.) In other columns
        nothing may be missing. Whole floats such as 7.0 are fine as numbers, 7.5 is not. Failures
        are words, :class:`Failure` or int.

        Returns how many foundations have changed or are new. Raises ValueError for columns that
        there are not, rows about the same foundation or about none, a number or name that several
        foundations have or would have, two current ones, and wrong or missing values; TypeError
        for values of another type; OverflowError for numbers beyond the range of 32 bits;
        RuntimeError where rows would be added while the list of foundations is in use.
        """
        if by not in ("number", "name"):
            raise ValueError(f"by: 'number' or 'name' is wanted, not {by!r}")
        columns = _make_columns(table, by)
        unique = _list_unique(self)
        changed, added = _core.update(_get_manager(self), columns, by, add, unique, _UNTOLD)
        return changed + added


def attach(owner: type) -> None:
    """Give a class that is not made in Python the operations of Tables."""
    for name in ("to_dicts", "to_numpy", "to_pandas", "update"):
        setattr(owner, name, getattr(Tables, name))


def _get_manager(owner: Any) -> _core.FoundationManager:
    if isinstance(owner, _core.FoundationManager):
        return owner
    manager: _core.FoundationManager = owner.foundations
    return manager


def _list_unique(owner: Any) -> List[str]:
    """What no two foundations of it may have alike: all that its document stores of these."""
    if isinstance(owner, _core.FoundationManager):
        return []
    return ["name"] if owner.form == "exchange-1.0" else ["number", "name"]


def _import(name: str, what: str) -> Any:
    try:
        return __import__(name)
    except ImportError as error:
        raise ImportError(f"{what} needs {name}, which is not installed", name=name) from error


def _make_columns(table: Any, by: str) -> Dict[str, Tuple[Any, ...]]:
    """The columns by name, as tuples of Python's own values where numpy has such."""
    pandas = sys.modules.get("pandas")  # who has a frame has imported it
    if pandas is not None and isinstance(table, pandas.DataFrame):
        return _split_frame(table, by)
    if isinstance(table, Mapping):
        return {name: _make_cells(name, column) for name, column in table.items()}
    if isinstance(table, (str, bytes)) or not isinstance(table, Iterable):
        wanted = "a frame of pandas, a mapping of columns or an iterable of mappings"
        raise TypeError(f"table: {wanted} is wanted, not {type(table).__name__}")
    return _split_rows(table, by)


def _split_frame(frame: pd.DataFrame, by: str) -> Dict[str, Tuple[Any, ...]]:
    if frame.index.name == by and by not in frame.columns:
        frame = frame.reset_index()
    if not frame.columns.is_unique:
        twice = frame.columns[frame.columns.duplicated()][0]
        raise ValueError(f"the table has the column {twice!r} twice")
    return {name: tuple(column.tolist()) for name, column in frame.items()}


def _make_cells(name: str, column: Any) -> Tuple[Any, ...]:
    if isinstance(column, (str, bytes)) or not isinstance(column, Iterable):
        raise TypeError(f"{name}: a column is wanted, not {type(column).__name__}")
    dimensions = getattr(column, "ndim", 1)
    if dimensions != 1:
        raise ValueError(f"{name}: a column has one dimension, not {dimensions}")
    dtype = getattr(column, "dtype", None)
    if getattr(dtype, "kind", None) in ("M", "m"):  # some of which would become plain ints
        raise TypeError(f"{name}: times are no values: a column of {dtype}")
    to_list = getattr(column, "tolist", None)  # of arrays and series: their numbers become Python's
    return tuple(to_list() if to_list is not None else column)


def _split_rows(table: Iterable[Any], by: str) -> Dict[str, Tuple[Any, ...]]:
    rows: List[Dict[str, Any]] = []
    for row in table:
        if not isinstance(row, Mapping):
            raise TypeError(f"row {len(rows)}: a mapping is wanted, not {type(row).__name__}")
        rows.append(dict(row))
    names = dict.fromkeys(name for row in rows for name in row)
    columns = {name: tuple(row.get(name, _UNTOLD) for row in rows) for name in names}
    return columns if rows else {by: ()}
