#!/usr/bin/python3 -B
"""Times Converter.from_wgs84 of the Python package beside the array call of a builder in C++ on the
same loaded library, in turn on one thread: the same points, one-to-one, with what became of each.
What Python makes anew in each call, its result, the call in C++ finds made. Prints both medians of
processor time, after both results are found to be the same bit for bit.

usage: array_call.py LIBRARY SYSTEM POINTS

LIBRARY is what ArrayCall.cpp beside this becomes, SYSTEM a document. The package has to be found
(PYTHONPATH)."""

import ctypes
import os
import sys
import tempfile
import time
from statistics import median

import numpy

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "peers"))
from measuring import REPETITIONS, print_figure, run_interruptibly  # noqa: E402


def load(path):
    library = ctypes.CDLL(path)
    numbers = ctypes.POINTER(ctypes.c_double)
    library.prepare.argtypes = [ctypes.c_char_p, numbers, numbers, numbers, ctypes.c_size_t]
    library.prepare.restype = ctypes.c_bool
    library.run.restype = ctypes.c_double
    library.locations.restype = numbers
    return library


def time_python(converter, points):
    start = time.process_time()
    made = converter.from_wgs84(*points, threads=1)
    return time.process_time() - start, made


def main():
    library, system, count = load(sys.argv[1]), sys.argv[2], int(sys.argv[3])
    with tempfile.TemporaryDirectory() as home:
        os.environ["KELSTD_HOME_DIR"] = home
        import kelstd

        converter = kelstd.Converter(kelstd.System.open(system))
        random = numpy.random.default_rng(1)
        points = [random.uniform(0.0, 6.0, count), random.uniform(40.0, 60.0, count),
                  random.uniform(0.0, 1000.0, count)]
        pointers = [p.ctypes.data_as(ctypes.POINTER(ctypes.c_double)) for p in points]
        if not library.prepare(system.encode(), *pointers, count):
            sys.exit(f"array_call: {system} cannot be read")
        library.run(), time_python(converter, points)  # creates what both keep
        times = [(library.run(), time_python(converter, points)[0]) for _ in range(REPETITIONS)]
        if min(min(pair) for pair in times) < 0:
            sys.exit("array_call: some positions cannot be converted")
        made = time_python(converter, points)[1]
        theirs = numpy.ctypeslib.as_array(library.locations(), (count, 12))
        ours = numpy.stack([made[name] for name in made], axis=1)
        ours[:, [9, 10]] = ours[:, [10, 9]]  # of a location the easting stands first
        if ours.tobytes() != theirs.tobytes():
            sys.exit("array_call: the results differ")
    print_figure("arrayCall", 1e3 * median(theirs for theirs, _ in times), "ms")
    print_figure("arrayCallPoint", 1e6 * median(theirs for theirs, _ in times) / count, "us")
    print_figure("pythonArrays", 1e3 * median(ours for _, ours in times), "ms")


if __name__ == "__main__":
    run_interruptibly(main)
