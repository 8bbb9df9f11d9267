"""UTC and GPS time, in arrays of ``numpy.datetime64``."""

from __future__ import annotations

import datetime
from typing import Any, NamedTuple

import numpy as np
from numpy.typing import NDArray

from . import _core
from ._arrays import take_columns, warn
from ._masks import plain_and_mask

__all__ = [
    "WeekSeconds",
    "gps_from_utc",
    "gps_from_week_seconds",
    "gps_minus_utc",
    "is_leap_second",
    "leap_seconds_known_until",
    "utc_from_gps",
    "utc_from_week_seconds",
    "week_seconds_from_gps",
    "week_seconds_from_utc",
]

_SECOND = 1_000_000_000
_WEEK = 604_800 * _SECOND
_WEEK_0 = int(np.datetime64("1980-01-06", "ns").astype(np.int64))
_NAT = np.iinfo(np.int64).min
_FARTHEST = int(np.iinfo(np.int64).max) - 100 * _SECOND  # from 1970; the scales differ by less
_WHOLE_0, _REST_0 = divmod(_WEEK_0, _WEEK)  # weeks from 1970, and the rest

_ROWS = np.array(_core.leap_seconds(), dtype=np.int64)
_FROM_UTC = _ROWS[:, 0] * 1_000_000
_COUNTS = _ROWS[:, 1]
_FROM_GPS = _FROM_UTC + _COUNTS * _SECOND
_LEAPS = np.diff(_COUNTS, prepend=_COUNTS[0])


class WeekSeconds(NamedTuple):
    """GPS time as weeks since 1980-01-06, which do not roll over, and seconds of the week."""

    week: Any  #: whole numbers (int64); before 1980 negative
    seconds: Any  #: [s], 0 to below 604800; exact to the nanosecond when rounded to it


def gps_from_utc(utc: Any) -> Any:
    """UTC instants on the scale of GPS time.

    :param utc: ``datetime64`` of any unit, ``datetime`` or columns of pandas or xarray; those with a
        time zone are taken as the instants that they are
    :return: ``datetime64[ns]`` whose calendar is that of GPS time; NaT stays NaT
    :raises TypeError: something is no time
    :raises ValueError: a time that nanoseconds do not hold, outside 1678 to 2262 or finer
    """
    ns = _nanoseconds("utc", utc, takes_zones=True)
    return _times(np.where(ns == _NAT, _NAT, ns + gps_minus_utc_ns(ns)))


def utc_from_gps(gps: Any) -> Any:
    """GPS times, whose calendar is that of the GPS scale, as UTC instants.

    ``datetime64`` has no 23:59:60. A GPS time in a leap second becomes the instant of the second
    behind it, 00:00:00 and its fraction, as everywhere in KelStd; :func:`is_leap_second` tells these
    apart, and a warning says how many there are.

    :return: ``datetime64[ns]``; NaT stays NaT
    """
    ns = _nanoseconds("gps", gps, takes_zones=False)
    leaps = int(np.count_nonzero(_in_leap_second(ns)))
    if leaps:
        warn([f"{leaps} of {ns.size} times lie in a leap second, which datetime64 cannot tell from "
              "the second behind it"])
    row = np.searchsorted(_FROM_GPS, ns, side="right") - 1
    return _times(np.where(ns == _NAT, _NAT, ns - _COUNTS[np.maximum(row, 0)] * _SECOND))


def is_leap_second(gps: Any) -> Any:
    """Whether GPS times lie in a second that UTC inserts, 23:59:60."""
    return _in_leap_second(_nanoseconds("gps", gps, takes_zones=False))[()]


def gps_minus_utc(utc: Any) -> Any:
    """The leap-second count at UTC instants, GPS minus UTC [s]; NaT raises a ValueError.

    Before 1972 it is that of 1972; instants beyond :func:`leap_seconds_known_until` have the last
    one that is known.
    """
    ns = _nanoseconds("utc", utc, takes_zones=True)
    _refuse_nat("utc", ns)
    return (gps_minus_utc_ns(ns) // _SECOND)[()]


def gps_minus_utc_ns(ns: NDArray[np.int64]) -> NDArray[np.int64]:
    row = np.searchsorted(_FROM_UTC, ns, side="right") - 1
    return np.asarray(_COUNTS[np.maximum(row, 0)] * _SECOND)


def leap_seconds_known_until() -> np.datetime64:
    """Until when it is known that the table of leap seconds lacks none (UTC)."""
    return np.datetime64(_core.leap_seconds_known_until(), "ms")


def week_seconds_from_gps(gps: Any) -> WeekSeconds:
    """GPS times as week and seconds; NaT raises a ValueError, as whole weeks have no such value."""
    ns = _nanoseconds("gps", gps, takes_zones=False)
    _refuse_nat("gps", ns)
    whole, rest = np.divmod(ns, _WEEK)
    carried, rest = np.divmod(rest - _REST_0, _WEEK)
    return WeekSeconds((whole - _WHOLE_0 + carried)[()], (rest / _SECOND)[()])


def week_seconds_from_utc(utc: Any) -> WeekSeconds:
    """UTC instants as GPS week and seconds; NaT raises a ValueError."""
    return week_seconds_from_gps(gps_from_utc(utc))


def gps_from_week_seconds(week: Any, seconds: Any) -> Any:
    """GPS weeks, counted from 1980-01-06 without a roll-over, and seconds of the week as GPS times.

    :return: ``datetime64[ns]`` on the GPS scale; NaT where either is NaN
    :raises ValueError: a week that is not whole, seconds outside 0 to below 604800, or a time
        outside 1678 to 2262; columns that do not fit each other, as in :meth:`Converter.from_wgs84`
    """
    (weeks, parts), _ = take_columns(("week", "seconds"), (week, seconds))
    missing = np.isnan(weeks) | np.isnan(parts)
    _refuse("week", "is no whole number of weeks", ~missing & (weeks != np.floor(weeks)), weeks)
    _refuse("seconds", "is not between 0 and 604800", ~missing & ~((parts >= 0) & (parts < 604800)), parts)
    carried, rest = np.divmod(np.rint(np.where(missing, 0, parts) * _SECOND).astype(np.int64) + _REST_0, _WEEK)
    whole = np.clip(np.where(missing, 0, weeks), -1e6, 1e6).astype(np.int64) + _WHOLE_0 + carried
    first, last = divmod(-_FARTHEST, _WEEK), divmod(_FARTHEST, _WEEK)
    before = (whole < first[0]) | ((whole == first[0]) & (rest < first[1]))
    behind = (whole > last[0]) | ((whole == last[0]) & (rest > last[1]))
    _refuse("week", "is no time that nanoseconds hold", ~missing & (before | behind), weeks)
    # A negative week is counted from its end, as its beginning can be further than nanoseconds reach.
    up = np.where(whole < 0, 1, 0)
    return _times(np.where(missing, _NAT, (whole + up) * _WEEK + (rest - up * _WEEK)))


def utc_from_week_seconds(week: Any, seconds: Any) -> Any:
    """GPS weeks and seconds of the week as UTC instants; see :func:`utc_from_gps`."""
    return utc_from_gps(gps_from_week_seconds(week, seconds))


def _in_leap_second(ns: NDArray[np.int64]) -> NDArray[np.bool_]:
    row = np.minimum(np.searchsorted(_FROM_GPS, ns, side="right"), len(_FROM_GPS) - 1)
    before = _FROM_GPS[row] - ns
    return np.asarray((ns != _NAT) & (before > 0) & (before <= _LEAPS[row] * _SECOND))


def _times(ns: NDArray[np.int64]) -> Any:
    return ns.astype(np.int64).view("datetime64[ns]")[()]


def _nanoseconds(name: str, value: Any, takes_zones: bool) -> NDArray[np.int64]:
    array = _datetimes(name, value, takes_zones)
    ns = array.astype("datetime64[ns]")
    same = (ns.astype(array.dtype) == array) | np.isnat(array)
    numbers = np.asarray(ns.view(np.int64)) if ns.ndim else ns.reshape(1).view(np.int64).reshape(())
    far = (numbers != _NAT) & (np.abs(numbers) > _FARTHEST)
    _refuse(name, "is no time that nanoseconds hold", ~same | far, array)
    return np.asarray(numbers)


def _datetimes(name: str, value: Any, takes_zones: bool) -> NDArray[np.datetime64]:
    if str(getattr(value, "dtype", "")).startswith("datetime64[ns, "):
        if not takes_zones:
            raise TypeError(f"{name} has a time zone, which GPS time has not")
        converted = value.dt if hasattr(value, "dt") else value
        value = converted.tz_convert("UTC").to_numpy(dtype="datetime64[ns]") \
            if converted is value else converted.tz_convert("UTC").dt.tz_localize(None).to_numpy()
    value, mask = plain_and_mask(value)
    array = np.asarray(value)
    if array.dtype == object:
        array = np.array([_one_time(name, item, takes_zones) for item in array.ravel()],
                         dtype="datetime64[ns]").reshape(array.shape)
    if array.dtype.kind != "M":
        raise TypeError(f"{name} holds {array.dtype}, not times (datetime64)")
    return array if mask is None else np.where(mask, np.datetime64("NaT"), array)


def _one_time(name: str, item: Any, takes_zones: bool) -> np.datetime64:
    if item is None:
        return np.datetime64("NaT")
    if not isinstance(item, (datetime.datetime, np.datetime64)):
        raise TypeError(f"{name} holds {item!r}, which is no time")
    zone = getattr(item, "tzinfo", None)
    if zone is not None:
        if not takes_zones:
            raise TypeError(f"{name} has a time zone, which GPS time has not")
        item = item.astimezone(datetime.timezone.utc).replace(tzinfo=None)  # type: ignore[union-attr]
    if hasattr(item, "to_datetime64"):
        item = item.to_datetime64()
    exact = np.datetime64(item)
    if not np.isnat(exact) and exact.astype("datetime64[ns]").astype(exact.dtype) != exact:
        raise ValueError(f"{name}: {item} is no time that nanoseconds hold")
    return np.datetime64(exact, "ns")


def _refuse_nat(name: str, ns: NDArray[np.int64]) -> None:
    _refuse(name, "is no time", ns == _NAT, ns.astype(np.int64))


def _refuse(name: str, why: str, where: Any, values: Any) -> None:
    at = np.flatnonzero(where)
    if at.size:
        value = np.ravel(values)[at[0]]
        shown = "NaT" if why == "is no time" else value
        raise ValueError(f"{name} {shown} at index {int(at[0])} {why}")
