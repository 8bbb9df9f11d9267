"""Angles and lengths as texts."""

from __future__ import annotations

from typing import Any, Callable

import numpy as np

from . import _core
from ._errors import ValueRefusedError
from ._masks import plain_and_mask
from ._texts import plain_text

__all__ = ["format_angle", "format_length", "parse_angle", "parse_length"]


def format_angle(
    degrees: Any, kind: str = "angle", *, style: str = "dms", decimals: int | None = None
) -> Any:
    """Angles as texts, such as 52\N{DEGREE SIGN}10\N{PRIME}42.700500\N{DOUBLE PRIME}N.

    :param degrees: [deg], a number or an array
    :param kind: "longitude" and "latitude" end in E, W, N or S; "angle" has a sign
    :param style: "dms", "degree", "second" or "radian"
    :param decimals: of the last part, 0 to 15; None for 0.000001 of an arc second
    :return: a text, or an array of texts
    :raises ValueRefusedError: a number that is not finite, or an unknown word
    """
    plain_text("the kind", kind), plain_text("the style", style)
    shown = None if decimals is None else _decimals(decimals)
    return _each(lambda one: _core.format_angle(float(one), kind, style, shown), degrees)


def parse_angle(text: Any, kind: str = "angle") -> Any:
    """Angles as people type them, in degrees.

    Read are 52.5, 52d30'15.5", 52:30:15.5 and the same with the signs of degrees, minutes and
    seconds; N, S, E or W before or behind, for the ``kind`` that has them; decimals behind a point or
    a comma. A leading minus counts for the whole angle. What can be read in two ways is refused.

    :param text: a text, or an array of texts
    :raises ValueRefusedError: a text that is no such angle; it says which
    """
    return _each(lambda one: _core.parse_angle(plain_text("an angle", one), plain_text("the kind", kind)), text, np.float64)


def format_length(metres: Any, unit: str = "m", *, decimals: int = 3) -> Any:
    """Lengths as texts without their unit.

    :param metres: [m], a number or an array
    :param unit: "m", "ft", "us-ft" (the US survey foot) or "mm"
    :param decimals: 0 to 15
    """
    plain_text("the unit", unit)
    shown = _decimals(decimals)
    return _each(lambda one: _core.format_length(float(one), unit, shown), metres)


def parse_length(text: Any, unit: str = "m") -> Any:
    """Texts of lengths in ``unit``, a number without a unit behind it each, as metres."""
    return _each(lambda one: _core.parse_length(plain_text("a length", one), plain_text("the unit", unit)), text, np.float64)


def _decimals(value: Any) -> int:
    if isinstance(value, bool) or not isinstance(value, (int, np.integer)):
        raise TypeError("decimals is a whole number")
    return max(-1, min(int(value), 1000))  # of which the library takes those that it can print


def _each(make: Callable[[Any], Any], values: Any, dtype: Any = object) -> Any:
    values, mask = plain_and_mask(values)
    if mask is not None and mask.any():
        raise ValueRefusedError(f"the value at index {int(np.flatnonzero(mask)[0])} is masked")
    if isinstance(values, str) or np.ndim(values) == 0:
        return make(values.item() if isinstance(values, np.ndarray) else values)
    given = np.asarray(values, dtype=object)
    made = np.empty(given.shape, dtype=dtype)
    for at, value in np.ndenumerate(given):
        made[at] = make(value)
    return made
