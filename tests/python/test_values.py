"""Angles and lengths as texts."""

import numpy as np
import pytest

FORMATTED = [
    ((52.5, "latitude"), {}, "52\u00b030\u203200.000000\u2033N"),
    ((-52.5, "latitude"), {"decimals": 1}, "52\u00b030\u203200.0\u2033S"),
    ((-0.25, "longitude"), {"decimals": 0}, "000\u00b015\u203200\u2033W"),
    ((-0.5,), {"decimals": 2}, "-0\u00b030\u203200.00\u2033"),
    ((0.0,), {"decimals": 0}, "0\u00b000\u203200\u2033"),
    ((-1e-12,), {"decimals": 0}, "0\u00b000\u203200\u2033"),
    ((59.99999999, "latitude"), {"decimals": 2}, "60\u00b000\u203200.00\u2033N"),
]


@pytest.mark.parametrize("arguments, options, expected", FORMATTED)
def test_angles_are_formatted(kelstd, arguments, options, expected):
    assert kelstd.format_angle(*arguments, **options) == expected


PARSED = [
    ("52.5", "angle", 52.5), ("-0:30", "angle", -0.5), ("52\u00b030\u203215\u2033", "angle", 52 + 30.25 / 60),
    ("52d30'15\"", "angle", 52 + 30.25 / 60), ("5,25", "angle", 5.25), ("5:30 W", "longitude", -5.5),
    ("S 30:15", "latitude", -30.25),
]


@pytest.mark.parametrize("text, kind, expected", PARSED)
def test_angles_are_parsed(kelstd, text, kind, expected):
    assert kelstd.parse_angle(text, kind) == expected


def test_what_is_printed_is_read(kelstd):
    angles = np.random.default_rng(2).uniform(-90, 90, 200)
    for kind in ("angle", "latitude", "longitude"):
        read = kelstd.parse_angle(kelstd.format_angle(angles, kind), kind)
        # 0.000001 of an arc second is printed.
        np.testing.assert_allclose(read, angles, rtol=0, atol=0.51e-6 / 3600)


@pytest.mark.parametrize("text, kind", [
    ("", "angle"), ("north", "latitude"), ("52:60", "angle"), ("5 30", "angle"), ("5:30 N", "longitude"),
    ("-5 W", "longitude"), ("nan", "angle"), ("1e999", "angle"), ("5", "azimuth"),
])
def test_what_is_no_angle_is_refused(kelstd, text, kind):
    with pytest.raises(kelstd.ValueRefusedError):
        kelstd.parse_angle(text, kind)


def test_lengths_are_formatted_and_parsed(kelstd):
    # 1 ft is 0.3048 m, 1 US survey foot 1200/3937 m: by definition.
    assert kelstd.format_length(0.3048, "ft") == "1.000"
    assert kelstd.format_length(1200, "us-ft", decimals=4) == "3937.0000"
    assert kelstd.format_length([1, 2.5], "mm", decimals=0).tolist() == ["1000", "2500"]
    assert kelstd.parse_length("3937", "us-ft") == pytest.approx(1200, abs=1e-9)
    assert kelstd.parse_length(["1,5", "2.5"]).tolist() == [1.5, 2.5]


@pytest.mark.parametrize("ask", [
    lambda k: k.format_angle(float("nan")), lambda k: k.format_angle(5, "azimuth"),
    lambda k: k.format_angle(5, style="gon"), lambda k: k.format_angle(5, decimals=16),
    lambda k: k.format_angle(5, decimals=-1), lambda k: k.format_length(1, "furlong"),
    lambda k: k.format_length(float("inf")), lambda k: k.parse_length("five"),
    lambda k: k.parse_length("1", "inch"), lambda k: k.parse_length("1e308", "ft") and
    k.parse_length("1e400"), lambda k: k.parse_length("1.234,5"),
])
def test_what_means_nothing_is_refused(kelstd, ask):
    with pytest.raises(kelstd.ValueRefusedError):
        ask(kelstd)


def test_decimals_are_whole_numbers(kelstd):
    for decimals in ("2", 2.0, True):
        with pytest.raises(TypeError):
            kelstd.format_angle(5, decimals=decimals)
        with pytest.raises(TypeError):
            kelstd.format_length(5, decimals=decimals)
    with pytest.raises(kelstd.ValueRefusedError, match="0 to 15"):
        kelstd.format_length(5, decimals=10**20)
    for text in ("5\0", "\ud800"):
        with pytest.raises(ValueError):
            kelstd.parse_angle(text)


def test_texts_and_numbers_are_told_apart(kelstd):
    for ask in (lambda: kelstd.parse_angle(5), lambda: kelstd.parse_length(["1", 2]),
                lambda: kelstd.format_angle("ten"), lambda: kelstd.format_length(None)):
        with pytest.raises((TypeError, ValueError)):
            ask()
