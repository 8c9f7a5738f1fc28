"""How the foundations of two models differ."""

from __future__ import annotations

import os
import warnings
from typing import Any, Dict, List, NamedTuple, Optional, Sequence, Tuple, Union, overload

from . import _core

Path = Union[str, bytes, "os.PathLike[str]", "os.PathLike[bytes]"]


class UnitWarning(UserWarning):
    """Two models name different units, or only one of them names any; nothing is converted."""

    __module__ = "kvfound"


class FieldDifference(NamedTuple):
    """A field in which two foundations differ, such as "areaZ"."""

    field: str
    first: Any
    second: Any


class Difference(NamedTuple):
    """A foundation that one of the models lacks, or that has other values there.

    ``first`` and ``second`` are copies, which belong to no model; one that is lacking is ``None``.
    """

    first: Optional[_core.Foundation]
    second: Optional[_core.Foundation]
    fields: Tuple[FieldDifference, ...]

    @property
    def kind(self) -> str:
        """"added", "removed" or "changed"."""
        if self.first is None:
            return "added"
        return "removed" if self.second is None else "changed"

    def __str__(self) -> str:
        foundation = self.first if self.first is not None else self.second
        assert foundation is not None
        lines = [f'{self.kind}: number {foundation.number} "{foundation.name}"']
        lines += [f"    {field}: {first} -> {second}" for field, first, second in self.fields]
        return "\n".join(lines)


class Differences(Sequence[Difference]):
    """How two models differed when they were compared. True when they did.

    ``current`` holds copies of both current foundations where these differ, else ``None``.
    ``is_complete`` is false when not everything of both documents could be read. Two are equal when
    all of this is. Copies are of their own; pickle ``list(differences)``.
    """

    __slots__ = ("_comparison", "_differences", "current", "is_complete")

    def __init__(self, comparison: _core.Comparison) -> None:
        self._comparison = comparison
        self._differences = [
            Difference(first, second, tuple(FieldDifference(*field) for field in fields))
            for first, second, fields in comparison.differences
        ]
        self.is_complete = comparison.is_complete
        self.current: Optional[
            Tuple[Optional[_core.Foundation], Optional[_core.Foundation]]
        ] = (None if comparison.is_current_same else comparison.current)

    @overload
    def __getitem__(self, index: int) -> Difference: ...

    @overload
    def __getitem__(self, index: slice) -> List[Difference]: ...

    def __getitem__(self, index: Union[int, slice]) -> Union[Difference, List[Difference]]:
        return self._differences[index]

    def __len__(self) -> int:
        return len(self._differences)

    def __bool__(self) -> bool:
        return bool(self._differences) or self.current is not None

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Differences):
            return NotImplemented
        return self._tell() == other._tell()

    __hash__ = None  # type: ignore[assignment]

    def _tell(self) -> Tuple[Any, ...]:
        told = [(_tell(one.first), _tell(one.second), one.fields) for one in self]
        current = None if self.current is None else tuple(map(_tell, self.current))
        return told, current, self.is_complete

    def __copy__(self) -> Differences:
        return Differences(self._comparison)

    def __deepcopy__(self, memo: Dict[int, Any]) -> Differences:
        return Differences(self._comparison)  # whose foundations are copies

    def __reduce__(self) -> Tuple[Any, ...]:
        raise TypeError("Differences cannot be pickled; pickle list(differences)")

    def __repr__(self) -> str:
        current = "" if self.current is None else ", and which one is current"
        return f"<Differences: {len(self)}{current}>"

    def __str__(self) -> str:
        lines = [str(difference) for difference in self]
        if self.current is not None:
            first, second = (
                "none" if one is None else f'number {one.number} "{one.name}"' for one in self.current
            )
            lines.append(f"current: {first} -> {second}")
        return "\n".join(lines)

    def to_json(self) -> str:
        """What ``kvfound diff --format json`` prints."""
        return self._comparison.make_json()

    def to_html(self) -> str:
        """The page that ``kvfound diff --format html`` makes."""
        return self._comparison.make_page()

    def report(self, path: Path) -> None:
        """Write the page to a file, which may replace an older page only (else FileExistsError)."""
        _core.write_page(os.fsencode(path), self.to_html())


def _tell(foundation: Optional[_core.Foundation]) -> Any:
    """What makes a foundation, with name and number, which its own equality leaves out."""
    return None if foundation is None else (foundation.number, foundation.name, foundation)


def warn(note: str, level: int = 3) -> None:
    """Warn of units, unless there is nothing to tell."""
    if note:
        warnings.warn(note, UnitWarning, stacklevel=level)
