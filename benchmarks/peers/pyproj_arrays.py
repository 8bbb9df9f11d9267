#!/usr/bin/python3 -B
"""Times pyproj's array call beside that of LocationBuilder, in turn on one thread: the same points
from the same WGS84 geographic to the same projected definition. pyproj takes PROJ's own single
transformation and makes one frame; LocationBuilder makes all four. Prints both medians, after all
results are found to agree with those of the three transformations between the definitions.

usage: pyproj_arrays.py LOCATION_ARRAYS POINTS

LOCATION_ARRAYS is the program that LocationArrays.cpp beside this becomes."""

import os
import subprocess
import sys
import tempfile
import time
from statistics import median

import numpy
import pyproj

from measuring import REPETITIONS, print_figure, run_interruptibly

TOLERANCE = 1e-6  # m
METRES_PER_DEGREE = 111_700.0  # of a meridian at the poles, where it is longest


def make_points(count):
    """Longitudes, latitudes [deg] and heights [m] about the system's central meridian."""
    random = numpy.random.default_rng(1)
    return [random.uniform(0.0, 6.0, count), random.uniform(40.0, 60.0, count),
            random.uniform(0.0, 1000.0, count)]


def make_frames(transformers, points):
    """The points and what each transformer makes of the frame before."""
    frames = [points]
    for transformer in transformers:
        frames.append(transformer.transform(*frames[-1]))
    return frames


def check_agreement(frames, locations):
    """All four frames of each location beside pyproj's, three components each."""
    scales = [METRES_PER_DEGREE, METRES_PER_DEGREE, 1.0]
    for frame, units in enumerate([scales, [1.0] * 3, scales, [1.0] * 3]):
        for component, unit in enumerate(units):
            difference = frames[frame][component] - locations[:, 3 * frame + component]
            worst = numpy.max(numpy.abs(difference)) * unit
            if not worst <= TOLERANCE:  # nor where it is not a number
                sys.exit(f"pyproj_arrays: component {component} of frame {frame} differs from "
                         f"pyproj's by {worst} m")


def main():
    program, count = sys.argv[1], int(sys.argv[2])
    points = make_points(count)
    with tempfile.TemporaryDirectory() as directory:
        os.environ["TMPDIR"] = directory  # for what an interrupted program leaves
        points_file, locations_file = f"{directory}/points", f"{directory}/locations"
        numpy.column_stack(points).tofile(points_file)
        with subprocess.Popen([program, points_file, locations_file], text=True,
                              stdin=subprocess.PIPE, stdout=subprocess.PIPE) as ours:
            definitions = [ours.stdout.readline().rstrip("\n") for _ in range(4)]
            transformers = [pyproj.Transformer.from_crs(source, target, always_xy=True)
                            for source, target in zip(definitions, definitions[1:])]

            direct = pyproj.Transformer.from_crs(definitions[0], definitions[3], always_xy=True)

            def time_ours():
                print(file=ours.stdin, flush=True)
                return float(ours.stdout.readline())

            def time_theirs():
                start = time.perf_counter()
                direct.transform(*points)
                return time.perf_counter() - start

            time_ours(), time_theirs()  # creates what both keep
            times = [(time_ours(), time_theirs()) for _ in range(REPETITIONS)]
        if ours.returncode != 0:
            sys.exit(f"pyproj_arrays: {program} failed")
        check_agreement(make_frames(transformers, points),
                        numpy.fromfile(locations_file).reshape(count, 12))
    print_figure("locationArrays", 1e3 * median(ours for ours, _ in times), "ms")
    print_figure("pyprojArrays", 1e3 * median(theirs for _, theirs in times), "ms")


if __name__ == "__main__":
    run_interruptibly(main)
