"""The example on a Dask cluster: what is in its tables."""

import concurrent.futures
import fractions

import numpy as np
import pandas as pd
import pytest

POSITION = "5.81015219,52.17852792,90.865"  # the README's
HEADINGS = "longitude,latitude,height"


def read(path):
    """As it stands: the headings are a line."""
    table = pd.read_csv(path, dtype=str, keep_default_na=False, header=None)
    return table.iloc[0].tolist(), table.iloc[1:].to_numpy().tolist()


def test_decimals_become_the_doubles_next_to_them(convert_directory):
    """By fractions, whose quotient Python rounds correctly."""
    random = np.random.default_rng(3)
    numbers = [*random.uniform(-180, 180, 3000), *random.uniform(-7e6, 7e6, 3000)]
    texts = [form.format(number) for number in numbers for form in ("{:.17f}", "{:.13f}", "{!r}", "{:.9e}")]
    made = convert_directory.module.partitions.numbers_of(np.array(texts, dtype=object))
    assert made.tolist() == [float(fractions.Fraction(text)) for text in texts]


def test_texts_that_are_no_numbers_fail_alone(convert_directory, given, output):
    texts = ["5_4", "\u0665.4", "5,4", "", "0x5", "north", "1e999", "nan", " 5.4 "]
    lines = [f'"{text}",52.1,10' for text in texts]
    (given / "a.csv").write_text("\n".join([HEADINGS, *lines]) + "\n", encoding="utf-8")
    status, told = convert_directory(given, output)
    assert status == 0 and "8 of 9 positions failed" in told
    reasons = [row[-1] for row in read(output / "a.csv")[1]]
    assert reasons == ["the longitude is not a finite number"] * 8 + [""]


WRONG = {
    "wide first": (f"{HEADINGS}\n1,{POSITION}\n", "line 2"),
    "wide later": (f"{HEADINGS}\n{POSITION}\n{POSITION},7,8\n", "line 3"),
    "wide behind a short one": (f"{HEADINGS}\n5.8\n{POSITION},7\n", "line 3"),
    "commas behind": (f"{HEADINGS}\n{POSITION},\n", "line 2"),
    "twice": ("longitude,latitude,height,latitude\n5.8,52.1,9,52.2\n", "more than one column latitude"),
    "lacking": ("lon,latitude,height\n5.8,52.1,9\n", "no column longitude"),
    "null": (f"{HEADINGS}\n5.81\0\0\0\0\0\0,52.1,9\n", "line 2 has a null character"),
    "quoted": (f'{HEADINGS}\n{POSITION}\n"5.8,52.1,9\n', "EOF inside string"),
    "empty": ("", "No columns"),
}


@pytest.mark.parametrize("content, reason", WRONG.values(), ids=WRONG)
def test_tables_that_can_be_read_in_two_ways_are_refused(convert_directory, given, output, content, reason):
    (given / "a.csv").write_text(content)
    status, told = convert_directory(given, output)
    assert status == 1 and "not converted: " in told and reason in told
    assert {path.name for path in output.iterdir()} == {"kelstd-run.json"}


def test_wide_tables_are_refused_on_every_thread(convert_directory, given, output):
    partitions = convert_directory.module.partitions
    (given / "wide.csv").write_text(f"{HEADINGS}\n" + f"{POSITION},7\n" * 20)
    (given / "good.csv").write_text(f"{HEADINGS}\n{POSITION}\n")
    output.mkdir()
    system = convert_directory.module.kelstd.System.find("EPSG:28992").to_xml()
    plan = partitions.Plan(system, "wgs84-llh", ("longitude", "latitude", "height"), 1000)

    def convert(number):
        name = "good.csv" if number % 2 else "wide.csv"
        try:
            partitions.convert(plan, partitions.Partition("csv", str(given / name), str(output / f"{number}.csv")))
            return True
        except ValueError:
            return False

    with concurrent.futures.ThreadPoolExecutor(8) as pool:
        assert list(pool.map(convert, range(400))) == [False, True] * 200


def test_other_headings_are_carried_through_as_they_stand(convert_directory, given, output):
    (given / "a.csv").write_text(f"note,,{HEADINGS},note,reason\nwet,,{POSITION},\"a, b\",r\nx,y,5.4\n")
    status, _ = convert_directory(given, output)
    headings, rows = read(output / "a.csv")
    assert status == 0 and headings[:7] == ["note", "", "longitude", "latitude", "height", "note", "reason"]
    assert headings[-1] == "reason_2" and len(set(headings)) == len(headings) - 1
    assert rows[0][:7] == ["wet", "", "5.81015219", "52.17852792", "90.865", "a, b", "r"]
    assert rows[1][:7] == ["x", "y", "5.4", "", "", "", ""]
    # As in the README.
    assert round(float(rows[0][headings.index("local_northing_m")]), 2) == 465682.97
    assert [row[-1] for row in rows] == ["", "the latitude is not a finite number"]


def test_columns_are_named_once(convert_directory, given, output):
    (given / "a.csv").write_text(f"h,{HEADINGS}\n7,{POSITION}\n")
    status, told = convert_directory(given, output, "--columns", "longitude,longitude,height")
    assert status == 2 and "a column twice" in told and not output.exists()
    status, _ = convert_directory(given, output, "--columns", "longitude,latitude,h")
    assert status == 0 and read(output / "a.csv")[1][0][headings_of(output).index("wgs84_height_m")] == "7.0"


def headings_of(output):
    return read(output / "a.csv")[0]


def test_a_table_of_headings_alone_stays_one(convert_directory, given, output):
    (given / "a.csv").write_text(f"{HEADINGS}\n")
    assert convert_directory(given, output)[0] == 0
    headings, rows = read(output / "a.csv")
    assert headings[:3] == HEADINGS.split(",") and headings[-1] == "reason" and rows == []
