"""Arrays of positions: published figures, PROJ's own program, and what cannot be converted."""

import subprocess

import numpy as np
import pytest

COLUMNS = (
    "wgs84_longitude_deg wgs84_latitude_deg wgs84_height_m wgs84_x_m wgs84_y_m wgs84_z_m "
    "local_longitude_deg local_latitude_deg local_ellipsoidal_height_m "
    "local_northing_m local_easting_m local_height_m"
).split()


def dms(degrees, minutes=0.0, seconds=0.0):
    return degrees + minutes / 60 + seconds / 3600


# Frame, position, and what is published of the result with half a unit of its last digit.
PUBLISHED = [
    pytest.param("rd_new.xml", "local-llh", (6, 53, 0), {"easting": 196105.283, "northing": 557057.739},
                 0.0005, id="EPSG Guidance Note 7-2, Oblique Stereographic"),
    pytest.param("rd_new.xml", "local-neh", (557057.739, 196105.283, 0),
                 {"local_longitude_deg": 6, "local_latitude_deg": 53}, 0.0005 / 3600,
                 id="EPSG Guidance Note 7-2, Oblique Stereographic, reverse"),
    pytest.param("rd_new.xml", "local-llh", (dms(5, 48, 38.3390), dms(52, 10, 46.2700), 47.582),
                 {"wgs84_longitude_deg": dms(5, 48, 36.5479)}, 0.00005 / 3600,
                 id="Meetkundige Dienst, MDGAP-2000.31, longitude"),
    pytest.param("rd_new.xml", "local-llh", (dms(5, 48, 38.3390), dms(52, 10, 46.2700), 47.582),
                 {"wgs84_height_m": 90.865}, 0.0005, id="Meetkundige Dienst, MDGAP-2000.31, height"),
    pytest.param("british_national_grid.xml", "local-llh", (dms(1, 43, 4.5177), dms(52, 39, 27.2531), 0),
                 {"easting": 651409.903, "northing": 313177.270}, 0.0005,
                 id="Ordnance Survey, A guide to coordinate systems, annex C"),
]


@pytest.mark.parametrize("document, frame, position, expected, tolerance", PUBLISHED)
def test_published_figures_are_met(kelstd, systems, document, frame, position, expected, tolerance):
    converter = kelstd.Converter(kelstd.System.open(systems / document))
    made = converter.convert(frame, *position)
    for name, value in expected.items():
        # A system without an area of use has nothing to warn of; tolerance of the printed digits.
        assert getattr(made, name) == pytest.approx(value, abs=tolerance * 1.001)


def test_the_readmes_point_has_its_published_coordinates(rd_converter):
    made = rd_converter.from_wgs84(5.81015219, 52.17852792, 90.865)
    assert f"{made.easting:.2f} {made.northing:.2f} {made.height:.2f}" == "183928.88 465682.97 47.58"
    assert not made.failed and made.reasons == "" and made.local_height_reference == "ellipsoid"
    assert isinstance(made.easting, np.float64)


def test_thousands_of_points_agree_with_cs2cs(kelstd, systems):
    system = kelstd.System.open(systems / "ed50_utm_31n.xml")
    random = np.random.default_rng(7)
    lon, lat = random.uniform(0, 6, 3000), random.uniform(40, 60, 3000)
    h = random.uniform(0, 2000, 3000)
    made = kelstd.Converter(system).from_wgs84(lon, lat, h)
    # cs2cs's own definition: three parameters of ED50, printed as the document has them.
    command = ["cs2cs", "-f", "%.6f", "+proj=longlat", "+datum=WGS84", "+to", "+proj=utm", "+zone=31",
               "+ellps=intl", "+towgs84=-84.87,-96.49,-116.95", "+type=crs"]
    lines = "".join(f"{x!r} {y!r} {z!r}\n" for x, y, z in zip(lon.tolist(), lat.tolist(), h.tolist()))
    out = subprocess.run(command, input=lines, capture_output=True, text=True, check=True).stdout
    peer = np.loadtxt(out.splitlines())
    np.testing.assert_allclose(made.local_easting_m, peer[:, 0], atol=2e-6)
    np.testing.assert_allclose(made.local_northing_m, peer[:, 1], atol=2e-6)


def test_all_frames_lead_to_the_same_location(rd_converter):
    lon, lat, h = np.array([4.5, 5.8, 6.9]), np.array([51.5, 52.2, 53.1]), np.array([0.0, 43.0, 120.0])
    made = rd_converter.from_wgs84(lon, lat, h)
    ways = [
        rd_converter.from_wgs84_llh(lon, lat, h),
        rd_converter.from_wgs84_xyz(made.wgs84_x_m, made.wgs84_y_m, made.wgs84_z_m),
        rd_converter.from_local_llh(
            made.local_longitude_deg, made.local_latitude_deg, made.local_ellipsoidal_height_m),
        rd_converter.from_local_neh(made.local_northing_m, made.local_easting_m, made.local_height_m),
    ]
    for way in ways:
        for name in COLUMNS:
            # The library's own promise of 1e-6 m and 1e-11 degrees, both ways.
            tolerance = 1e-9 if name.endswith("deg") else 1e-5
            np.testing.assert_allclose(way[name], made[name], rtol=0, atol=tolerance, err_msg=name)


def test_columns_are_named_as_in_the_programs_output(rd_converter):
    made = rd_converter.from_wgs84(5, 52, 0)
    assert list(made) == COLUMNS
    assert dict(made)["local_northing_m"] == made.local_northing_m == made["local_northing_m"]
    with pytest.raises(KeyError):
        made["northings"]
    with pytest.raises(AttributeError):
        made.northings
    with pytest.raises(AttributeError, match="no site"):
        made.site_northing_m


def test_columns_are_views_of_one_block(rd_converter):
    made = rd_converter.from_wgs84(np.full(10, 5.0), np.full(10, 52.0), np.zeros(10))
    memory = {name: made[name].__array_interface__["data"][0] for name in COLUMNS}
    assert sorted(memory.values()) == [min(memory.values()) + 8 * i for i in range(12)]
    assert made.local_northing_m.strides == (96,)


BAD = [
    (np.nan, 52, 0, "the longitude is not a finite number"),
    (5, np.inf, 0, "the latitude is not a finite number"),
    (5, 52, -np.inf, "the height is not a finite number"),
    (361, 52, 0, "the longitude is not between -360 and 360"),
    (5, 90.5, 0, "the latitude is not between -90 and 90"),
    (5, 52, 6e7, "outside where the projection is one-to-one"),
]


def test_positions_that_fail_cost_the_others_nothing(rd_converter):
    bad = np.array([row[:3] for row in BAD], dtype=float)
    good = np.array([[5.81015219, 52.17852792, 90.865]] * len(BAD))
    mixed = np.stack([good, bad], axis=1).reshape(-1, 3)
    made = rd_converter.from_wgs84(*mixed.T)
    alone = rd_converter.from_wgs84(5.81015219, 52.17852792, 90.865)
    assert made.failed.tolist() == [False, True] * len(BAD)
    assert made.reasons[1::2].tolist() == [row[3] for row in BAD]
    assert set(made.reasons[::2]) == {""}
    for name in COLUMNS:
        assert np.isnan(made[name][1::2]).all()
        assert (made[name][::2] == alone[name]).all()
    assert made.local_height_reference[:2].tolist() == ["ellipsoid", ""]


@pytest.mark.parametrize("frame, components", [
    ("wgs84-xyz", "xyz"), ("local-llh", ("longitude", "latitude", "height")),
    ("local-neh", ("northing", "easting", "height")),
])
@pytest.mark.parametrize("place", range(3))
@pytest.mark.parametrize("number", [np.nan, np.inf, -np.inf])
def test_what_is_not_finite_fails_in_every_frame(rd_converter, frame, components, place, number):
    made = rd_converter.from_wgs84(5.0, 52.0, 10.0)
    position = {
        "wgs84-xyz": [made.wgs84_x_m, made.wgs84_y_m, made.wgs84_z_m],
        "local-llh": [made.local_longitude_deg, made.local_latitude_deg, made.height],
        "local-neh": [made.northing, made.easting, made.height],
    }[frame]
    assert not rd_converter.convert(frame, *position).failed
    position[place] = number
    failed = rd_converter.convert(frame, *position)
    # In capitals in PROJ's own words for X, Y and Z.
    assert failed.failed
    assert failed.reasons.lower() == f"the {components[place]} is not a finite number"
    assert all(np.isnan(failed[name]) for name in COLUMNS)


def test_nothing_at_all_is_an_empty_result(rd_converter):
    made = rd_converter.from_wgs84([], [], [])
    assert made.shape == (0,) and made.local_northing_m.shape == (0,) and not made.failed.any()
    assert made.reasons.shape == (0,)


def test_shapes_are_broadcast(rd_converter):
    lon, lat = np.linspace(4, 6, 5), np.linspace(51, 53, 4)
    made = rd_converter.from_wgs84(lon, lat[:, None], 10)
    assert made.shape == made.local_northing_m.shape == made.failed.shape == (4, 5)
    assert made.northing[2, 3] == rd_converter.from_wgs84(lon[3], lat[2], 10).northing
    assert made.local_northing_m.base is not None


def test_shapes_that_do_not_fit_are_refused(rd_converter):
    with pytest.raises(ValueError, match=r"longitude \(2,\), latitude \(3,\), height \(\)"):
        rd_converter.from_wgs84([5, 5], [52, 52, 52], 0)


def layouts():
    """The same numbers in memory of all kinds."""
    numbers = np.array([4.0, 5.0, 6.0, 7.0])
    record = np.zeros(4, dtype=[("pad", "S3"), ("n", "f8")])
    record["n"] = numbers
    yield "strided", np.repeat(numbers, 3)[::3]
    yield "backward", numbers[::-1].copy()[::-1]
    yield "float32", numbers.astype(np.float32)
    yield "int16", numbers.astype(np.int16)
    yield "other byte order", numbers.astype(">f8")
    yield "packed record", record["n"]
    yield "list", numbers.tolist()
    yield "objects", numbers.astype(object)
    yield "masked", np.ma.masked_array(numbers, mask=[False] * 4)
    yield "read only", np.frombuffer(numbers.tobytes())
    yield "column of a matrix", np.asfortranarray(np.stack([numbers, numbers]))[1]


@pytest.mark.parametrize("column", [pytest.param(one, id=name) for name, one in layouts()])
def test_memory_of_any_layout_gives_the_same(rd_converter, column):
    plain = rd_converter.from_wgs84(np.array([4.0, 5.0, 6.0, 7.0]), 52.0, 0.0)
    made = rd_converter.from_wgs84(column, 52.0, 0.0)
    for name in COLUMNS:
        assert (made[name] == plain[name]).all(), name


def test_what_is_missing_fails(rd_converter):
    masked = np.ma.masked_array([5.0, 5.0], mask=[False, True])
    assert rd_converter.from_wgs84(masked, 52, 0).failed.tolist() == [False, True]
    assert rd_converter.from_wgs84([5.0, None], 52, 0).failed.tolist() == [False, True]


@pytest.mark.parametrize("column", [
    "5.0", b"5.0", ["5.0", "6.0"], [True, False], np.array([5 + 1j]), np.array(["2024-01-01"], "M8[D]"),
    np.array([5, "6"], dtype=object), object(), np.array([True], dtype=object),
])
def test_what_is_no_number_is_refused(rd_converter, column):
    with pytest.raises(TypeError):
        rd_converter.from_wgs84(column, 52, 0)


def test_arguments_that_mean_nothing_are_refused(kelstd, rd, rd_converter):
    with pytest.raises(TypeError):
        rd_converter.from_wgs84(5, 52)  # a height that nobody gave would be one that looks right
    with pytest.raises(TypeError):
        kelstd.Converter("EPSG:28992")
    with pytest.raises(ValueError, match="no frame 'neh'"):
        rd_converter.convert("neh", 1, 2, 3)
    with pytest.raises(ValueError, match="no site"):
        rd_converter.from_site_neh(1, 2, 3)
    for threads in (0, -1, 2000):
        with pytest.raises(ValueError):
            rd_converter.from_wgs84(5, 52, 0, threads=threads)
    for threads in (1.5, "2", True):
        with pytest.raises(TypeError):
            rd_converter.from_wgs84(5, 52, 0, threads=threads)
    with pytest.raises(ValueError, match="no geoid model"):
        rd_converter.geoid_separations(5, 52)


def test_the_module_below_refuses_what_the_package_never_asks(kelstd, rd, rd_converter):
    convert = rd_converter._core.convert
    three, two = np.full(3, 5.0), np.full(2, 5.0)
    for arguments in ((0, three, two, three, 1), (0, three.reshape(3, 1), three, three, 1),
                      (99, three, three, three, 1), (-1, three, three, three, 1), (4, three, three, three, 1),
                      (0, three, three, three, 0)):
        with pytest.raises(kelstd.ValueRefusedError):
            convert(*arguments)


def test_positions_outside_the_area_of_use_are_warned_of(kelstd):
    converter = kelstd.Converter(kelstd.System.find("EPSG:28992"))
    with pytest.warns(kelstd.KelstdWarning) as told:
        made = converter.from_wgs84([5.4, 52.1, 5.4], [52.1, 5.4, 52.1], 0)
    assert made.outside_area.tolist() == [False, not made.failed[1], False]
    text = str(told[0].message)
    assert text.startswith("1 of 3 positions (the first at index 1) lie outside the area of use")
    assert "longitude and latitude swapped" in text
    assert told[0].filename == __file__


def test_a_failure_can_be_made_an_error(kelstd, rd_converter):
    assert rd_converter.from_wgs84(5, 52, 0).raise_failed().failed is not True
    with pytest.raises(kelstd.ValueRefusedError, match="1 of 2 .* index 1: the latitude is not a finite"):
        rd_converter.from_wgs84([5, 5], [52, np.nan], 0).raise_failed()
