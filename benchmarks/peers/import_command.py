#!/usr/bin/python3 -B
"""Times the command that imports a coordinate system beside kelstd convert of one point: whole
processes in turn. Prints the medians of their wall times.

usage: import_command.py KELSTD SYSTEM.xml"""

import subprocess
import sys
import time
from statistics import median

from measuring import print_figure, run_interruptibly

RUNS = 21


def wall_time(command, text=""):
    """Of a process that ends well [ms]."""
    start = time.perf_counter()
    subprocess.run(command, input=text, text=True, check=True, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL)
    return 1000 * (time.perf_counter() - start)


def main():
    kelstd, system = sys.argv[1:]
    commands = {
        "importCommand": ([kelstd, "system", "import", "EPSG:28992"], ""),
        "convertCommand": ([kelstd, "convert", "--system", system], "3,50,10\n"),
    }
    times = {name: [] for name in commands}
    for command, text in commands.values():
        wall_time(command, text)  # which unpacks PROJ
    for _ in range(RUNS):
        for name, (command, text) in commands.items():
            times[name].append(wall_time(command, text))
    for name, values in times.items():
        print_figure(name, median(values), "ms")


run_interruptibly(main)
