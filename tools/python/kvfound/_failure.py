"""What a direction of a bedding does under tension and compression."""

from __future__ import annotations

import enum


class Failure(enum.IntEnum):
    """The sign of stiffness that is lost in a direction, see :func:`modify_value`."""

    __module__ = "kvfound"

    #: Negative stiffness shrinks to a residual value.
    TENSION = -1
    #: The direction never fails.
    NONE = 0
    #: Positive stiffness shrinks to a residual value.
    COMPRESSION = 1
