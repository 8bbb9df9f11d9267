"""Positions from one frame to all others."""

from __future__ import annotations

from typing import Any

import numpy as np

from . import _core
from ._arrays import Positions, take_positions, thread_count, warn
from ._locations import (
    _ABOVE_GEOID,
    _FAILED,
    _OUTSIDE_AREA,
    _OUTSIDE_HEIGHT_HULL,
    _OUTSIDE_HULL,
    Locations,
    Outcomes,
)
from ._systems import System
from ._texts import plain_text

__all__ = ["FRAMES", "Converter", "Geoid", "Separations", "geoid_models"]

_GEOGRAPHIC = ("longitude", "latitude", "height")
_PLANE = ("northing", "easting", "height")

#: The frames that positions can be given in, by their names in ``kelstd convert --from``, with the
#: components of a position in their order.
FRAMES: dict[str, tuple[str, str, str]] = {
    "wgs84-llh": _GEOGRAPHIC,
    "wgs84-xyz": ("x", "y", "z"),
    "local-llh": _GEOGRAPHIC,
    "local-neh": _PLANE,
    "site-neh": _PLANE,
}
_NUMBERS = {name: number for number, name in enumerate(FRAMES)}

#: What of the fit of a site does not hold, and what is said of it.
_EITHER_HULL = _OUTSIDE_HULL | _OUTSIDE_HEIGHT_HULL
_OUTSIDE_SITE = {
    _EITHER_HULL: "the control points of the site, where errors of its fit grow",
    _OUTSIDE_HULL: "the control points of the site used in plan, where errors of northing and easting grow",
    _OUTSIDE_HEIGHT_HULL: "the control points of the site used in height, where errors of its heights grow",
}


class Converter:
    """Converts positions of a coordinate system, from any frame to all.

    Each component is a number, an array, or a column of pandas or xarray; they are broadcast as by
    numpy. Angles are in degrees, lengths in metres, always. A position that cannot be converted
    costs the others nothing: its numbers are NaN, ``failed`` is True and ``reasons`` says why. So it
    is of one with a NaN or an infinity, of a longitude beyond 360 or a latitude beyond 90 degrees,
    and of one where the projection is not one-to-one, far outside its area, as ``kelstd convert``
    has it. Positions outside the area of use of the system, or of the control points of its site,
    and those for which the geoid model has no value, are warned of (:class:`KelstdWarning`).

    The same positions give the same bits, whatever the number of threads and of calls. Calls on
    several threads wait for each other only while nothing is computed. A converter can be pickled,
    and used after a fork; each process prepares its own.

    :param system: the coordinate system
    :raises SystemRefusedError: PROJ cannot convert by it
    """

    def __init__(self, system: System) -> None:
        if not isinstance(system, System):
            raise TypeError("a converter is made for a System")
        self._system = system
        self._core = _core.ArrayConversion(system._core)
        warn([f"{system._core.source}: {text}" for text in self._core.warnings])

    def __reduce__(self) -> tuple[Any, ...]:
        return Converter, (self._system,)

    def __repr__(self) -> str:
        return f"<Converter of {self._system!r}>"

    @property
    def system(self) -> System:
        return self._system

    @property
    def geoid_model(self) -> str:
        """The geoid model in use; empty where heights are ellipsoidal."""
        return str(self._core.geoid_model)

    def from_wgs84(self, lon: Any, lat: Any, h: Any, *, threads: int | None = None) -> Locations:
        """From WGS84 longitude, latitude [deg] and height above the ellipsoid [m].

        :param threads: how many to use at most; all cores that the process may use for None. Give 1
            where something else spreads the work, such as Dask.
        :raises TypeError: something is no column of real numbers
        :raises ValueError: the shapes do not fit each other, or columns have different indexes
        """
        return self.convert("wgs84-llh", lon, lat, h, threads=threads)

    from_wgs84_llh = from_wgs84

    def from_wgs84_xyz(self, x: Any, y: Any, z: Any, *, threads: int | None = None) -> Locations:
        """From WGS84 earth-centred X, Y, Z [m]. For the rest see :meth:`from_wgs84`."""
        return self.convert("wgs84-xyz", x, y, z, threads=threads)

    def from_local_llh(self, lon: Any, lat: Any, h: Any, *, threads: int | None = None) -> Locations:
        """From longitude, latitude [deg] and height above the local ellipsoid [m].

        For the rest see :meth:`from_wgs84`.
        """
        return self.convert("local-llh", lon, lat, h, threads=threads)

    def from_local_neh(
        self, northing: Any, easting: Any, h: Any, *, threads: int | None = None
    ) -> Locations:
        """From northing, easting [m], in this order, and height [m].

        The height is one above the geoid where the system names a model that has a value for the
        point, else one above the local ellipsoid. For the rest see :meth:`from_wgs84`.
        """
        return self.convert("local-neh", northing, easting, h, threads=threads)

    def from_site_neh(
        self, northing: Any, easting: Any, h: Any, *, threads: int | None = None
    ) -> Locations:
        """From northing, easting and height at the site of the system [m], in this order.

        For the rest see :meth:`from_wgs84`.

        :raises ValueError: the system has no site
        """
        return self.convert("site-neh", northing, easting, h, threads=threads)

    def convert(
        self, frame: str, first: Any, second: Any, third: Any, *, threads: int | None = None
    ) -> Locations:
        """From a frame by its name in :data:`FRAMES`, in the order of its components there."""
        if frame not in FRAMES:
            raise ValueError(f"there is no frame {frame!r}; there are {', '.join(FRAMES)}")
        if frame == "site-neh" and not self._core.has_site:
            raise ValueError(f"{self._system!r} has no site")
        positions = take_positions(FRAMES[frame], (first, second, third))
        raw = self._core.convert(_NUMBERS[frame], *positions.columns, thread_count(threads))
        self._warn_of(raw)
        return Locations(raw, positions, self.geoid_model)

    def geoid_separations(
        self, lon: Any, lat: Any, h: Any = 0.0, *, threads: int | None = None
    ) -> Separations:
        """How far the geoid lies above the WGS84 ellipsoid, by the geoid model of the system.

        :param lon: WGS84 longitude [deg]
        :param lat: WGS84 latitude [deg]
        :param h: height above the ellipsoid [m], on which nothing depends in most models
        :raises ValueError: the system has no geoid model that can be used
        """
        if not self.geoid_model:
            raise ValueError(f"{self._system!r} has no geoid model that can be used")
        return _separations(self._core, lon, lat, h, threads)

    def _warn_of(self, raw: dict[str, Any]) -> None:
        status = raw["status"]
        count, any_of = len(status), int(np.bitwise_or.reduce(status, initial=0))
        texts = []
        if any_of & _OUTSIDE_AREA:
            texts.append(
                f"{_share(status & _OUTSIDE_AREA)} outside the area of use of the system, {raw['area']}"
            )
        if any_of & _EITHER_HULL:
            for bits, place in _OUTSIDE_SITE.items():
                found = (status & _EITHER_HULL) == bits
                if found.any():
                    texts.append(f"{_share(found)} outside {place}")
        if self.geoid_model and count:
            ellipsoidal = np.flatnonzero((status & (_FAILED | _ABOVE_GEOID)) == 0)
            if ellipsoidal.size:
                texts.append(
                    f"the geoid model {self.geoid_model!r} has no value for {ellipsoidal.size} of "
                    f"{count} positions, whose projected heights are ellipsoidal; the first is at "
                    f"index {int(ellipsoidal[0])}"
                )
        warn(texts)


def _share(found: Any) -> str:
    at = np.flatnonzero(found)
    verb = "lies" if len(found) == 1 else "lie"
    return f"{at.size} of {len(found)} positions (the first at index {int(at[0])}) {verb}"


class Separations(Outcomes):
    """How far the geoid lies above the ellipsoid."""

    def _names(self) -> tuple[str, ...]:
        return ("geoid_separation_m",)

    def __getitem__(self, name: str) -> Any:
        if name != "geoid_separation_m":
            raise KeyError(name)
        return self._shaped(self._raw["separations"])

    @property
    def geoid_separation_m(self) -> Any:
        """Height above the geoid = ellipsoidal height - separation [m]; NaN where there is none."""
        return self["geoid_separation_m"]


def _separations(core: Any, lon: Any, lat: Any, h: Any, threads: int | None) -> Separations:
    positions: Positions = take_positions(_GEOGRAPHIC, (lon, lat, h))
    return Separations(core.separations(*positions.columns, thread_count(threads)), positions)


class Geoid:
    """A geoid model by its name.

    :param name: one of :func:`geoid_models`
    :raises SystemNotFoundError: there is no such model, or PROJ cannot read it
    """

    def __init__(self, name: str) -> None:
        self._name = plain_text("the name of a geoid model", name)
        self._core = _core.ArrayConversion(_core.system_of_model(name))

    def __reduce__(self) -> tuple[Any, ...]:
        return Geoid, (self._name,)

    def __repr__(self) -> str:
        return f"<Geoid {self._name!r}>"

    @property
    def name(self) -> str:
        return self._name

    def separations(
        self, lon: Any, lat: Any, h: Any = 0.0, *, threads: int | None = None
    ) -> Separations:
        """How far the geoid lies above the WGS84 ellipsoid; see :meth:`Converter.geoid_separations`."""
        return _separations(self._core, lon, lat, h, threads)


def geoid_models() -> list[str]:
    """The names of the geoid models of the home directory and of those that are delivered."""
    return list(_core.geoid_models())
