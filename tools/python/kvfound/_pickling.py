"""How foundations and managers come back from a pickle or a copy."""

from __future__ import annotations

import copy
from typing import Any, Dict, List, Optional, Tuple, Type, TypeVar

from . import _core

_F = TypeVar("_F", bound=_core.Foundation)
_M = TypeVar("_M", bound=_core.FoundationManager)

#: Foundations, index of the current one, max_value and what a subclass keeps.
_State = Tuple[List[_core.Foundation], Optional[int], float, Optional[Dict[str, Any]]]


def restore_foundation(cls: Type[_F], values: Dict[str, Any], changed: bool) -> _F:
    """Make a foundation of ``cls``, whose own ``__init__`` is not called, of the values."""
    made = cls.__new__(cls)
    _core.Foundation.__init__(made, **values)
    made.changed = changed
    return made


def restore_manager(cls: Type[_M]) -> _M:
    """Make an empty manager of ``cls``, whose own ``__init__`` is not called."""
    made = cls.__new__(cls)
    _core.FoundationManager.__init__(made)
    return made


def reduce_manager(manager: _M) -> Tuple[Any, Tuple[Type[_M]], _State]:
    """What a pickle holds of a manager.

    The foundations come after the manager itself, so that they may refer to it.
    """
    foundations = manager.foundations
    current = manager.current
    index = next((i for i, listed in enumerate(foundations) if listed is current), None)
    attributes = getattr(manager, "__dict__", None)
    return restore_manager, (type(manager),), (foundations, index, manager.max_value, attributes)


def set_manager_state(manager: _core.FoundationManager, state: _State) -> None:
    """Fill an empty manager."""
    if len(manager) > 0:
        raise ValueError("only an empty manager takes the state of another one")
    foundations, current, max_value, attributes = state
    manager.extend(foundations)
    if current is not None:
        manager.current = foundations[current]
    manager.max_value = max_value
    if attributes:
        manager.__dict__.update(attributes)


def copy_manager(manager: _M) -> _M:
    """A manager with copies of the foundations."""
    _, (cls,), (foundations, current, max_value, attributes) = reduce_manager(manager)
    made = restore_manager(cls)
    copies = [copy.copy(listed) for listed in foundations]
    set_manager_state(made, (copies, current, max_value, attributes))
    return made
