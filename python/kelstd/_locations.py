"""Converted positions."""

from __future__ import annotations

from typing import Any, Iterator, Mapping

import numpy as np
from numpy.typing import NDArray

from ._arrays import Labels, Positions
from ._errors import ValueRefusedError

__all__ = ["Locations", "Outcomes"]

_FAILED, _ABOVE_GEOID, _OUTSIDE_AREA, _OUTSIDE_HULL, _OUTSIDE_HEIGHT_HULL = 1, 2, 4, 8, 16


class _Column:
    """A column of a result; what it holds stands in the table below the class."""

    def __init__(self, source: str, place: int, text: str) -> None:
        self.source, self.place, self.__doc__ = source, place, text

    def __set_name__(self, owner: type, name: str) -> None:
        self.name = name

    def __get__(self, of: Any, owner: type | None = None) -> NDArray[np.float64]:
        if of is None:
            return self  # type: ignore[return-value]
        try:
            return of[self.name]  # type: ignore[no-any-return]
        except KeyError:
            raise AttributeError(f"there is no column {self.name!r}: the system has no site") from None


class Outcomes(Mapping[str, Any]):
    """What became of positions: arrays by their names, of the shape of what was given."""

    def __init__(self, raw: Mapping[str, Any], positions: Positions) -> None:
        self._raw = raw
        self._shape = positions.shape
        self._labels = positions.labels

    def _shaped(self, column: NDArray[Any]) -> Any:
        return column.reshape(self._shape)[()]

    def _bits(self, bit: int) -> Any:
        return self._shaped((self._raw["status"] & bit) != 0)

    @property
    def shape(self) -> tuple[int, ...]:
        return self._shape

    @property
    def failed(self) -> Any:
        """True for each position that was not converted; all of its numbers are NaN."""
        return self._bits(_FAILED)

    @property
    def reasons(self) -> Any:
        """Why each position failed, or why its height is not above the geoid; "" where all is well."""
        texts = np.array(self._raw["reasons"], dtype=object)
        numbers = self._raw["reason"]
        if numbers is None:
            numbers = np.zeros(len(self._raw["status"]), dtype=np.intp)
        return self._shaped(texts[numbers])

    def raise_failed(self) -> Any:
        """This result, where nothing failed.

        :raises ValueRefusedError: with the number of positions that failed and the first reason
        """
        failed = np.flatnonzero(self._raw["status"] & _FAILED)
        if failed.size:
            first = int(failed[0])
            reason = self._raw["reasons"][self._raw["reason"][first]]
            raise ValueRefusedError(
                f"{failed.size} of {len(self._raw['status'])} positions failed; the first is at "
                f"index {first}: {reason}"
            )
        return self

    def _names(self) -> tuple[str, ...]:
        raise NotImplementedError

    def __iter__(self) -> Iterator[str]:
        return iter(self._names())

    def __len__(self) -> int:
        return len(self._names())

    def to_frame(self) -> Any:
        """A pandas DataFrame of all columns, with the index of the columns that were given."""
        import pandas

        columns = {name: np.ravel(self[name]) for name in self}
        columns["failed"] = np.ravel(self.failed)
        return pandas.DataFrame(columns, index=self._labels.index)

    def to_dataset(self) -> Any:
        """An xarray Dataset of all columns, with the dimensions and coordinates of what was given."""
        import xarray

        like = self._labels.template
        names = list(self) + ["failed"]
        arrays = {name: self.failed if name == "failed" else self[name] for name in names}
        if like is None:
            dims = tuple(f"dim_{axis}" for axis in range(len(self._shape)))
            return xarray.Dataset({name: (dims, array) for name, array in arrays.items()})
        coords = {name: coord for name, coord in like.coords.items()}
        return xarray.Dataset({name: (like.dims, array) for name, array in arrays.items()}, coords)

    def __repr__(self) -> str:
        failed = int(np.count_nonzero(self._raw["status"] & _FAILED))
        return f"<{type(self).__name__} of shape {self._shape}, {failed} failed: {', '.join(self)}>"


class Locations(Outcomes):
    """Positions in all four frames, and in the coordinates of a site where the system has one.

    Each column is an attribute and an item (``locations["local_northing_m"]``), named as in the
    output of ``kelstd convert``. The arrays are views of one block of memory: nothing is copied.
    """

    wgs84_longitude_deg = _Column("locations", 0, "WGS84 longitude [deg]")
    wgs84_latitude_deg = _Column("locations", 1, "WGS84 latitude [deg]")
    wgs84_height_m = _Column("locations", 2, "height above the WGS84 ellipsoid [m]")
    wgs84_x_m = _Column("locations", 3, "WGS84, earth-centred X [m]")
    wgs84_y_m = _Column("locations", 4, "WGS84, earth-centred Y [m]")
    wgs84_z_m = _Column("locations", 5, "WGS84, earth-centred Z [m]")
    local_longitude_deg = _Column("locations", 6, "longitude on the local ellipsoid [deg]")
    local_latitude_deg = _Column("locations", 7, "latitude on the local ellipsoid [deg]")
    local_ellipsoidal_height_m = _Column("locations", 8, "height above the local ellipsoid [m]")
    local_northing_m = _Column("locations", 10, "northing in the plane [m]")
    local_easting_m = _Column("locations", 9, "easting in the plane [m]")
    local_height_m = _Column("locations", 11, "height above what local_height_reference says [m]")
    site_northing_m = _Column("site", 1, "northing at the site [m]; of a system with a site")
    site_easting_m = _Column("site", 0, "easting at the site [m]; of a system with a site")
    site_height_m = _Column("site", 2, "height at the site [m]; of a system with a site")

    def __init__(self, raw: Mapping[str, Any], positions: Positions, geoid_model: str) -> None:
        super().__init__(raw, positions)
        self._geoid_model = geoid_model

    def _names(self) -> tuple[str, ...]:
        return tuple(
            name for name, column in _COLUMNS.items() if self._raw[column.source] is not None
        )

    def __getitem__(self, name: str) -> Any:
        if name == "local_height_reference":
            return self.local_height_reference
        column = _COLUMNS.get(name)
        if column is None or self._raw[column.source] is None:
            raise KeyError(name)
        return self._shaped(self._raw[column.source][:, column.place])

    @property
    def northing(self) -> Any:
        """``local_northing_m``"""
        return self["local_northing_m"]

    @property
    def easting(self) -> Any:
        """``local_easting_m``"""
        return self["local_easting_m"]

    @property
    def height(self) -> Any:
        """``local_height_m``"""
        return self["local_height_m"]

    @property
    def local_height_reference(self) -> Any:
        """What ``local_height_m`` is above: "ellipsoid" or "geoid MODEL", "" where it failed."""
        texts = np.array(["ellipsoid", "", f"geoid {self._geoid_model}"], dtype=object)
        return self._shaped(texts[self._raw["status"] & (_FAILED | _ABOVE_GEOID)])

    @property
    def outside_area(self) -> Any:
        """True for each position outside the area of use of the system, as far as it is known."""
        return self._bits(_OUTSIDE_AREA)

    @property
    def outside_hull(self) -> Any:
        """True for each position outside the control points of the system's site, in plan or in height."""
        return self._bits(_OUTSIDE_HULL | _OUTSIDE_HEIGHT_HULL)


_COLUMNS: dict[str, _Column] = {
    name: column for name, column in vars(Locations).items() if isinstance(column, _Column)
}
