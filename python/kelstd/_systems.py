"""Coordinate systems."""

from __future__ import annotations

import json
import math
import os
from typing import Any, Mapping, NamedTuple
from xml.etree import ElementTree

from . import _core
from ._arrays import warn
from ._texts import plain_text, whole_path

__all__ = ["DatumShift", "Definitions", "Origin", "PlaneUnit", "System"]


class Definitions(NamedTuple):
    """The four PROJ definitions between which the positions of a system are converted."""

    wgs84_geographic: str
    wgs84_cartesian: str
    local_geographic: str
    local_projected: str


class DatumShift(NamedTuple):
    """The operation of a database that a datum shift was taken from."""

    code: str  #: "EPSG:4833", empty without one
    name: str
    accuracy_m: float | None  #: [m] as the database has it


class PlaneUnit(NamedTuple):
    """A unit of northings and eastings."""

    name: str
    metres: float  #: what one of it measures [m]


class Origin(NamedTuple):
    """Where a system came from and where it is meant to be used, as far as that is known."""

    code: str  #: "EPSG:28992", empty without one
    database: str  #: the database that it was read from, "EPSG v10.076"
    area: tuple[float, float, float, float] | None  #: west, south, east, north [deg, WGS84]
    area_name: str
    countries: tuple[str, ...]
    datum_shift: DatumShift | None
    #: in which northings and eastings are customarily given; None for metres. All numbers of this
    #: package are in metres all the same.
    plane_unit: PlaneUnit | None


class System:
    """A coordinate system: ellipsoid, datum shift, projection, geoid model and site.

    A system never changes. It is made by :meth:`open`, :meth:`find` or :meth:`from_xml`, can be
    used on any thread and can be pickled.
    """

    __slots__ = ("_core",)

    def __init__(self, core: Any) -> None:
        if not isinstance(core, _core.System):
            raise TypeError("a system is made by System.open, System.find or System.from_xml")
        self._core = core

    @classmethod
    def open(cls, path: str | os.PathLike[str], *, lenient: bool = False) -> System:
        """Reads the document of a coordinate system.

        :param path: the file
        :param lenient: use a document all the same that has more, or something else, than is
            understood and used, or values that cannot be meant; each becomes a warning
        :raises SystemNotFoundError: there is no such file
        :raises SystemRefusedError: it is no document of a system, or it is in doubt and not
            ``lenient``; ``details`` has the findings
        """
        whole = whole_path(path)
        return cls._noted(_core.read_file(whole, str(path), bool(lenient)))

    @classmethod
    def find(
        cls,
        name: str,
        *,
        library: str | os.PathLike[str] | None = None,
        lenient: bool = False,
        at: tuple[float, float] | None = None,
        shift: str | int | None = None,
        take_as_wgs84: bool = False,
        fit: bool = False,
    ) -> System:
        """Finds the system of a name, a code or a definition.

        It is looked for as the program ``kelstd`` does: in the library of the home directory, custom
        systems before standard ones, by its exact name or its code ("EPSG:28992" or "28992"); what
        is not there is imported, where PROJ's database knows it. Which datum shift was taken is a
        warning, and in ``warnings`` and ``report``.

        :param name: a name, a code, or a definition: WKT, PROJJSON or a PROJ string
        :param library: the directory of another library
        :param lenient: as for :meth:`open`
        :param at: import, with the datum shift for this place: WGS84 longitude, latitude [deg]
        :param shift: import, with this datum shift: a code ("EPSG:15934") or a number
        :param take_as_wgs84: import, and where there is no datum shift take the local cartesian
            coordinates as those of WGS84; on a classical ellipsoid that is wrong by up to a kilometre
        :param fit: import, with seven parameters fitted to PROJ's own result
        :raises SystemNotFoundError: nothing is known by this name
        :raises SystemRefusedError: no datum shift is stated, the import misses PROJ's own result,
            several systems have the code, or the document is in doubt
        :raises NotReadyError: PROJ or the library cannot be used
        """
        text = plain_text("the name of a system", name)
        place = None if at is None else _place(at)
        directory = "" if library is None else whole_path(library)
        chosen = "" if shift is None else plain_text("the datum shift", str(shift)).strip()
        if shift is not None and not chosen:
            raise ValueError("the datum shift has no name")
        found = _core.find(
            text, directory, bool(lenient), place, chosen, bool(take_as_wgs84), bool(fit)
        )
        return cls._noted(found)

    @classmethod
    def from_xml(cls, text: str | bytes, *, lenient: bool = False) -> System:
        """Reads a document from memory, as :meth:`open` does from a file."""
        if not isinstance(text, (str, bytes)):
            raise TypeError("a document is a text or its bytes")
        document = plain_text("the document", text).encode() if isinstance(text, str) else text
        return cls._noted(_core.read_text(document, bool(lenient)))

    @classmethod
    def _noted(cls, core: Any) -> System:
        warn([f"{core.source}: {text}" for text in core.warnings])
        return cls(core)

    @classmethod
    def _unpickled(cls, text: str) -> System:
        # It was accepted once, and its findings were told then.
        return cls(_core.read_text(text.encode(), True))

    def __reduce__(self) -> tuple[Any, ...]:
        return System._unpickled, (self.to_xml(),)

    def to_xml(self) -> str:
        """The document of the system, which :meth:`from_xml` reads; its encoding is UTF-8."""
        return str(self._core.document())

    def save(self, path: str | os.PathLike[str]) -> None:
        """Writes the document, whole or not at all; a file that is there is replaced."""
        self._core.save(whole_path(path))

    @property
    def name(self) -> str:
        return str(self._core.name)

    @property
    def code(self) -> str:
        """The code in a database, "EPSG:28992"; empty where none is known."""
        return self.origin.code

    @property
    def definitions(self) -> Definitions:
        """The PROJ definitions of the four frames."""
        return Definitions(*self._core.definitions)

    @property
    def origin(self) -> Origin:
        known = dict(self._core.origin)
        shift, unit = known["datum_shift"], known["plane_unit"]
        known["countries"] = tuple(known["countries"])
        known["datum_shift"] = None if shift is None else DatumShift(*shift)
        known["plane_unit"] = None if unit is None else PlaneUnit(*unit)
        return Origin(**known)

    @property
    def geoid_model(self) -> str:
        """The geoid model that the heights of the plane refer to; empty for ellipsoidal ones."""
        return str(self._core.geoid_model)

    @property
    def has_site(self) -> bool:
        """Whether the system has coordinates of a building site."""
        return bool(self._core.has_site)

    @property
    def notes(self) -> tuple[str, ...]:
        """What is peculiar about the system: what PROJ is given instead, which way axes count."""
        return tuple(self._core.notes)

    @property
    def warnings(self) -> tuple[str, ...]:
        """What was warned of when the system was found or read."""
        return tuple(self._core.warnings)

    @property
    def report(self) -> Mapping[str, Any] | None:
        """The report of an import, with the keys of ``kelstd system import --json``; else None."""
        text = self._core.report
        return json.loads(text) if text else None

    def __repr__(self) -> str:
        code = f" ({self.code})" if self.code else ""
        return f"<System {self.name!r}{code}>"

    def __eq__(self, other: object) -> bool:
        return isinstance(other, System) and self._canonical() == other._canonical()

    def __hash__(self) -> int:
        return hash(self._canonical())

    def _canonical(self) -> str:
        # The attributes of a document are in no order of their own.
        return str(ElementTree.canonicalize(self.to_xml()))


def _place(at: Any) -> tuple[float, float]:
    try:
        longitude, latitude = () if isinstance(at, str) else (float(number) for number in at)
    except (TypeError, ValueError):
        raise ValueError("a place is its longitude and latitude in degrees") from None
    if not (math.isfinite(longitude) and abs(longitude) <= 360 and abs(latitude) <= 90):
        raise ValueError(f"there is no place at longitude {longitude}, latitude {latitude}")
    return longitude, latitude
