"""How foundations and managers come back from a pickle or a copy."""

from __future__ import annotations

from typing import Any, Dict, Iterable, Optional, Type, TypeVar

from . import _core

_F = TypeVar("_F", bound=_core.Foundation)
_M = TypeVar("_M", bound=_core.FoundationManager)


def restore_foundation(cls: Type[_F], values: Dict[str, Any], changed: bool) -> _F:
    """Make a foundation of ``cls``, whose own ``__init__`` is not called, of the values."""
    made = cls.__new__(cls)
    _core.Foundation.__init__(made, **values)
    made.changed = changed
    return made


def restore_manager(
    cls: Type[_M], foundations: Iterable[_core.Foundation], current: Optional[int], max_value: float
) -> _M:
    """Make a manager of ``cls``, whose own ``__init__`` is not called, of the foundations."""
    made = cls.__new__(cls)
    _core.FoundationManager.__init__(made, foundations)
    if current is not None:
        made.current = made[current]
    made.max_value = max_value
    return made
