"""The example on a Dask cluster: two processes, workers and whole runs that are killed half-way."""

import json
import os
import signal
import subprocess
import sys
import time

import numpy as np
import pandas as pd
import psutil
import pytest
import zarr

from conftest import ROOT

SCRIPT = ROOT / "examples" / "dask" / "convert_directory.py"
FILES, LINES, ROWS, PARTITION = 12, 4000, 9500, 1000


@pytest.fixture(scope="module")
def given(tmp_path_factory):
    """Tables and arrays; the first position is the README's."""
    place = tmp_path_factory.mktemp("given")
    random = np.random.default_rng(11)

    def positions(count):
        made = np.column_stack(
            [random.uniform(3.5, 7, count), random.uniform(51, 53.5, count), random.uniform(0, 300, count)])
        made[0] = 5.81015219, 52.17852792, 90.865
        return made

    for number in range(FILES):
        table = pd.DataFrame(positions(LINES).round(9), columns=["longitude", "latitude", "height"])
        table.insert(0, "point", [f"p{line:05}" for line in range(LINES)])
        table["code, of the field"] = "001"
        table.to_csv(place / f"day{number:02}.csv", index=False)
    rows = positions(ROWS)
    rows[7] = np.nan
    np.save(place / "cloud.npy", rows)
    zarr.open_array(str(place / "cloud.zarr"), mode="w", shape=rows.shape, chunks=(700, 3), dtype="f8")[:] = rows
    return place


def command(given, output, *options):
    return [sys.executable, SCRIPT, "--system", ROOT / "examples" / "rd_new.xml", "--rows", str(PARTITION),
            "--dashboard", "127.0.0.1:0", *options, given, output]


def run(given, output, *options, status=0):
    made = subprocess.run(command(given, output, *options), capture_output=True, text=True, timeout=300)
    assert made.returncode == status, made.stderr
    return made.stderr


@pytest.fixture(scope="module")
def alone(given, tmp_path_factory):
    """What one process makes of it."""
    output = tmp_path_factory.mktemp("alone") / "output"
    told = run(given, output, "--workers", "0")
    assert f"2 of {FILES * LINES + 2 * ROWS} positions failed" in told
    return output


def contents(directory):
    return {str(path.relative_to(directory)): path.read_bytes()
            for path in directory.rglob("*") if path.is_file()}


def begin(given, output, *options):
    """A run of its own session, which has some chunks and has the tables before it when this returns."""
    process = subprocess.Popen(command(given, output, *options), stderr=subprocess.PIPE, text=True,
                               start_new_session=True)
    deadline = time.monotonic() + 200
    while len(list(output.glob("cloud.zarr/*.0"))) < 3:
        assert process.poll() is None and time.monotonic() < deadline
        time.sleep(0.002)
    return process


def test_tables_have_published_figures_and_what_was_given(alone):
    table = pd.read_csv(alone / "day00.csv", dtype=str, keep_default_na=False)
    first = table.iloc[0]
    # As in the README.
    assert (round(float(first.local_easting_m), 2), round(float(first.local_northing_m), 2)) == (183928.88, 465682.97)
    assert first["code, of the field"] == "001" and first.point == "p00000" and first.reason == ""
    assert len(table) == LINES and first.local_height_reference == "ellipsoid"


def test_arrays_have_a_row_for_each_position(alone, given, kelstd, rd_converter):
    columns = json.loads((alone / "kelstd-run.json").read_text())["columns"]
    rows = np.load(alone / "cloud.npy")
    made = zarr.open_array(str(alone / "cloud.zarr"), mode="r")
    assert columns == made.attrs["columns"] and len(columns) == 12
    np.testing.assert_array_equal(rows, made[:])
    assert rows[0, columns.index("local_easting_m")] == pytest.approx(183928.88, abs=0.005)
    assert np.isnan(rows[7]).all() and not np.isnan(np.delete(rows, 7, axis=0)).any()


def test_a_killed_worker_loses_nothing(given, alone, tmp_path):
    process = begin(given, tmp_path / "output", "--workers", "2")
    workers = [child for child in psutil.Process(process.pid).children(recursive=True)
               if "spawn_main" in " ".join(child.cmdline())]
    assert len(workers) == 2
    workers[0].kill()
    finished = len(list((tmp_path / "output").glob("*.csv")))
    _, told = process.communicate(timeout=300)
    assert process.returncode == 0, told
    assert finished < FILES  # half-way indeed
    assert contents(tmp_path / "output") == contents(alone)


def test_a_killed_run_goes_on_where_it_was(given, alone, tmp_path):
    output = tmp_path / "output"
    process = begin(given, output, "--workers", "0")
    os.killpg(process.pid, signal.SIGKILL)
    process.communicate()
    tables = list(output.glob("*.csv"))
    finished = {path: path.stat().st_mtime_ns for path in [*tables, *output.glob("cloud.zarr/*.0")]}
    assert len(finished) >= 3 and len(tables) < FILES  # half-way indeed
    run(given, output, "--workers", "2")
    assert {path: path.stat().st_mtime_ns for path in finished} == finished
    assert contents(output) == contents(alone)
    assert "nothing is left to do" in run(given, output)
    assert contents(output) == contents(alone)


def test_what_was_begun_otherwise_is_not_gone_on_with(given, alone, tmp_path):
    output = tmp_path / "output"
    copy = tmp_path / "given"
    copy.mkdir()
    table = (given / "day00.csv").read_text().splitlines(keepends=True)[:50]
    (copy / "day00.csv").write_text("".join(table))
    run(copy, output, "--workers", "0")
    before = contents(output)
    assert "another frame" in run(copy, output, "--workers", "0", "--from", "local-llh", status=1)
    assert "another rows" in run(copy, output, "--workers", "0", "--rows", "7", status=1)
    assert "another system" in run(copy, output, "--workers", "0", "--system", "EPSG:28992", status=1)
    (copy / "day00.csv").write_text("".join(table[:40]))
    assert "day00.csv has changed" in run(copy, output, "--workers", "0", status=1)
    assert contents(output) == before


def test_what_is_no_table_or_array_costs_the_others_nothing(tmp_path):
    given, output = tmp_path / "given", tmp_path / "output"
    given.mkdir()
    (given / "good.csv").write_text("\ufefflongitude,latitude,height,reason\n5.4,52.1,10,dry\n5.4,north,10,\n5.4,52.1,,\n")
    (given / "other.csv").write_text("x,y\n1,2\n")
    (given / "wide.csv").write_text("longitude,latitude,height\n1,2,5.4,52.1,10\n")
    (given / "ragged.csv").write_text("longitude,latitude,height\n5.4,52.1,10\n1,2,5.4,52.1,10\n")
    (given / "short.csv").write_text("longitude,latitude,height\n5.4,52.1,10\n5.4\n")
    (given / "empty.csv").write_text("")
    np.save(given / "flat.npy", np.zeros(6))
    (given / "noise.npy").write_bytes(b"noise")
    (given / "notes.txt").write_text("not an input")
    told = run(given, output, "--workers", "0", status=1)
    for name in ("other.csv: there is no column longitude, latitude, height", "empty.csv", "flat.npy",
                 "noise.npy", "wide.csv", "ragged.csv"):
        assert name in told
    assert {path.name for path in output.iterdir()} == {"good.csv", "short.csv", "kelstd-run.json"}
    assert pd.read_csv(output / "short.csv").reason.tolist()[1] == "the latitude is not a finite number"
    table = pd.read_csv(output / "good.csv", dtype=str, keep_default_na=False)
    assert table.reason.tolist() == ["dry", "", ""]
    assert table.reason_2.tolist() == ["", "the latitude is not a finite number", "the height is not a finite number"]
    assert table.local_northing_m.tolist()[1:] == ["", ""]


def test_what_is_there_already_is_no_result(tmp_path):
    """Neither the input itself nor a table of somebody else's is taken for a finished partition."""
    given = tmp_path / "given"
    given.mkdir()
    (given / "a.csv").write_text("longitude,latitude,height\n5.4,52.1,10\n")
    before = contents(given)
    assert "has something else in it" in run(given, given, "--workers", "0", status=1)
    assert contents(given) == before
    assert "No such file" in run(given, tmp_path / "no" / "such", "--workers", "0", status=1)
    assert "No such file" in run(tmp_path / "missing", tmp_path / "output", status=1)


def test_nothing_to_convert_is_an_error(tmp_path):
    (tmp_path / "given").mkdir()
    assert "has none of" in run(tmp_path / "given", tmp_path / "output", status=1)
    assert "no coordinate system" in run(tmp_path / "given", tmp_path / "output", "--system", "no such", status=1)
    assert not (tmp_path / "output").exists()
