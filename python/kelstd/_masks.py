"""Masked arrays, whose hidden values are no values."""

from __future__ import annotations

from typing import Any

import numpy as np
from numpy.typing import NDArray

__all__ = ["leaf_types", "plain_and_mask"]


def leaf_types(values: Any) -> set[type]:
    """The types of what lists and tuples hold, however deep; of columns in them, those of their items, too."""
    types: set[type] = set(map(type, values))
    if not any(issubclass(kind, (list, tuple)) or _is_column(kind) for kind in types):
        return types
    for item in values:
        if isinstance(item, (list, tuple)):
            types |= leaf_types(item)
        elif _is_column(type(item)):
            types.add(item.dtype.type)
    return types


def _is_column(kind: type) -> bool:
    return hasattr(kind, "dtype") and not issubclass(kind, np.generic)


def plain_and_mask(value: Any) -> tuple[Any, NDArray[np.bool_] | None]:
    """``value`` without its mask, and where that hides something; None where nothing is masked.

    A list of masked arrays, whose masks numpy.asarray would drop, is one masked array.
    """
    if isinstance(value, (list, tuple)) and any(
        issubclass(kind, np.ma.MaskedArray) for kind in leaf_types(value)
    ):
        value = _stacked(value)
    if not isinstance(value, np.ma.MaskedArray):
        return value, None
    mask = np.ma.getmaskarray(value)  # type: ignore[no-untyped-call]
    data = np.asarray(value.data)
    if data.dtype == object:
        data = data.copy()
        data[mask] = None
    return data, mask


def _stacked(values: Any) -> Any:
    rows: list[Any] = [
        _stacked(item) if isinstance(item, (list, tuple)) else item if item is np.ma.masked
        else np.ma.asarray(item)  # type: ignore[no-untyped-call]
        for item in values
    ]
    # The constant is a number, whatever is masked.
    kind = next((row.dtype for row in rows if row is not np.ma.masked), np.dtype(np.float64))
    nothing = np.ma.masked_all((), dtype=kind)  # type: ignore[no-untyped-call]
    return np.ma.stack([nothing if row is np.ma.masked else row for row in rows])
