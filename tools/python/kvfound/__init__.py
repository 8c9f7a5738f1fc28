"""Beddings of structural models: kept, pruned, read and written."""

from __future__ import annotations

from collections.abc import Sequence as _Sequence

from . import _core

if not _core.is_main_interpreter():
    raise ImportError("kvfound works in the main interpreter only")

from ._core import Foundation, FoundationManager, __version__
from ._differences import Difference, Differences, FieldDifference, UnitWarning
from ._errors import ChangedError, ClashError, DocumentError, Error, LossError
from ._failure import Failure
from ._findings import RULES, Finding, Findings
from ._messenger import ReadMessenger
from ._model import Merged, Model, diff
from ._model import open_model as open
from ._tables import attach as _attach_tables
from ._values import modify_value

setattr(Foundation, "modify_value", staticmethod(modify_value))
_attach_tables(FoundationManager)
_Sequence.register(FoundationManager)

__all__ = [
    "ChangedError",
    "ClashError",
    "Difference",
    "Differences",
    "DocumentError",
    "Error",
    "Failure",
    "FieldDifference",
    "Finding",
    "Findings",
    "Foundation",
    "FoundationManager",
    "LossError",
    "Merged",
    "Model",
    "RULES",
    "ReadMessenger",
    "UnitWarning",
    "__version__",
    "diff",
    "modify_value",
    "open",
]
