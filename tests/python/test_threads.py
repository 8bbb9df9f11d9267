"""Conversions on several threads and in several processes, interrupted, copied, and what they leave."""

import os
import pickle
import resource
import signal
import subprocess
import sys
import threading

import numpy as np
import pytest

from conftest import ROOT
from test_converter import COLUMNS


def many(count, seed=3):
    random = np.random.default_rng(seed)
    lon, lat = random.uniform(3, 8, count), random.uniform(50, 54, count)
    lon[::97] = np.nan
    return lon, lat, random.uniform(-10, 300, count)


def test_the_interrupt_key_ends_a_conversion(rd_converter):
    lon = np.full(6_000_000, 5.0)
    threading.Timer(0.3, os.kill, (os.getpid(), signal.SIGINT)).start()
    with pytest.raises(KeyboardInterrupt):
        while True:
            rd_converter.from_wgs84(lon, 52.0, 0.0, threads=2)
    assert not rd_converter.from_wgs84(5, 52, 0).failed


def test_results_outlive_what_they_came_from(kelstd, rd):
    positions = many(20_000, seed=9)
    kept = [kelstd.Converter(rd).from_wgs84(*positions).local_northing_m for _ in range(3)]
    # The memory of large results is used again: not while somebody has a column of it.
    others = kelstd.Converter(rd).from_wgs84(*many(20_000, seed=10))
    del others
    kelstd.Converter(rd).from_wgs84(*many(20_000, seed=11))
    assert kept[0].tobytes() == kept[1].tobytes() == kept[2].tobytes()


def test_the_number_of_threads_changes_no_bit(rd_converter):
    positions = many(60_000)
    one = rd_converter.from_wgs84(*positions, threads=1)
    for threads in (2, 5, None):
        other = rd_converter.from_wgs84(*positions, threads=threads)
        for name in COLUMNS:
            assert one[name].tobytes() == other[name].tobytes()
        assert (one.failed == other.failed).all() and (one.reasons == other.reasons).all()


def test_a_converter_is_used_by_several_threads_at_once(rd_converter):
    positions = many(20_000)
    expected = rd_converter.from_wgs84(*positions, threads=1).local_northing_m.tobytes()
    results = []

    def convert():
        for _ in range(3):
            results.append(rd_converter.from_wgs84(*positions, threads=2).local_northing_m.tobytes())

    threads = [threading.Thread(target=convert) for _ in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert results == [expected] * 12


def test_other_python_threads_run_meanwhile(rd_converter):
    positions = many(150_000)
    steps, done = [], threading.Event()

    def count():
        while not done.is_set():
            steps.append(1)
            done.wait(0.001)

    counter = threading.Thread(target=count)
    counter.start()
    rd_converter.from_wgs84(*positions, threads=1)
    done.set()
    counter.join()
    # While the interpreter is locked there would be none or one.
    assert len(steps) > 10


def test_a_forked_process_converts_on_its_own(rd_converter):
    positions = many(5_000)
    expected = rd_converter.from_wgs84(*positions, threads=1).local_northing_m.tobytes()
    read, write = os.pipe()
    child = os.fork()
    if child == 0:
        try:
            same = rd_converter.from_wgs84(*positions, threads=1).local_northing_m.tobytes() == expected
            os.write(write, b"same" if same else b"different")
        finally:
            os._exit(0)
    os.close(write)
    with os.fdopen(read, "rb") as pipe:
        assert pipe.read() == b"same"
    os.waitpid(child, 0)


def test_a_copy_by_pickle_gives_the_same_bits(rd_converter):
    positions = many(2_000)
    copy = pickle.loads(pickle.dumps(rd_converter))
    assert (copy.from_wgs84(*positions).local_northing_m.tobytes()
            == rd_converter.from_wgs84(*positions).local_northing_m.tobytes())


def test_without_more_threads_one_is_enough():
    """Stacks of a terabyte: the system refuses every further thread."""
    code = """
import numpy as np, kelstd
converter = kelstd.Converter(kelstd.System.open("tests/data/systems/rd_new.xml"))
lon = np.full(50_000, 5.0)
made = [converter.from_wgs84(lon, 52.0, 0.0, threads=threads) for threads in (1, 4)]
assert made[0].local_northing_m.tobytes() == made[1].local_northing_m.tobytes()
print("same")
"""
    def limit():
        resource.setrlimit(resource.RLIMIT_STACK, (1 << 40, resource.RLIM_INFINITY))
        resource.setrlimit(resource.RLIMIT_AS, (1 << 34, 1 << 34))

    done = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, cwd=ROOT,
                          preexec_fn=limit, timeout=120,
                          env={**os.environ, "OPENBLAS_NUM_THREADS": "1"})
    assert (done.returncode, done.stdout) == (0, "same\n"), done.stderr
