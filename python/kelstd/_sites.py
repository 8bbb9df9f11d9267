"""Building sites: coordinates of their own, fitted to control points."""

from __future__ import annotations

import json
import math
from dataclasses import astuple, dataclass, fields
from typing import Any, Iterable, Mapping

from . import _core
from ._arrays import warn
from ._systems import System
from ._texts import plain_text

__all__ = ["ControlPoint", "SiteCheck", "SiteFit", "check_site", "control_points", "fit_site"]


@dataclass(frozen=True)
class ControlPoint:
    """A point of a site that is known twice: measured by GNSS, and in the site's coordinates."""

    name: str
    longitude: float  #: WGS84 [deg]
    latitude: float  #: WGS84 [deg]
    height: float  #: above the WGS84 ellipsoid [m]
    northing: float  #: at the site [m]
    easting: float  #: at the site [m]
    elevation: float | None = None  #: height at the site [m], where it is known
    use: str | None = None  #: "hv", "h" (in plan), "v" (in height) or "-"; None for all it has
    sigma_h: float | None = None  #: standard deviation of northing and of easting, each [m]
    sigma_v: float | None = None  #: standard deviation of the elevation [m]


@dataclass(frozen=True)
class SiteFit:
    """A fitted site. The dictionaries have the keys of ``kelstd site fit --json``."""

    system: System  #: the base system with the records of the site and its control points
    horizontal: Mapping[str, Any]  #: method, shifts [m], rotation [arc seconds], scale, statistics
    vertical: Mapping[str, Any]  #: method, coefficients a to f, slopes [ppm], statistics
    points: tuple[Mapping[str, Any], ...]  #: residuals, calculated minus control [m], and tests
    warnings: tuple[str, ...]  #: what a surveyor has to see before relying on the fit


@dataclass(frozen=True)
class SiteCheck:
    """Points held against a site. The dictionaries have the keys of ``kelstd site check --json``."""

    points: tuple[Mapping[str, Any], ...]  #: differences, site less control [m]
    horizontal: Mapping[str, Any]
    vertical: Mapping[str, Any]


def fit_site(
    system: System,
    points: Any,
    *,
    horizontal: str | None = None,
    vertical: str | None = None,
    sigma_h: float | None = None,
    sigma_v: float | None = None,
    without: Iterable[str] = (),
    name: str | None = None,
) -> SiteFit:
    """Fits a building site to control points, as ``kelstd site fit`` does.

    ``Converter(fit.system)`` then gives coordinates at the site beside the four frames.

    :param system: the base system
    :param points: :class:`ControlPoint` objects, mappings with its fields, or a pandas DataFrame with
        columns of these names
    :param horizontal: "four" (two shifts, rotation and scale), "rotation", "shift" or "none"; None
        for four
    :param vertical: "fixed" (one shift), "plane", "curve" or "none"; None for plane from four points
        with elevations on, else fixed
    :param sigma_h: standard deviation [m] of northings and eastings of points without one
    :param sigma_v: the same of elevations
    :param without: names of points that stay in the list but are not used
    :param name: the name of the site; None for that of the base system
    :raises FitRefusedError: the points do not make the fit; the text says what to do
    """
    _require_system(system)
    for word in (horizontal, vertical, name):
        if word is not None:
            plain_text("a method or a name", word)
    if isinstance(without, str):
        raise TypeError("without is a list of names")
    core, text = _core.fit_site(
        system._core, _rows(points), horizontal, vertical, _number_or_none("sigma_h", sigma_h),
        _number_or_none("sigma_v", sigma_v), [plain_text("a name", one) for one in without], name,
    )
    report = json.loads(text)
    warn(report["warnings"])
    return SiteFit(
        System(core), report["horizontal"], report["vertical"], tuple(report["points"]),
        tuple(report["warnings"]),
    )


def check_site(system: System, points: Any) -> SiteCheck:
    """Holds independent points against a site; nothing is fitted.

    :param points: as for :func:`fit_site`
    :raises FitRefusedError: a point cannot be converted, or a name stands there twice
    """
    _require_system(system)
    report = json.loads(_core.check_site(system._core, _rows(points)))
    return SiteCheck(tuple(report["points"]), report["horizontal"], report["vertical"])


def control_points(system: System) -> list[ControlPoint]:
    """The control points that the document of a site keeps, with what each was used for."""
    _require_system(system)
    return [ControlPoint(*row) for row in _core.control_points(system._core)]


_NAMES = tuple(field.name for field in fields(ControlPoint))
_NEEDED = _NAMES[:6]


def _require_system(system: Any) -> None:
    if not isinstance(system, System):
        raise TypeError("a site is that of a System")


def _rows(points: Any) -> list[tuple[Any, ...]]:
    if hasattr(points, "to_dict") and hasattr(points, "columns"):
        points = points.to_dict("records")
    return [_row(point) for point in points]


def _row(point: Any) -> tuple[Any, ...]:
    if isinstance(point, ControlPoint):
        values = dict(zip(_NAMES, astuple(point)))
    elif isinstance(point, Mapping):
        unknown = [str(key) for key in point if key not in _NAMES]
        missing = [name for name in _NEEDED if name not in point]
        if unknown or missing:
            raise ValueError(
                f"a control point has no {', '.join(unknown)}" if unknown
                else f"a control point lacks {', '.join(missing)}"
            )
        values = {name: point.get(name) for name in _NAMES}
    else:
        raise TypeError("a control point is a ControlPoint or a mapping with its fields")
    use = values["use"]
    has_use = isinstance(use, str) or not (use is None or use != use)
    numbers = [float(values[name]) for name in _NEEDED[1:]]
    return (
        plain_text("the name of a point", str(values["name"])), *numbers, _number_or_none("elevation", values["elevation"]),
        plain_text("the use", str(use)) if has_use else None, _number_or_none("sigma_h", values["sigma_h"]),
        _number_or_none("sigma_v", values["sigma_v"]),
    )


def _number_or_none(name: str, value: Any) -> float | None:
    """None, and NaN, which tables have in its place, for what is not known."""
    if value is None:
        return None
    number = float(value)
    return None if math.isnan(number) else number
