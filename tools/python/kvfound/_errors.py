"""The errors of the package that Python has no class for."""

from __future__ import annotations

from typing import Optional, Sequence


class Error(Exception):
    """The base class of all errors of this package."""

    __module__ = "kvfound"


class DocumentError(Error, ValueError):
    """A document cannot be read, or cannot be written so that it can be read again.

    ``filename`` is the document as it was named, ``lineno`` and ``colno`` count from 1 (columns in
    bytes); each is ``None`` where it is not known. ``reason`` is the sentence without them.
    """

    __module__ = "kvfound"

    def __init__(
        self,
        reason: str,
        filename: Optional[str] = None,
        lineno: Optional[int] = None,
        colno: Optional[int] = None,
    ) -> None:
        super().__init__(reason, filename, lineno, colno)
        self.reason = reason
        self.filename = filename
        self.lineno = lineno
        self.colno = colno

    def __str__(self) -> str:
        place = [str(part) for part in (self.filename, self.lineno, self.colno) if part is not None]
        return ": ".join([":".join(place), self.reason]) if place else self.reason


class ChangedError(Error):
    """A file was changed by another program since it was read; nothing was written."""

    __module__ = "kvfound"


class ClashError(Error, ValueError):
    """Foundations that would be merged have number or name of others; nothing was merged.

    ``clashes`` holds a line for each, with the file and the place in it.
    """

    __module__ = "kvfound"

    def __init__(self, reason: str, clashes: Sequence[str] = ()) -> None:
        super().__init__(reason, tuple(clashes))
        self.reason = reason
        self.clashes = tuple(clashes)

    def __str__(self) -> str:
        return "\n".join([self.reason, *self.clashes])


class LossError(Error):
    """Writing would lose something; nothing was written. ``losses`` holds a sentence for each."""

    __module__ = "kvfound"

    def __init__(self, reason: str, losses: Sequence[str] = ()) -> None:
        super().__init__(reason, tuple(losses))
        self.reason = reason
        self.losses = tuple(losses)

    def __str__(self) -> str:
        return self.reason
