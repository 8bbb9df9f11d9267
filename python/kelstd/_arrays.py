"""Columns of any kind, taken as arrays of double-precision numbers."""

from __future__ import annotations

import os
import sys
import warnings
from dataclasses import dataclass
from typing import Any, Sequence

import numpy as np
from numpy.typing import NDArray

from ._errors import KelstdWarning
from ._masks import leaf_types, plain_and_mask

__all__ = ["Labels", "Positions", "take_columns", "take_positions", "thread_count", "warn"]


@dataclass(frozen=True)
class Labels:
    """What the columns that were given are labelled by: an index of pandas, or a template of xarray."""

    index: Any = None
    template: Any = None


@dataclass(frozen=True)
class Positions:
    """Three one-dimensional columns of one length, and the shape that they stand for."""

    columns: tuple[NDArray[np.float64], NDArray[np.float64], NDArray[np.float64]]
    shape: tuple[int, ...]
    labels: Labels


def warn(texts: Sequence[str]) -> None:
    """Warns the caller of the package, who is the first one outside of it."""
    depth = 2
    frame = sys._getframe(1)
    here = os.path.dirname(__file__)
    while frame.f_back is not None and os.path.dirname(frame.f_code.co_filename) == here:
        frame = frame.f_back
        depth += 1
    for text in texts:
        warnings.warn(text, KelstdWarning, stacklevel=depth)


def thread_count(threads: int | None) -> int:
    """The number of threads to use; all that this process may run on for None."""
    if threads is None:
        return len(os.sched_getaffinity(0)) if hasattr(os, "sched_getaffinity") else os.cpu_count() or 1
    if isinstance(threads, bool) or not isinstance(threads, (int, np.integer)):
        raise TypeError("threads is a whole number or None")
    if not 1 <= threads <= 1024:
        raise ValueError("threads is between 1 and 1024")
    return int(threads)


def _number_array(name: str, value: Any) -> NDArray[np.float64]:
    """A column as numbers. What is missing (masked, NA, None in a column of numbers) becomes NaN."""
    if isinstance(value, (list, tuple)) and leaf_types(value) & {bool, np.bool_}:
        raise TypeError(f"{name} holds truth values, not real numbers")  # which numpy would promote
    value, mask = plain_and_mask(value)
    if isinstance(value, (str, bytes)):
        raise TypeError(f"{name} is a text; parse_angle and parse_length read texts")
    elif hasattr(value, "to_numpy") and hasattr(value, "dtype") and not isinstance(value, np.ndarray):
        value = _of_labelled(name, value)
    array = np.asarray(value)
    if array.dtype == object:
        array = _of_objects(name, array)
    if array.dtype.kind not in "fiu":
        raise TypeError(f"{name} holds {array.dtype}, not real numbers")
    numbers = np.asarray(array, dtype=np.float64)
    return numbers if mask is None else np.where(mask, np.nan, numbers)


def _of_labelled(name: str, column: Any) -> Any:
    """The values of a column of pandas or xarray; its own missing values become NaN."""
    kind = getattr(column.dtype, "kind", "O")
    if kind in "mMbSU" or str(column.dtype) in ("string", "boolean", "category"):
        raise TypeError(f"{name} holds {column.dtype}, not real numbers")
    if isinstance(column.dtype, np.dtype):
        return column.to_numpy()
    return column.to_numpy(dtype=np.float64, na_value=np.nan)


def _of_objects(name: str, array: NDArray[Any]) -> NDArray[np.float64]:
    if array.size == 0:
        return array.astype(np.float64)
    numbers = np.empty(array.shape, dtype=np.float64)
    missing = getattr(sys.modules.get("pandas"), "NA", None)
    for at, item in np.ndenumerate(array):
        # Numpy has kinds of its own of which float() makes numbers: truth values, times, complex ones.
        kind = getattr(getattr(item, "dtype", None), "kind", "f")
        if isinstance(item, (str, bytes, bool, complex)) or kind not in "fiu":
            raise TypeError(f"{name} holds {item!r}, which is no real number")
        try:
            numbers[at] = np.nan if item is None or item is missing or item is np.ma.masked else float(item)
        except (TypeError, ValueError, OverflowError):
            raise TypeError(f"{name} holds {item!r:.100}, which is no real number") from None
    return numbers


def take_columns(names: Sequence[str], values: Sequence[Any]) -> tuple[list[NDArray[np.float64]], Labels]:
    """Columns of one shape: numbers, arrays that broadcast, columns of pandas or xarray.

    Columns of pandas have to have the same index, in the same order; those of xarray are brought
    together by the names of their dimensions.
    """
    labels, values = _aligned(names, values)
    arrays = [_number_array(name, value) for name, value in zip(names, values)]
    try:
        shape = np.broadcast_shapes(*(array.shape for array in arrays))
    except ValueError:
        shapes = ", ".join(f"{name} {array.shape}" for name, array in zip(names, arrays))
        raise ValueError(f"the shapes do not fit each other: {shapes}") from None
    if labels.index is not None and shape != (len(labels.index),):
        raise ValueError(f"columns of {len(labels.index)} rows do not make the shape {shape}")
    return [np.broadcast_to(array, shape) for array in arrays], labels


def take_positions(names: Sequence[str], values: Sequence[Any]) -> Positions:
    """Three columns as positions, as :func:`take_columns` takes them."""
    arrays, labels = take_columns(names, values)
    first, second, third = (array.reshape(-1) for array in arrays)
    return Positions((first, second, third), arrays[0].shape, labels)


def _aligned(names: Sequence[str], values: Sequence[Any]) -> tuple[Labels, list[Any]]:
    pandas, xarray = sys.modules.get("pandas"), sys.modules.get("xarray")
    series = [] if pandas is None else [v for v in values if isinstance(v, pandas.Series)]
    arrays = [] if xarray is None else [v for v in values if isinstance(v, xarray.DataArray)]
    if series and arrays:
        raise TypeError("columns of pandas and of xarray are not combined")
    if series:
        for name, value in zip(names, values):
            if any(value is one for one in series) and not value.index.equals(series[0].index):
                raise ValueError(f"the index of {name} is another one than that of the other columns")
        return Labels(index=series[0].index), list(values)
    if arrays:
        assert xarray is not None
        arrays = list(xarray.broadcast(*xarray.align(*arrays, join="exact")))
        template = arrays[0]
        taken: list[Any] = []
        for name, value in zip(names, values):
            if isinstance(value, xarray.DataArray):
                taken.append(arrays.pop(0).transpose(*template.dims).to_numpy())
            elif np.ndim(value) == 0:
                taken.append(value)
            else:
                raise TypeError(f"{name} has no dimensions' names, unlike the other columns")
        return Labels(template=template), taken
    return Labels(), list(values)
