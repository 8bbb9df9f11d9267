#!/usr/bin/python3 -B
"""Times kelstd convert, which prints all four frames, beside cs2cs, which prints the projected one:
whole processes in turn, from the same file of WGS84 positions, with as many decimals. Prints the
medians of their wall and processor times and the largest peak memory of kelstd for a tenth of the
lines, for all and for five times as many, after all results are found to agree.

usage: whole_programs.py KELSTD SYSTEM.xml LINES"""

import itertools
import os
import random
import subprocess
import sys
import tempfile
import time
from dataclasses import dataclass
from statistics import median

from measuring import REPETITIONS, print_figure, run_interruptibly

TOLERANCE = 1e-4  # m
DECIMALS = 5  # of metres in kelstd's CSV
MEMORY_SCALES = (0.1, 1, 5)


@dataclass
class Cost:
    wall: float  # s
    processor: float  # s, of all threads
    peak: float  # MiB


def run(command, output=subprocess.DEVNULL):
    """Runs a command to its end. Its peak memory is at least this script's own, of which a child
    process inherits the account: nothing large may be kept here."""
    start = time.perf_counter()
    with subprocess.Popen(command, stdout=output) as process:
        _, status, usage = os.wait4(process.pid, 0)
        wall = time.perf_counter() - start
        process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        sys.exit(f"whole_programs: exit status {process.returncode} of {' '.join(command)}")
    return Cost(wall, usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024)


def write_points(path, lines):
    """Longitude, latitude [deg], height [m] about the system's central meridian."""
    generator = random.Random(1)
    with open(path, "w") as file:
        for _ in range(lines):
            file.write(f"{generator.uniform(0, 6):.11f} {generator.uniform(40, 60):.11f} "
                       f"{generator.uniform(0, 1000):.5f}\n")


def cs2cs_command(kelstd, system):
    """cs2cs with the two definitions that kelstd makes of the system, as separate words. Heights,
    too, are transformed only in three dimensions."""
    shown = subprocess.run([kelstd, "system", "show", system], check=True, text=True,
                           stdout=subprocess.PIPE).stdout
    definitions = {}
    for line in shown.splitlines():
        frame, plus, definition = line.partition("+proj=")
        definitions[frame.strip()] = (plus + definition).split()
    return ["cs2cs", "--3d", "-f", f"%.{DECIMALS}f", *definitions["WGS84 geographic"], "+to",
            *definitions["local projected"]]


def check_agreement(kelstd_output, cs2cs_output, lines):
    """Easting, northing and height of each line."""
    with open(kelstd_output) as ours, open(cs2cs_output) as theirs:
        heading = next(ours).rstrip("\n").split(",")
        columns = [heading.index(name)
                   for name in ("local_easting_m", "local_northing_m", "local_height_m")]
        compared = 0
        for our_line, their_line in itertools.zip_longest(ours, theirs, fillvalue=""):
            our_fields, their_values = our_line.split(","), their_line.split()
            our_values = [our_fields[i] for i in columns if i < len(our_fields)]
            if not agree(our_values, their_values):
                sys.exit(f"whole_programs: position {compared + 1}: kelstd has {our_values}, "
                         f"cs2cs {their_values}")
            compared += 1
    if compared != lines:
        sys.exit(f"whole_programs: {compared} results of {lines} positions")


def agree(ours, theirs):
    return len(ours) == len(theirs) == 3 and all(
        len(a.partition(".")[2]) == len(b.partition(".")[2]) == DECIMALS
        and abs(float(a) - float(b)) <= TOLERANCE for a, b in zip(ours, theirs))


def main():
    kelstd, system, lines = sys.argv[1], sys.argv[2], int(sys.argv[3])
    with tempfile.TemporaryDirectory() as directory:
        os.environ["KELSTD_HOME_DIR"] = directory
        points = {scale: f"{directory}/points_{scale}" for scale in MEMORY_SCALES}
        for scale, path in points.items():
            write_points(path, round(scale * lines))
        convert = [kelstd, "convert", "--csv", "--system", system]
        cs2cs = cs2cs_command(kelstd, system)

        outputs = [f"{directory}/kelstd", f"{directory}/cs2cs"]
        for command, output in zip([convert, cs2cs], outputs):
            with open(output, "w") as file:
                run([*command, points[1]], file)
        check_agreement(*outputs, lines)
        for output in outputs:
            os.remove(output)

        costs = [(run([*convert, points[1]]), run([*cs2cs, points[1]]))
                 for _ in range(REPETITIONS)]
        peaks = {scale: max(run([*convert, path]).peak for _ in range(3))
                 for scale, path in points.items()}

    for name, own in zip(("kelstd", "cs2cs"), zip(*costs)):
        print_figure(f"{name}Lines", 1e3 * median(cost.wall for cost in own), "ms")
        print_figure(f"{name}LinesCpu", 1e3 * median(cost.processor for cost in own), "ms")
    for scale, peak in peaks.items():
        print_figure(f"kelstdMemory/{scale}", peak, "MiB")


if __name__ == "__main__":
    run_interruptibly(main)
