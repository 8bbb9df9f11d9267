"""Sites: a similarity that is known is found again, and stored, checked and applied."""

import json
import math
import os
import pathlib
import subprocess

import numpy as np
import pandas
import pytest

from conftest import ROOT

# The site turns the plane by 30 degrees, scales it by 1.0001 and shifts it; heights are 5 m less.
ROTATION, SCALE, NORTH, EAST, DOWN = math.radians(30), 1.0001, 1000.0, 5000.0, 5.0


@pytest.fixture(scope="module")
def known(kelstd, rd_converter):
    lon, lat = np.array([5.39, 5.40, 5.41, 5.395, 5.405]), np.array([52.15, 52.16, 52.15, 52.17, 52.155])
    h = np.array([50.0, 60.0, 55.0, 52.0, 58.0])
    made = rd_converter.from_wgs84(lon, lat, h)
    n, e = made.northing - 463000, made.easting - 155000
    north = NORTH + SCALE * (math.cos(ROTATION) * n - math.sin(ROTATION) * e)
    east = EAST + SCALE * (math.sin(ROTATION) * n + math.cos(ROTATION) * e)
    return [
        kelstd.ControlPoint(*row)
        for row in zip("ABCDE", lon, lat, h, north, east, made.height - DOWN)
    ]


@pytest.fixture(scope="module")
def fitted(kelstd, rd, known):
    with pytest.warns(kelstd.KelstdWarning, match="plane"):
        return kelstd.fit_site(rd, known, name="Harbour")


def test_a_known_similarity_is_found(kelstd, fitted, known):
    assert fitted.system.name == "Harbour" and fitted.system.has_site and fitted.system.code == ""
    assert fitted.horizontal["method"] == "four" and fitted.vertical["method"] == "plane"
    assert fitted.horizontal["scale"] == pytest.approx(SCALE, abs=1e-9)
    assert abs(fitted.horizontal["rotation_arcsec"]) == pytest.approx(30 * 3600, abs=1e-4)
    assert fitted.horizontal["rms_m"] < 1e-6 and fitted.vertical["rms_m"] < 1e-6
    assert [point["name"] for point in fitted.points] == list("ABCDE")
    with pytest.raises(AttributeError):
        fitted.points = ()


def test_the_converter_of_a_site_gives_its_coordinates(kelstd, fitted, known):
    converter = kelstd.Converter(fitted.system)
    made = converter.from_wgs84([p.longitude for p in known], [p.latitude for p in known],
                                [p.height for p in known])
    assert list(made)[12:] == ["site_northing_m", "site_easting_m", "site_height_m"]
    np.testing.assert_allclose(made.site_northing_m, [p.northing for p in known], atol=1e-6)
    np.testing.assert_allclose(made.site_easting_m, [p.easting for p in known], atol=1e-6)
    np.testing.assert_allclose(made.site_height_m, [p.elevation for p in known], atol=1e-6)
    back = converter.from_site_neh(made.site_northing_m, made.site_easting_m, made.site_height_m)
    np.testing.assert_allclose(back.wgs84_longitude_deg, [p.longitude for p in known], atol=1e-11)
    assert (back.site_northing_m == made.site_northing_m).all()
    assert not made.outside_hull.any()


def test_a_point_far_from_the_site_is_told_of(kelstd, fitted):
    converter = kelstd.Converter(fitted.system)
    with pytest.warns(kelstd.KelstdWarning, match=r"1 of 2 positions \(the first at index 1\) lie outside the control points"):
        made = converter.from_wgs84([5.40, 5.6], [52.155, 52.3], 50)
    assert made.outside_hull.tolist() == [False, True]


def test_heights_are_told_of_where_their_points_do_not_reach(kelstd, rd, known):
    heights = [p if p.name in "ABC" else kelstd.ControlPoint(p.name, p.longitude, p.latitude, p.height, p.northing,
                                                             p.easting) for p in known]
    with pytest.warns(kelstd.KelstdWarning):
        site = kelstd.fit_site(rd, heights, vertical="plane").system
    converter = kelstd.Converter(site)
    with pytest.warns(kelstd.KelstdWarning) as told:
        made = converter.from_wgs84([5.40, 5.396, 5.6], [52.155, 52.168, 52.3], 50)
    assert made.outside_hull.tolist() == [False, True, True]
    place = "lie outside the control points of the site"
    assert [str(each.message).split(", where")[0] for each in told] == [
        f"1 of 3 positions (the first at index 2) {place}",
        f"1 of 3 positions (the first at index 1) {place} used in height",
    ]


# The fit to points in one line holds as far from it as it is long, that to one point 100 m from it.
@pytest.mark.filterwarnings("ignore:there is no redundancy")
@pytest.mark.parametrize("count", [1, 2])
def test_few_points_hold_near_them_alone(kelstd, rd, known, count):
    at, end = known[:2]
    reach = 100.0 if count == 1 else math.hypot(at.northing - end.northing, at.easting - end.easting)
    site = kelstd.fit_site(rd, known[:count], horizontal="shift", vertical="none").system
    converter, far = kelstd.Converter(site), 1.01 * reach
    # The other end is in the north.
    assert end.northing > at.northing
    near = converter.from_site_neh([at.northing, at.northing - reach + 1], at.easting, 0)
    assert not near.outside_hull.any()
    with pytest.warns(kelstd.KelstdWarning, match="2 of 3"):
        made = converter.from_site_neh([at.northing, at.northing - far, at.northing], [at.easting] * 2 + [9e4], 0)
    assert made.outside_hull.tolist() == [False, True, True]


def test_heights_above_a_geoid_without_a_value_lead_nowhere(kelstd, fitted):
    lost = kelstd.System.from_xml(fitted.system.to_xml().replace('modelFileName=""', 'modelFileName="lost.gtx"'))
    with pytest.warns(kelstd.KelstdWarning, match="lost.gtx"):
        converter = kelstd.Converter(lost)
    made = converter.from_site_neh([1000.0, 1010.0], 5000.0, 10.0)
    assert made.failed.all()
    assert np.isnan(made.wgs84_height_m).all() and np.isnan(made.site_height_m).all()
    assert "above the geoid of \"lost.gtx\"" in made.reasons[0]


def test_a_failed_position_has_no_coordinates_at_the_site(kelstd, fitted):
    made = kelstd.Converter(fitted.system).from_wgs84([5.40, np.nan], 52.155, 50)
    for name in ("site_northing_m", "site_easting_m", "site_height_m"):
        assert np.isnan(made[name]).tolist() == [False, True]


def test_the_document_keeps_the_control_points(kelstd, fitted, known):
    again = kelstd.System.from_xml(fitted.system.to_xml())
    kept = kelstd.control_points(again)
    assert [p.name for p in kept] == [p.name for p in known]
    assert kept[0].use == "hv" and kept[0].northing == known[0].northing
    assert kelstd.control_points(kelstd.System.find("EPSG:28992")) == []


def test_points_are_held_against_a_site(kelstd, fitted, known):
    check = kelstd.check_site(fitted.system, known)
    assert check.horizontal["max_m"] < 1e-6 and len(check.points) == 5
    moved = [kelstd.ControlPoint(known[0].name, *[getattr(known[0], n) for n in
             ("longitude", "latitude", "height")], known[0].northing + 0.25, known[0].easting)]
    check = kelstd.check_site(fitted.system, moved)
    assert check.points[0]["difference_north_m"] == pytest.approx(-0.25, abs=1e-6)
    assert check.points[0]["difference_height_m"] is None


def test_keys_are_those_of_the_program(kelstd, tmp_path):
    program = pathlib.Path(os.environ["KELSTD_BUILD_DIR"]) / "bin" / "kelstd"
    points = ROOT / "examples" / "site_control.csv"
    out = subprocess.run([program, "site", "fit", "--system", ROOT / "examples" / "rd_new.xml", "--points",
                          points, "--json"], capture_output=True, text=True, check=True).stdout
    told = json.loads(out)
    with pytest.warns(kelstd.KelstdWarning):
        fit = kelstd.fit_site(kelstd.System.open(ROOT / "examples" / "rd_new.xml"),
                              pandas.read_csv(points, comment="#"))
    assert {"horizontal": fit.horizontal, "vertical": fit.vertical, "points": list(fit.points),
            "warnings": list(fit.warnings)} == told


def test_points_that_make_no_fit_are_refused(kelstd, rd, known):
    for points, options in [
        ([], {}), (known[:1], {"horizontal": "four"}), (known[:2] + known[:1], {}),
        (known, {"without": ["Z"]}), (known[:2], {"vertical": "curve"}),
        (known, {"sigma_h": -1}), (known, {"horizontal": "none", "vertical": "none"}),
    ]:
        with pytest.raises(kelstd.FitRefusedError):
            kelstd.fit_site(rd, points, **options)
    for options in ({"horizontal": "five"}, {"vertical": "bent"}):
        with pytest.raises(kelstd.ValueRefusedError, match="none of"):
            kelstd.fit_site(rd, known, **options)
    with pytest.raises(TypeError):
        kelstd.fit_site("EPSG:28992", known)
    with pytest.raises(TypeError, match="list of names"):
        kelstd.fit_site(rd, known, without="AB")
    with pytest.raises(TypeError):
        kelstd.fit_site(rd, ["A"])
    with pytest.raises(ValueError, match="lacks longitude"):
        kelstd.fit_site(rd, [{"name": "A"}])
    with pytest.raises(ValueError, match="has no lon"):
        kelstd.fit_site(rd, [{"name": "A", "lon": 5}])


def test_points_without_a_place_are_refused(kelstd, rd, known):
    bad = kelstd.ControlPoint("X", math.nan, 52, 0, 1, 2)
    with pytest.raises(kelstd.FitRefusedError, match="X"):
        kelstd.fit_site(rd, [*known, bad])
    with pytest.raises(kelstd.ValueRefusedError, match="hv, h, v, -"):
        kelstd.fit_site(rd, [kelstd.ControlPoint("X", 5, 52, 0, 1, 2, use="x")])
