#!/usr/bin/python3 -B
"""What a further point costs by each of the ways of docs/many-points.md: processor time of all
processes, in microseconds, from the difference between runs over many points and over a tenth of
them, so that starting up is not in it. Output goes where the way writes it: to a file.

usage: ways.py KELSTD EXAMPLE SYSTEM POINTS

KELSTD is the program, EXAMPLE the directory of the example on Dask. The package has to be found
(PYTHONPATH)."""

import os
import pathlib
import resource
import subprocess
import sys
import tempfile

import numpy

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "peers"))
from measuring import print_figure, run_interruptibly  # noqa: E402

FILES = 4
ROWS = 50_000


def write_points(place, count):
    """The same points as a text, as texts and as an array."""
    random = numpy.random.default_rng(1)
    points = numpy.column_stack([random.uniform(0.0, 6.0, count), random.uniform(40.0, 60.0, count),
                                 random.uniform(0.0, 1000.0, count)])
    (place / "tables").mkdir(parents=True)
    (place / "arrays").mkdir()
    numpy.save(place / "arrays" / "points.npy", points)
    options = {"fmt": "%.9f,%.9f,%.3f", "comments": ""}
    for number, piece in enumerate(numpy.array_split(points, FILES)):
        numpy.savetxt(place / "tables" / f"{number}.csv", piece, header="longitude,latitude,height", **options)
    numpy.savetxt(place / "points.csv", points, **options)


def ways(program, example, system, place):
    script = [sys.executable, str(example / "convert_directory.py"), "--system", system, "--workers", "2",
              "--rows", str(ROWS), "--dashboard", "127.0.0.1:0"]
    convert = f"'{program}' convert --csv --system '{system}' --threads"
    points, out = f"'{place}/points.csv'", f"> '{place}/out.csv'"
    return {
        "wayKelstd": f"{convert} 2 {points} {out}",
        "wayParallel": f"parallel --pipepart -a {points} --block 5M --keep-order -j 2 "
                       f"{convert.replace(chr(39), '')} 1 --no-header {out}",
        "wayDaskTables": [*script, str(place / "tables"), str(place / "tables-out")],
        "wayDaskArrays": [*script, str(place / "arrays"), str(place / "arrays-out")],
    }


def processor_time(command):
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    made = subprocess.run(command, shell=isinstance(command, str), capture_output=True, text=True)
    if made.returncode != 0:
        sys.exit(f"ways: {command}: {made.stderr}")
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def main():
    program, example, system, count = sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3], int(sys.argv[4])
    with tempfile.TemporaryDirectory() as directory:
        place = pathlib.Path(directory)
        (place / "home").mkdir()
        os.environ["KELSTD_HOME_DIR"] = str(place / "home")
        write_points(place / "few", count // 10)
        write_points(place / "many", count)
        few = ways(program, example, system, place / "few")
        many = ways(program, example, system, place / "many")
        processor_time(few["wayKelstd"])  # prepares PROJ
        for name in few:
            start = processor_time(few[name])
            more = processor_time(many[name]) - start
            print_figure(name, 1e6 * more / (count - count // 10), "us")
            print(f"{name}: {start:.1f} s for {count // 10} points", file=sys.stderr)


if __name__ == "__main__":
    run_interruptibly(main)
