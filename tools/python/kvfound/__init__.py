"""Beddings of structural models: kept, pruned, read and written."""

from __future__ import annotations

from ._core import Foundation, FoundationManager, __version__
from ._errors import DocumentError, Error, LossError
from ._failure import Failure

__all__ = [
    "DocumentError",
    "Error",
    "Failure",
    "Foundation",
    "FoundationManager",
    "LossError",
    "__version__",
]
