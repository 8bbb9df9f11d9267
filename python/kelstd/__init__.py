"""Coordinate systems for GNSS surveying: positions of a system in all of its frames.

    >>> import kelstd
    >>> rd = kelstd.System.open("examples/rd_new.xml")
    >>> here = kelstd.Converter(rd).from_wgs84(5.81015219, 52.17852792, 90.865)
    >>> print(f"{here.easting:.2f} {here.northing:.2f} {here.height:.2f}")
    183928.88 465682.97 47.58

Angles are in degrees and lengths in metres, everywhere. docs/python.md is the guide.
"""

from ._converter import FRAMES, Converter, Geoid, Separations, geoid_models
from ._core import home_dir, program_dir, version as __version__
from ._errors import (
    Error,
    FitRefusedError,
    KelstdWarning,
    NotReadyError,
    SystemNotFoundError,
    SystemRefusedError,
    ValueRefusedError,
)
from ._locations import Locations
from ._sites import ControlPoint, SiteCheck, SiteFit, check_site, control_points, fit_site
from ._systems import DatumShift, Definitions, Origin, PlaneUnit, System
from ._times import (
    WeekSeconds,
    gps_from_utc,
    gps_from_week_seconds,
    gps_minus_utc,
    is_leap_second,
    leap_seconds_known_until,
    utc_from_gps,
    utc_from_week_seconds,
    week_seconds_from_gps,
    week_seconds_from_utc,
)
from ._values import format_angle, format_length, parse_angle, parse_length

__all__ = [
    "FRAMES",
    "ControlPoint",
    "Converter",
    "DatumShift",
    "Definitions",
    "Error",
    "FitRefusedError",
    "Geoid",
    "KelstdWarning",
    "Locations",
    "NotReadyError",
    "Origin",
    "PlaneUnit",
    "Separations",
    "SiteCheck",
    "SiteFit",
    "System",
    "SystemNotFoundError",
    "SystemRefusedError",
    "ValueRefusedError",
    "WeekSeconds",
    "check_site",
    "control_points",
    "fit_site",
    "format_angle",
    "format_length",
    "geoid_models",
    "gps_from_utc",
    "gps_from_week_seconds",
    "gps_minus_utc",
    "home_dir",
    "is_leap_second",
    "leap_seconds_known_until",
    "parse_angle",
    "parse_length",
    "program_dir",
    "utc_from_gps",
    "utc_from_week_seconds",
    "week_seconds_from_gps",
    "week_seconds_from_utc",
]
