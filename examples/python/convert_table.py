#!/usr/bin/python3
"""Gives a table of measured positions its coordinates in the plane.

    convert_table.py SYSTEM POINTS.csv

POINTS.csv has the columns point, longitude, latitude [deg, WGS84] and height [m]; SYSTEM is a document, a
name or a code. What cannot be converted is told of, and does not keep the others from being printed.
"""

import os
import sys

import pandas

import kelstd


def main(system, points):
    found = kelstd.System.open(system) if os.path.isfile(system) else kelstd.System.find(system)
    table = pandas.read_csv(points, comment="#")
    made = kelstd.Converter(found).from_wgs84(table.longitude, table.latitude, table.height)
    for name, easting, northing, height in zip(
        table.point, made.local_easting_m, made.local_northing_m, made.local_height_m
    ):
        print(f"{name:16} {easting:12.3f} {northing:12.3f} {height:9.3f}")
    for name, reason in zip(table.point[made.failed], made.reasons[made.failed]):
        print(f"{name}: {reason}", file=sys.stderr)
    return 1 if made.failed.any() else 0


if __name__ == "__main__":
    try:
        sys.exit(main(*sys.argv[1:]))
    except kelstd.Error as error:
        sys.exit(f"convert_table: {error}")
