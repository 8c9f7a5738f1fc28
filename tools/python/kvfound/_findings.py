"""What is found in documents that readers accept in silence."""

from __future__ import annotations

import copy
from typing import Any, Dict, Iterable, List, NamedTuple, Optional, Sequence, Tuple, Union, overload

from . import _core


class Finding(NamedTuple):
    """Something in a document that its readers accept in silence.

    ``line`` and ``column`` count from 1, columns in bytes; ``line`` is 0 where it is about all of
    the document, and ``column`` where it is about all of a line. ``rule`` names the kind and never
    changes, see ``kvfound.RULES``. ``foundation`` is the one that it is about, or ``None``.
    """

    filename: str
    line: int
    column: int
    rule: str
    sentence: str
    foundation: Optional[_core.Foundation]

    @property
    def severity(self) -> str:
        """Always "warning": what cannot be read raises DocumentError."""
        return "warning"

    def __str__(self) -> str:
        return f"{self.filename}:{self.line}:{self.column}: {self.severity}: {self.sentence}"


class Findings(Sequence[Finding]):
    """The findings of a document, in its order. True when there are any.

    Copies are of their own; pickle ``list(findings)``, which holds all but the documents.
    """

    __slots__ = ("_checked", "_findings")

    def __init__(self, findings: Iterable[Finding], checked: Iterable[_core.Checked]) -> None:
        self._findings = list(findings)
        self._checked = list(checked)

    @overload
    def __getitem__(self, index: int) -> Finding: ...

    @overload
    def __getitem__(self, index: slice) -> List[Finding]: ...

    def __getitem__(self, index: Union[int, slice]) -> Union[Finding, List[Finding]]:
        return self._findings[index]

    def __len__(self) -> int:
        return len(self._findings)

    def __add__(self, other: Findings) -> Findings:
        if not isinstance(other, Findings):
            return NotImplemented
        return Findings([*self, *other], [*self._checked, *other._checked])

    def __eq__(self, other: object) -> bool:
        if isinstance(other, Findings):
            return self._findings == other._findings
        if isinstance(other, list):
            return self._findings == other
        return NotImplemented

    __hash__ = None  # type: ignore[assignment]

    def __copy__(self) -> Findings:
        return Findings(self._findings, self._checked)

    def __deepcopy__(self, memo: Dict[int, Any]) -> Findings:
        return Findings(copy.deepcopy(self._findings, memo), self._checked)

    def __reduce__(self) -> Tuple[Any, ...]:
        raise TypeError("Findings cannot be pickled; pickle list(findings)")

    def __repr__(self) -> str:
        return f"<Findings: {len(self)}>"

    def __str__(self) -> str:
        """A line each, as the program prints them."""
        return "\n".join(map(str, self))

    def to_json(self) -> str:
        """What ``kvfound check --format json`` prints."""
        return _core.make_check_json(self._checked)

    def to_sarif(self) -> str:
        """A log in SARIF 2.1.0, which editors and forges show beside the documents."""
        return _core.make_sarif(self._checked)


#: The kinds of findings, with a sentence each.
RULES: Dict[str, str] = dict(_core.list_rules())
