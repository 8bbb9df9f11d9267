"""What a mask hides is missing everywhere; what is no number is none behind a mask either."""

import datetime

import numpy as np
import pandas
import pytest

JUNK = np.ma.array([5.0, 5.0, 6.0], mask=[False, True, False])


@pytest.mark.parametrize("column", [
    JUNK,
    np.ma.array([5, 5, 6], mask=[False, True, False]),
    np.ma.array([5.0, "junk", 6], mask=[False, True, False], dtype=object),
    [5.0, np.ma.masked, 6.0],
    np.array([5.0, np.ma.masked, 6.0], dtype=object),
])
def test_masked_positions_fail_alone(rd_converter, column):
    made = rd_converter.from_wgs84(column, 52.0, 0)
    assert made.failed.tolist() == [False, True, False]
    assert np.isnan(made.northing[1])


def test_a_list_of_masked_columns_keeps_their_masks(rd_converter):
    made = rd_converter.from_wgs84([JUNK, [5.0, 5.0, 6.0]], 52.0, 0)
    assert made.failed.tolist() == [[False, True, False], [False] * 3]
    assert rd_converter.from_wgs84([[JUNK], [JUNK]], 52.0, 0).failed.sum() == 2


@pytest.mark.parametrize("column", [
    np.ma.array(["5", "6"]), np.ma.array([True, False]), np.ma.array([5 + 1j, 6]),
    np.ma.array(["2017-01-01", "2018-01-01"], dtype="datetime64[ns]"), np.ma.array([5, 6], dtype="timedelta64[s]"),
    np.ma.array([True, False], mask=[True, True]), np.ma.array([(5.0, 6.0)], dtype=[("a", float), ("b", float)]),
    np.array([np.bool_(True), 5.0], dtype=object), np.array([np.complex64(5 + 1j), 5.0], dtype=object),
    np.array([np.datetime64("2017-01-01", "ns"), 5.0], dtype=object), pandas.Series([np.bool_(True), 5.0]),
    [True, 5.0], [[5.0], [np.True_]], (5.0, np.array(True)), [np.array([True, False]), np.array([5.0, 6.0])],
    [np.ma.array([True, False]), [5.0, 6.0]], [pandas.Series([True, False]), pandas.Series([5.0, 6.0])],
])
def test_what_is_no_number_is_refused_behind_a_mask_and_among_objects(rd_converter, column):
    with pytest.raises(TypeError, match="real number"):
        rd_converter.from_wgs84(column, 52.0, 0)


@pytest.mark.parametrize("hidden", [
    np.ma.array(["2017-01-01", "2018-01-01"], mask=[False, True], dtype="datetime64[ns]"),
    np.ma.array(["2017-01-01", "1600-01-01"], mask=[False, True], dtype="datetime64[s]"),
    np.ma.array([datetime.datetime(2017, 1, 1), "junk"], mask=[False, True], dtype=object),
    [np.datetime64("2017-01-01"), np.ma.masked],
])
def test_masked_times_are_no_times(kelstd, hidden):
    with np.errstate(all="raise"):
        assert np.isnat(kelstd.gps_from_utc(hidden)).tolist() == [False, True]
        assert kelstd.utc_from_gps(hidden)[0] == np.datetime64("2016-12-31T23:59:43")
        assert np.isnat(kelstd.utc_from_gps(hidden)[1])
    for ask in (kelstd.gps_minus_utc, kelstd.week_seconds_from_utc, kelstd.week_seconds_from_gps):
        with pytest.raises(ValueError, match="NaT at index 1"):
            ask(hidden)


def test_masked_weeks_are_no_times(kelstd):
    week = np.ma.array([1930, 1930], mask=[False, True])
    assert np.isnat(kelstd.gps_from_week_seconds(week, 18)).tolist() == [False, True]


@pytest.mark.parametrize("ask, values", [
    (lambda k: k.format_angle, np.ma.array([5.0, 5.0], mask=[False, True])),
    (lambda k: k.format_length, [5.0, np.ma.masked]),
    (lambda k: k.format_length, [np.ma.array([5.0, 5.0], mask=[False, True]), [5.0, 5.0]]),
    (lambda k: k.parse_angle, np.ma.array(["5", "5"], mask=[False, True])),
    (lambda k: k.parse_length, np.ma.array(["5", "5"], mask=[False, True], dtype=object)),
])
def test_masked_values_are_refused(kelstd, ask, values):
    with pytest.raises(kelstd.ValueRefusedError, match="index 1 is masked"):
        ask(kelstd)(values)
    with pytest.raises(kelstd.ValueRefusedError, match="masked"):
        ask(kelstd)(np.ma.masked)


def test_masks_that_hide_nothing_change_nothing(kelstd, rd_converter):
    assert kelstd.format_length(np.ma.array([1.0, 2.0])).tolist() == ["1.000", "2.000"]
    assert kelstd.parse_angle(np.ma.array(["52:30", "1"])).tolist() == [52.5, 1.0]
    assert kelstd.gps_minus_utc(np.ma.array(["2017-01-01"], dtype="datetime64[D]")).tolist() == [18]
    assert rd_converter.from_wgs84(np.ma.array([5, 6]), 52, 0).northing.tolist() == \
        rd_converter.from_wgs84([5, 6], 52, 0).northing.tolist()
