"""Columns of pandas and xarray, as they are."""

import numpy as np
import pandas
import pytest
import xarray


@pytest.fixture
def frame():
    return pandas.DataFrame(
        {"lon": [5.81015219, 5.0, np.nan], "lat": [52.17852792, 52.0, 52.0], "h": [90.865, 0.0, 0.0]},
        index=["a", "b", "c"])


def test_columns_of_a_frame_keep_their_index(rd_converter, frame):
    made = rd_converter.from_wgs84(frame.lon, frame.lat, frame.h)
    assert isinstance(made.local_northing_m, np.ndarray)
    table = made.to_frame()
    assert table.index.tolist() == ["a", "b", "c"]
    assert round(table.local_easting_m["a"], 2) == 183928.88
    assert table.failed.tolist() == [False, False, True]
    frame["northing"] = made.local_northing_m
    assert np.isnan(frame.northing["c"])


def test_columns_that_do_not_belong_together_are_refused(rd_converter, frame):
    shuffled = frame.lat.sort_index(ascending=False)
    with pytest.raises(ValueError, match="index of latitude"):
        rd_converter.from_wgs84(frame.lon, shuffled, frame.h)
    assert not rd_converter.from_wgs84(frame.lon, 52.0, 0).failed[0]
    with pytest.raises(ValueError, match="3 rows"):
        rd_converter.from_wgs84(frame.lon, np.full((2, 1), 52.0), 0)


@pytest.mark.parametrize("dtype", ["float32", "Float64", "Int64", "int32"])
def test_kinds_of_columns_are_taken(rd_converter, dtype):
    column = pandas.Series([5, 6]).astype(dtype)
    assert not rd_converter.from_wgs84(column, 52.0, 0).failed.any()
    if dtype in ("Float64", "Int64"):
        column[1] = pandas.NA
        assert rd_converter.from_wgs84(column, 52.0, 0).failed.tolist() == [False, True]


@pytest.mark.parametrize("column", [
    pandas.Series(["5", "6"]), pandas.Series([True, False]), pandas.to_datetime(pandas.Series(["2017"])),
    pandas.Series(["5"], dtype="string"), pandas.Series([5.0]).astype("category"),
    pandas.Series([True], dtype="boolean"),
])
def test_columns_of_something_else_are_refused(rd_converter, column):
    with pytest.raises(TypeError):
        rd_converter.from_wgs84(column, 52.0, 0)


def test_a_dataset_keeps_its_dimensions(rd_converter):
    data = xarray.Dataset({"lon": ("point", [5.0, 6.0]), "lat": ("point", [52.0, 53.0])},
                          coords={"point": ["p", "q"]})
    made = rd_converter.from_wgs84(data.lon, data.lat, 0.0).to_dataset()
    assert made.local_northing_m.dims == ("point",)
    assert made.local_northing_m.sel(point="q") == rd_converter.from_wgs84(6, 53, 0).northing


def test_a_grid_is_spanned_by_the_names_of_dimensions(rd_converter):
    lon = xarray.DataArray([5.0, 6.0, 6.5], dims="x")
    lat = xarray.DataArray([52.0, 53.0, 52.5], dims="y")
    made = rd_converter.from_wgs84(lon, lat, 0.0)
    assert made.shape == (3, 3)
    assert made.northing[1, 2] == rd_converter.from_wgs84(6.0, 52.5, 0).northing
    assert made.to_dataset().local_northing_m.dims == ("x", "y")
    swapped = rd_converter.from_wgs84(made.to_dataset().wgs84_longitude_deg,
                                      made.to_dataset().wgs84_latitude_deg.T, 0.0)
    assert (swapped.northing == made.northing).all()


def test_arrays_that_are_not_aligned_are_refused(rd_converter):
    lon = xarray.DataArray([5.0, 6.0], dims="x", coords={"x": [0, 1]})
    with pytest.raises(ValueError):
        rd_converter.from_wgs84(lon, xarray.DataArray([52.0, 53.0], dims="x", coords={"x": [1, 2]}), 0)
    with pytest.raises(TypeError, match="dimensions' names"):
        rd_converter.from_wgs84(lon, [52.0, 53.0], 0)
    with pytest.raises(TypeError, match="not combined"):
        rd_converter.from_wgs84(lon, pandas.Series([52.0, 53.0]), 0)


def test_arrays_without_names_become_tables_all_the_same(rd_converter):
    made = rd_converter.from_wgs84(np.full((2, 2), 5.0), 52.0, 0)
    assert made.to_dataset().local_northing_m.dims == ("dim_0", "dim_1")
    assert len(made.to_frame()) == 4
    assert len(rd_converter.from_wgs84(5, 52, 0).to_frame()) == 1
