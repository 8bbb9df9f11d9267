"""Separations of the geoid, and heights above it."""

import pickle
import re
import subprocess

import numpy as np
import pytest


@pytest.fixture(scope="module")
def egm96(kelstd):
    return kelstd.Geoid("egm96_15.gtx")


def test_separations_agree_with_proj(kelstd, egm96, systems):
    lon, lat = np.array([5.0, 0.0, -70.0, 135.0, 178.9]), np.array([52.0, 0.0, -33.0, 35.0, -17.0])
    grid = subprocess.run(["find", "/usr/share/proj", "-name", "egm96_15.gtx"], capture_output=True,
                          text=True).stdout.split()[0]
    lines = "".join(f"{x} {y} 0 0\n" for x, y in zip(lon, lat))
    out = subprocess.run(["cct", "-d", "6", "+proj=pipeline", "+step", "+proj=unitconvert",
                          "+xy_in=deg", "+xy_out=rad", "+step", "+proj=vgridshift", f"+grids={grid}",
                          "+multiplier=1"], input=lines, capture_output=True, text=True, check=True).stdout
    separations = egm96.separations(lon, lat).geoid_separation_m
    np.testing.assert_allclose(separations, np.loadtxt(out.splitlines())[:, 2], atol=1e-6)
    # NIMA TR8350.2, EGM96 at latitude 0, longitude 0: 17.16 m.
    assert separations[1] == pytest.approx(17.16, abs=0.005)


def test_what_cannot_be_is_a_failure(egm96):
    made = egm96.separations([5, np.nan, 5, 400], [52, 52, 91, 52])
    assert made.failed.tolist() == [False, True, True, True]
    assert np.isnan(made.geoid_separation_m).tolist() == made.failed.tolist()
    assert all(made.reasons[1:]) and made.reasons[0] == ""
    assert list(made) == ["geoid_separation_m"]


def test_a_model_that_is_not_there_is_an_error(kelstd):
    with pytest.raises(kelstd.SystemNotFoundError, match="no_such.gtx"):
        kelstd.Geoid("no_such.gtx")
    assert "egm96_15.gtx" in kelstd.geoid_models()


def test_heights_of_a_system_are_above_its_geoid(kelstd, systems, egm96, tmp_path):
    text = (systems / "rd_new.xml").read_text()
    assert 'Geoid_Model' in text
    system = with_model(kelstd, text, "egm96_15.gtx")
    converter = kelstd.Converter(system)
    assert converter.geoid_model == system.geoid_model == "egm96_15.gtx"
    made = converter.from_wgs84([5.2, 5.4], [52.1, 52.2], [50.0, 60.0])
    separations = egm96.separations([5.2, 5.4], [52.1, 52.2]).geoid_separation_m
    np.testing.assert_allclose(made.local_height_m, [50.0, 60.0] - separations, atol=1e-6)
    assert made.local_height_reference.tolist() == ["geoid egm96_15.gtx"] * 2
    np.testing.assert_allclose(
        converter.geoid_separations([5.2, 5.4], [52.1, 52.2]).geoid_separation_m, separations, atol=1e-9)
    back = converter.from_local_neh(made.northing, made.easting, made.height)
    np.testing.assert_allclose(back.wgs84_height_m, [50.0, 60.0], atol=1e-5)
    assert pickle.loads(pickle.dumps(egm96)).separations(5, 52).geoid_separation_m > 40


def test_a_model_that_cannot_be_used_is_told_of(kelstd, systems):
    system = with_model(kelstd, (systems / "rd_new.xml").read_text(), "missing.gtx")
    with pytest.warns(kelstd.KelstdWarning, match="missing.gtx.*All heights are ellipsoidal"):
        converter = kelstd.Converter(system)
    assert converter.geoid_model == ""
    assert converter.from_wgs84(5, 52, 0).local_height_reference == "ellipsoid"


@pytest.fixture
def small_model(home):
    folder = home / "geoid_model_list"
    folder.mkdir(exist_ok=True)
    path = folder / "small_of_tests.gtx"
    write_gtx(path, south=52, west=5, step=0.5, rows=3, columns=3, value=43.0)
    yield
    path.unlink()


def test_points_beside_the_models_grid_are_told_of(kelstd, systems, small_model):
    system = with_model(kelstd, (systems / "rd_new.xml").read_text(), "small_of_tests.gtx")
    converter = kelstd.Converter(system)
    with pytest.warns(kelstd.KelstdWarning, match="no value for 1 of 2 .* ellipsoidal; the first is at index 1"):
        made = converter.from_wgs84([5.5, 4.0], [52.5, 52.5], 100.0)
    assert made.local_height_m[0] == pytest.approx(57.0, abs=1e-6)
    assert made.local_height_reference.tolist() == ["geoid small_of_tests.gtx", "ellipsoid"]
    assert not made.failed.any() and made.reasons[1] != ""


def with_model(kelstd, text, name):
    changed = re.sub(r"<Geoid_Model[^>]*/>", f'<Geoid_Model ver="1" modelFileName="{name}"/>', text)
    assert name in changed
    return kelstd.System.from_xml(changed)


def write_gtx(path, south, west, step, rows, columns, value):
    """Big-endian: latitude and longitude of the south-west node, steps, counts, then the values."""
    header = np.array([south, west, step, step], ">f8").tobytes() + np.array([rows, columns], ">i4").tobytes()
    path.write_bytes(header + np.full(rows * columns, value, ">f4").tobytes())
