"""Not run: what a type checker says of it is tested."""

from typing import Any

import numpy as np
from numpy.typing import NDArray

import kelstd

system: kelstd.System = kelstd.System.find("EPSG:28992", at=(5.4, 52.1))
definition: str = system.definitions.local_projected
accuracy: float | None = system.origin.datum_shift.accuracy_m if system.origin.datum_shift else None
made: kelstd.Locations = kelstd.Converter(system).from_wgs84([5.0], np.array([52.0]), 0, threads=1)
northing: NDArray[np.float64] = made.local_northing_m
named: dict[str, Any] = dict(made)
separations: kelstd.Separations = kelstd.Geoid("egm96_15.gtx").separations(5, 52)
week: kelstd.WeekSeconds = kelstd.week_seconds_from_utc(np.datetime64("2024-01-01"))
fit: kelstd.SiteFit = kelstd.fit_site(system, [kelstd.ControlPoint("A", 5, 52, 0, 1, 2)])
site: kelstd.System = fit.system

kelstd.Converter("EPSG:28992")  # wrong: no System
kelstd.System.find(28992)  # wrong: no text
made.local_northings_m  # wrong: no such column
kelstd.Converter(system).from_wgs84(5, 52)  # wrong: no height
kelstd.nothing  # wrong: no such name
