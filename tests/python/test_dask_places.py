"""The example on a Dask cluster: which files it takes and makes, and what a killed run may leave."""

import os
import shutil
import subprocess
import sys

import numpy as np
import pandas as pd
import pytest
import zarr

from conftest import ROOT

SCRIPT = ROOT / "examples" / "dask" / "convert_directory.py"
TABLE = "longitude,latitude,height\n5.81015219,52.17852792,90.865\n"  # the README's position
POSITIONS = np.tile([5.81015219, 52.17852792, 90.865], (25, 1))
ROWS = "--rows=10"


def save_zarr(path):
    zarr.open_array(str(path), mode="w", shape=POSITIONS.shape, chunks=(7, 3), dtype="f8")[:] = POSITIONS


def contents(directory):
    return {str(path.relative_to(directory)): path.read_bytes() for path in directory.rglob("*") if path.is_file()}


def test_a_mistake_of_one_costs_the_others_nothing(convert_directory, given, output):
    (given / "bad.csv").write_text("x,y\n1,2\n")
    (given / "good.csv").write_text(TABLE)
    (given / "empty.npy").write_bytes(b"")
    np.savez(given / "many.npz", POSITIONS)
    (given / "many.npz").rename(given / "many.npy")
    np.save(given / "cloud.npy", POSITIONS)
    save_zarr(given / "cloud.zarr")
    save_zarr(given / "broken.zarr")
    (given / "broken.zarr" / ".zarray").write_text("{")
    status, told = convert_directory(given, output, ROWS)
    assert status == 1
    for name in ("bad.csv", "empty.npy", "many.npy", "broken.zarr"):
        assert f"not converted: {given / name}: " in told
    assert {path.name for path in output.iterdir()} == {"good.csv", "cloud.npy", "cloud.zarr", "kelstd-run.json"}
    rows = np.load(output / "cloud.npy")
    np.testing.assert_array_equal(rows, zarr.open_array(str(output / "cloud.zarr"), mode="r")[:])
    # As in the README.
    assert rows.shape == (25, 12) and np.round(rows[24, [9, 10]], 2).tolist() == [465682.97, 183928.88]


def test_every_entry_is_taken_or_told_of(convert_directory, given, output):
    (given / "A.CSV").write_text(TABLE)
    (given / "notes.txt").write_text("no input")
    (given / "csv").write_text(TABLE)
    (given / ".kelstd-a.csv").write_text(TABLE)
    (given / "more").mkdir()
    status, told = convert_directory(given, output)
    assert status == 0 and len(pd.read_csv(output / "A.CSV")) == 1
    assert [line for line in told.splitlines() if line.startswith("not taken")] == [
        f"not taken: {given / name}" for name in (".kelstd-a.csv", "csv", "more", "notes.txt")]


@pytest.mark.parametrize("name", ["output", "output.csv", "output.zarr"])
def test_an_output_inside_the_input_is_no_input(convert_directory, given, name):
    (given / "a.csv").write_text(TABLE)
    for _ in range(2):
        status, told = convert_directory(given, given / name)
        assert status == 0 and "not taken" not in told


def test_directories_are_those_of_whoever_runs_it(given, tmp_path):
    """A cluster whose processes have another current directory, where the same names are others."""
    (given / "a.csv").write_text(TABLE)
    np.save(given / "cloud.npy", POSITIONS)
    elsewhere = tmp_path / "elsewhere"
    (elsewhere / "given").mkdir(parents=True)
    (elsewhere / "output").mkdir()
    (elsewhere / "given" / "a.csv").write_text("longitude,latitude,height\n1,2,3\n")
    cluster = """
import distributed, sys
if __name__ == "__main__":
    with distributed.LocalCluster(n_workers=1, threads_per_worker=2, dashboard_address=None) as made:
        print(made.scheduler_address, flush=True)
        sys.stdin.read()
"""
    with subprocess.Popen([sys.executable, "-c", cluster], cwd=elsewhere, stdin=subprocess.PIPE,
                          stdout=subprocess.PIPE, text=True) as process:
        scheduler = process.stdout.readline().strip()
        made = subprocess.run(
            [sys.executable, SCRIPT, "--system", ROOT / "examples" / "rd_new.xml", "--scheduler", scheduler, ROWS,
             "given", "output"], cwd=tmp_path, capture_output=True, text=True, timeout=200)
        process.stdin.close()
    assert made.returncode == 0, made.stderr
    assert round(pd.read_csv(tmp_path / "output" / "a.csv").local_northing_m[0], 2) == 465682.97
    assert len(np.load(tmp_path / "output" / "cloud.npy")) == 25
    assert not list((elsewhere / "output").iterdir())


@pytest.mark.parametrize("name", ["a.csv", "cloud.npy", "cloud.zarr"])
def test_results_that_are_not_there_are_a_mistake(convert_directory, given, output, monkeypatch, name):
    """Workers that write into a directory of their own, which only has the same name."""
    (given / "a.csv").write_text(TABLE)
    np.save(given / "cloud.npy", POSITIONS)
    save_zarr(given / "cloud.zarr")
    partitions = convert_directory.module.partitions
    convert = partitions.convert

    def convert_elsewhere(plan, partition):
        if partition.source.endswith(name):
            return partitions.Done(partition, 1, 0)
        return convert(plan, partition)

    with monkeypatch.context() as patched:
        patched.setattr(partitions, "convert", convert_elsewhere)
        status, told = convert_directory(given, output, ROWS)
    assert status == 1 and f"not converted: {given / name}: the workers do not see {output}" in told
    assert told.count("not converted") == 1
    made = {path.name for path in output.iterdir() if path.is_file()} - {"kelstd-run.json"}
    assert made == {"a.csv", "cloud.npy"} - {name}
    assert convert_directory(given, output, ROWS)[0] == 0
    assert np.isfinite(zarr.open_array(str(output / "cloud.zarr"), mode="r")[:]).all()


def cut(path):
    path.write_bytes(path.read_bytes()[:20])


def empty(path):
    path.write_bytes(b"")


LEFT = {
    "nothing": lambda target: (shutil.rmtree(target), target.mkdir()),
    "no attributes": lambda target: [file.unlink() for file in target.iterdir() if file.name != ".zarray"],
    "half of the metadata": lambda target: ([file.unlink() for file in target.glob("*.0")], cut(target / ".zarray")),
    "empty metadata": lambda target: ([file.unlink() for file in target.glob("*.0")], empty(target / ".zattrs")),
    "an empty chunk": lambda target: empty(target / "1.0"),
    "an empty last chunk": lambda target: empty(target / "2.0"),
    "a temporary chunk": lambda target: (empty(target / "0.0.1f.partial"), (target / "0.0").unlink()),
    "a temporary array": lambda target: target.rename(target.with_name(".kelstd-left")),
}


@pytest.mark.parametrize("leave", LEFT.values(), ids=LEFT)
def test_what_a_killed_run_leaves_of_an_array_is_gone_on_with(convert_directory, given, output, leave):
    save_zarr(given / "cloud.zarr")
    assert convert_directory(given, output, ROWS)[0] == 0
    whole = contents(output)
    leave(output / "cloud.zarr")
    assert contents(output) != whole
    status, told = convert_directory(given, output, ROWS)
    assert status == 0, told
    assert contents(output) == whole and {path.name for path in output.iterdir()} == {"cloud.zarr", "kelstd-run.json"}


def test_empty_results_are_none(convert_directory, given, output):
    (given / "a.csv").write_text(TABLE)
    np.save(given / "cloud.npy", POSITIONS)
    assert convert_directory(given, output, ROWS)[0] == 0
    whole = contents(output)
    (output / "cloud.npy.parts").mkdir()
    for left in ("a.csv", "cloud.npy", "cloud.npy.parts/000000000010.npy"):
        empty(output / left)
    assert convert_directory(given, output, ROWS)[0] == 0
    assert contents(output) == whole


def test_an_array_that_is_another_one_is_kept(convert_directory, given, output):
    save_zarr(given / "cloud.zarr")
    (given / "a.csv").write_text(TABLE)
    assert convert_directory(given, output, ROWS)[0] == 0
    shutil.rmtree(output / "cloud.zarr")
    save_zarr(output / "cloud.zarr")
    before = contents(output)
    status, told = convert_directory(given, output, ROWS)
    assert status == 1 and "cloud.zarr has something else in it" in told
    assert contents(output) == before


def test_arrays_smaller_than_a_partition_are_done_once(convert_directory, given, output):
    save_zarr(given / "cloud.zarr")
    np.save(given / "none.npy", np.empty((0, 3)))
    assert convert_directory(given, output)[0] == 0
    assert np.load(output / "none.npy").shape == (0, 12)
    assert "nothing is left to do" in convert_directory(given, output)[1]
    assert os.stat(output / "cloud.zarr").st_mode & 0o777 == 0o755
