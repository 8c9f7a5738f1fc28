"""Operations on values that need no foundation."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, Union, overload

from . import _core

if TYPE_CHECKING:
    import numpy
    import numpy.typing


@overload
def modify_value(failure: int, value: float) -> float: ...


@overload
def modify_value(
    failure: int, value: numpy.typing.NDArray[Any]
) -> numpy.typing.NDArray[numpy.float64]: ...


def modify_value(failure: int, value: Any) -> Union[float, Any]:
    """A stiffness as it acts in a direction with this failure mode.

    1e-5 where it is positive and fails in compression, -1e-5 where it is negative and fails in
    tension, otherwise the value itself, be it 0. What fails is not 0, so that equations stay
    solvable.

    A number gives a float, a numpy array of any shape an array of that shape, with the mask that it
    has. Raises TypeError for anything else.
    """
    if getattr(value, "ndim", 0) == 0:
        return _core.modify_value(failure, value)
    dtype = getattr(value, "dtype", None)
    if getattr(dtype, "kind", None) not in ("i", "u", "f"):
        raise TypeError(f"value: an array of numbers is wanted, not of {dtype}")
    import numpy

    is_masked = isinstance(value, numpy.ma.MaskedArray)
    modified = numpy.array(value, dtype=numpy.float64, order="C", subok=is_masked)
    _core.modify_values(failure, modified)
    return modified
