"""UTC and GPS time, by the announcements of leap seconds and the definition of GPS time."""

import datetime
import warnings

import numpy as np
import pandas
import pytest
import xarray

# UTC, GPS minus UTC, week and seconds: IERS Bulletin C 52 and its predecessors; the weeks by
# counting days from 1980-01-06.
KNOWN = [
    ("1980-01-06T00:00:00", 0, 0, 0),
    ("1981-06-30T23:59:59", 0, 77, 259199),
    ("1981-07-01T00:00:00", 1, 77, 259201),
    ("1999-08-21T23:59:46", 13, 1023, 604799),
    ("1999-08-21T23:59:47", 13, 1024, 0),
    ("2016-12-31T23:59:59", 17, 1930, 16),
    ("2017-01-01T00:00:00", 18, 1930, 18),
    ("2024-02-29T12:34:56", 18, 2303, 390914),
]


def times(texts, unit="ns"):
    return np.array(texts, dtype=f"datetime64[{unit}]")


def test_known_instants_are_met(kelstd):
    utc = times([row[0] for row in KNOWN])
    counts = np.array([row[1] for row in KNOWN])
    assert kelstd.gps_minus_utc(utc).tolist() == counts.tolist()
    gps = kelstd.gps_from_utc(utc)
    assert (gps == utc + counts.astype("timedelta64[s]")).all() and gps.dtype == "datetime64[ns]"
    week, seconds = kelstd.week_seconds_from_utc(utc)
    assert week.tolist() == [row[2] for row in KNOWN]
    assert seconds.tolist() == [row[3] for row in KNOWN]
    assert (kelstd.utc_from_gps(gps) == utc).all()
    assert (kelstd.utc_from_week_seconds(week, seconds) == utc).all()


def test_every_nanosecond_comes_back(kelstd):
    random = np.random.default_rng(5)
    utc = times(["1985-01-01"]) + random.integers(0, 40 * 31_556_952 * 10**9, 20_000)
    assert (kelstd.utc_from_gps(kelstd.gps_from_utc(utc)) == utc).all()
    week, seconds = kelstd.week_seconds_from_utc(utc)
    assert (kelstd.utc_from_week_seconds(week, seconds) == utc).all()
    assert ((0 <= seconds) & (seconds < 604800)).all() and week.dtype == np.int64


def test_a_leap_second_is_told_of(kelstd):
    gps = times(["2017-01-01T00:00:16.9", "2017-01-01T00:00:17", "2017-01-01T00:00:17.999999999",
                 "2017-01-01T00:00:18"])
    assert kelstd.is_leap_second(gps).tolist() == [False, True, True, False]
    with pytest.warns(kelstd.KelstdWarning, match="2 of 4 times lie in a leap second"):
        utc = kelstd.utc_from_gps(gps)
    assert (utc == times(["2016-12-31T23:59:59.9", "2017-01-01T00:00:00",
                          "2017-01-01T00:00:00.999999999", "2017-01-01T00:00:00"])).all()


def test_instants_outside_the_table_have_its_ends(kelstd):
    assert kelstd.gps_minus_utc(times(["1965-01-01", "1972-01-01", "2200-01-01"])).tolist() == [-9, -9, 18]
    assert kelstd.week_seconds_from_utc(times("1979-12-30")).week == -2  # 9 s before week -1
    assert kelstd.leap_seconds_known_until() > times("2025-01-01")


def test_kinds_of_times_are_taken(kelstd):
    expected = times("2017-01-01T00:00:18")
    zone = datetime.timezone(datetime.timedelta(hours=2))
    series = pandas.Series(pandas.to_datetime(["2017-01-01 00:00:00"]))
    for utc in (
        times("2017-01-01", "D"), times("2017-01-01", "s"), datetime.datetime(2017, 1, 1),
        datetime.datetime(2017, 1, 1, 2, tzinfo=zone), pandas.Timestamp("2017-01-01"),
        pandas.Timestamp("2017-01-01 02:00", tz=zone), series, series.dt.tz_localize("UTC"),
        series.dt.tz_localize("UTC").dt.tz_convert("Asia/Kolkata"), pandas.DatetimeIndex(series),
        pandas.DatetimeIndex(series).tz_localize("UTC"), [datetime.datetime(2017, 1, 1)],
    ):
        made = kelstd.gps_from_utc(utc)
        assert np.all(made == expected), utc
        assert np.shape(made) == np.shape(utc)


def test_shapes_stay(kelstd):
    utc = times(["2017-01-01", "2018-01-01"] * 3).reshape(2, 3)
    assert kelstd.gps_from_utc(utc).shape == (2, 3)
    assert kelstd.gps_from_week_seconds([[1], [2]], [3, 4]).shape == (2, 2)
    assert kelstd.gps_from_utc(times([])).shape == (0,)
    assert isinstance(kelstd.gps_from_utc(utc[0, 0]), np.datetime64)


def test_what_is_missing_stays_missing(kelstd):
    nat = times(["NaT", "2017-01-01"])
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        assert np.isnat(kelstd.gps_from_utc(nat)).tolist() == [True, False]
        assert np.isnat(kelstd.utc_from_gps(nat)).tolist() == [True, False]
        assert np.isnat(kelstd.gps_from_week_seconds([np.nan, 1], [0, 1])).tolist() == [True, False]
        assert not kelstd.is_leap_second(nat).any()
    for ask in (kelstd.gps_minus_utc, kelstd.week_seconds_from_utc, kelstd.week_seconds_from_gps):
        with pytest.raises(ValueError, match="NaT at index 0"):
            ask(nat)


@pytest.mark.parametrize("week, seconds", [
    (1.5, 0), (1930, 604800), (1930, -1), (1930, -1e-9), (1930, np.inf), (np.inf, 0), (1e9, 0), (-1e9, 0),
    (-np.inf, 0), (1e300, 0), (20000, 0), (-20000, 0), (14728, 0), (-15774, 0),
])
def test_weeks_and_seconds_that_there_are_not_are_refused(kelstd, week, seconds):
    with pytest.raises(ValueError, match="at index 1"):
        kelstd.gps_from_week_seconds([1, week], [1, seconds])


@pytest.mark.parametrize("value", [
    "2017-01-01", ["2017-01-01"], 5, 5.0, [1, 2], object(), datetime.date(2017, 1, 1),
    np.timedelta64(5, "s"), [datetime.datetime(2017, 1, 1), "x"],
])
def test_what_is_no_time_is_refused(kelstd, value):
    with pytest.raises(TypeError):
        kelstd.gps_from_utc(value)


@pytest.mark.parametrize("value", [
    times("1600-01-01", "s"), times("2300-01-01", "D"), np.array(1, "datetime64[ps]"),
    times("2262-04-11T23:47:16.8"), times("1677-09-21T00:12:44"), datetime.datetime(2300, 1, 1),
])
def test_times_that_nanoseconds_do_not_hold_are_refused(kelstd, value):
    with pytest.raises(ValueError, match="nanoseconds"):
        kelstd.gps_from_utc(value)


def test_gps_time_has_no_time_zone(kelstd):
    aware = datetime.datetime(2017, 1, 1, tzinfo=datetime.timezone.utc)
    with pytest.raises(TypeError, match="time zone"):
        kelstd.utc_from_gps(aware)


@pytest.mark.parametrize("day", ["1678-01-01", "1700-02-28", "1711-08-30", "1970-01-01", "2250-01-01", "2261-12-31"])
def test_weeks_are_those_of_all_times_that_nanoseconds_hold(kelstd, day):
    """Counted by the calendar of Python."""
    days = (datetime.date.fromisoformat(day) - datetime.date(1980, 1, 6)).days
    week, seconds = days // 7, days % 7 * 86400
    for unlike in (week, np.array([week]), pandas.Series([week])):
        assert np.all(kelstd.gps_from_week_seconds(unlike, seconds + 0.5) == times(day) + np.timedelta64(500, "ms"))
    assert kelstd.week_seconds_from_gps(times([day, day])).week.tolist() == [week, week]
    assert kelstd.week_seconds_from_gps(times(day)) == (week, seconds)


def test_the_first_and_last_times_are_within_100_s_of_the_range(kelstd):
    """By whole numbers of Python: nanoseconds reach 2**63 - 1 from 1970."""
    weeks = 315_964_800_000_000_000
    reach = 2**63 - 1 - 100 * 10**9
    for first in (-reach // 10**9 + 1, reach // 10**9):
        week, seconds = divmod(first - weeks // 10**9, 604_800)
        made = kelstd.gps_from_week_seconds(week, seconds)
        assert int(made.astype(np.int64)) == first * 10**9
        assert kelstd.week_seconds_from_gps(made) == (week, seconds)
        with pytest.raises(ValueError, match="nanoseconds"):
            kelstd.gps_from_week_seconds(week, seconds + (1 if first > 0 else -1))


def test_labelled_weeks_and_seconds_are_paired_by_their_labels(kelstd):
    week = pandas.Series([1930, 1931], index=["a", "b"])
    seconds = pandas.Series([18.0, 0.0], index=["a", "b"])
    for ask in (kelstd.gps_from_week_seconds, kelstd.utc_from_week_seconds):
        assert ask(week, seconds).shape == (2,)
        with pytest.raises(ValueError, match="index of seconds"):
            ask(week, seconds[::-1])
        spanned = ask(xarray.DataArray(week.to_numpy(), dims="pass"), xarray.DataArray([0.0, 1.0, 2.0], dims="epoch"))
        assert spanned.shape == (2, 3)
        across = ask(xarray.DataArray([[1930, 1931]] * 2, dims=("epoch", "pass")),
                     xarray.DataArray([[0, 1], [2, 3]], dims=("pass", "epoch")))
        assert (across[:, 0] - across[0, 0]).astype("timedelta64[s]").astype(int).tolist() == [0, 1]
