"""Beddings of structural models: kept, pruned, read and written."""

from __future__ import annotations

from ._core import Foundation, FoundationManager, __version__
from ._errors import DocumentError, Error, LossError
from ._failure import Failure
from ._messenger import ReadMessenger
from ._values import modify_value

Foundation.modify_value = staticmethod(modify_value)  # type: ignore[method-assign]

__all__ = [
    "DocumentError",
    "Error",
    "Failure",
    "Foundation",
    "FoundationManager",
    "LossError",
    "ReadMessenger",
    "__version__",
    "modify_value",
]
