#!/usr/bin/python3
"""Converts a directory of positions on a Dask cluster, through the Python package kelstd.

    convert_directory.py --system EPSG:28992 INPUT OUTPUT                     # all cores of this machine
    convert_directory.py --system rd.xml --scheduler tcp://head:8786 INPUT OUTPUT

INPUT has CSV files (NAME.csv, with headings), arrays of NumPy (NAME.npy) and of Zarr (NAME.zarr), the
arrays with a row of three numbers for each position; angles are in degrees, lengths in metres. OUTPUT
gets what they become under the same names: tables with the input's columns in front and a reason for
each position that failed, arrays with the twelve columns that kelstd-run.json in OUTPUT names, NaN in
the rows of positions that failed.

A CSV file, or so many rows of an array, is a partition. It appears in OUTPUT whole or not at all, and
is not done again by the next run, which goes on where another one ended. Which worker does a
partition, and how many there are, changes no byte. INPUT and OUTPUT have to be the same directories
on all machines; KELSTD_HOME_DIR is best one of each machine's own.
"""

from __future__ import annotations

import argparse
import contextlib
import hashlib
import json
import os
import pathlib
import sys
from typing import Iterator
from xml.etree import ElementTree

import kelstd
import partitions

MANIFEST = "kelstd-run.json"


def fingerprint(source: pathlib.Path) -> list[int]:
    """What changes when an input does: sizes and times of its files."""
    files = [source] if source.is_file() else sorted(path for path in source.rglob("*") if path.is_file())
    digest = hashlib.sha256()
    for path in files:
        state = path.stat()
        digest.update(f"{path.relative_to(source)} {state.st_size} {state.st_mtime_ns}\n".encode())
    return [len(files), int.from_bytes(digest.digest()[:6], "big")]


def keep_to_manifest(plan: partitions.Plan, output: pathlib.Path, inputs: list[pathlib.Path], rows: int) -> None:
    """Refuses to go on with what another system, another frame or other inputs began."""
    now = {"system": plan.system, "frame": plan.frame, "csv_columns": list(plan.columns), "rows": rows,
           "columns": partitions.names_of(plan), "inputs": {path.name: fingerprint(path) for path in inputs}}
    path = output / MANIFEST
    if not path.exists() and any(not left.name.startswith(partitions.TEMPORARY) for left in output.iterdir()):
        raise SystemExit(f"{output} has something else in it; name another directory")
    if path.exists():
        before = json.loads(path.read_text())
        for key in ("system", "frame", "csv_columns", "rows"):
            if before[key] != now[key]:
                raise SystemExit(f"{output} was begun with another {key.replace('_', ' ')}; name another directory")
        for name, state in before["inputs"].items():
            if now["inputs"].setdefault(name, state) != state:
                raise SystemExit(f"{name} has changed since {output} was begun; name another directory")
    with partitions.replaced(path) as file:
        file.write(json.dumps(now, indent=1).encode())


# --- The run -------------------------------------------------------------------------------------


def finished(plan: partitions.Plan, todo: list[partitions.Partition], options: argparse.Namespace) -> Iterator[partitions.Done | str]:
    """What becomes of each partition, in the order in which they are done; a text is a mistake."""
    if not todo or (options.workers == 0 and options.scheduler is None):
        for partition in todo:
            try:
                yield partitions.convert(plan, partition)
            except Exception as error:
                yield f"{partition.source}: {error}"
        return
    import distributed

    with contextlib.ExitStack() as stack:
        cluster = options.scheduler or stack.enter_context(distributed.LocalCluster(
            n_workers=options.workers, threads_per_worker=1, dashboard_address=options.dashboard))
        client = stack.enter_context(distributed.Client(cluster))
        print(f"dashboard: {client.dashboard_link}", file=sys.stderr)
        client.upload_file(partitions.__file__)  # also to workers that come later
        futures = client.map(partitions.convert, [plan] * len(todo), todo, pure=False)
        partition_of = dict(zip(futures, todo))
        del futures
        for future in distributed.as_completed(list(partition_of)):
            error = future.exception()
            yield f"{partition_of[future].source}: {error}" if error else future.result()
            del partition_of[future]  # which the cluster then forgets


def arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("input", type=pathlib.Path, metavar="INPUT")
    parser.add_argument("output", type=pathlib.Path, metavar="OUTPUT")
    parser.add_argument("--system", required=True, help="a document, a name or a code")
    parser.add_argument("--from", dest="frame", default="wgs84-llh", choices=list(kelstd.FRAMES))
    parser.add_argument("--columns", help="of CSV files: three headings with commas between them; those "
                        "of the frame by default, such as longitude,latitude,height")
    parser.add_argument("--rows", type=int, default=1_000_000, help="of an array, in a partition")
    parser.add_argument("--scheduler", help="the address of a cluster")
    parser.add_argument("--workers", type=int, default=os.cpu_count(),
                        help="processes on this machine; 0 for none but this one")
    parser.add_argument("--dashboard", default=":8787", help="where a cluster on this machine shows it")
    options = parser.parse_args()
    columns = options.columns.split(",") if options.columns else list(kelstd.FRAMES[options.frame])
    if len(columns) != 3 or options.rows < 1 or options.workers < 0:
        parser.error("three columns, at least one row and no fewer than 0 workers")
    options.columns = tuple(columns)
    return options


def main() -> int:
    options = arguments()
    is_file = os.path.isfile(options.system)
    system = kelstd.System.open(options.system) if is_file else kelstd.System.find(options.system)
    # Otherwise the order of its attributes would not always be the same.
    document = ElementTree.canonicalize(system.to_xml())
    plan = partitions.Plan(document, options.frame, options.columns)
    inputs = sorted(path for path in options.input.iterdir() if path.suffix[1:] in partitions.KINDS)
    if not inputs:
        raise SystemExit(f"{options.input} has none of {', '.join('*.' + kind for kind in partitions.KINDS)}")
    options.output.mkdir(exist_ok=True)
    keep_to_manifest(plan, options.output, inputs, options.rows)

    mistakes = []
    todo = []
    for source in inputs:
        try:
            kind = partitions.KINDS[source.suffix[1:]]
            todo += kind.partitions(plan, source, options.output / source.name, options.rows)
        except (OSError, ValueError) as error:
            mistakes.append(f"{source}: {error}")
    positions = failed = done = 0
    if not todo:
        print("nothing is left to do", file=sys.stderr)
    for outcome in finished(plan, todo, options):
        if isinstance(outcome, str):
            mistakes.append(outcome)
            continue
        done, positions, failed = done + 1, positions + outcome.positions, failed + outcome.failed
        print(f"{done} of {len(todo)} partitions, {positions} positions", file=sys.stderr)
    if not mistakes:
        for source in inputs:
            finish = partitions.KINDS[source.suffix[1:]].finish
            if finish:
                finish(plan, source, options.output / source.name)
        for left in options.output.glob(partitions.TEMPORARY + "*"):
            left.unlink()  # of workers that were killed
    for mistake in mistakes:
        print(f"not converted: {mistake}", file=sys.stderr)
    if failed:
        print(f"{failed} of {positions} positions failed", file=sys.stderr)
    return 1 if mistakes else 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except (kelstd.Error, OSError) as error:
        sys.exit(f"convert_directory: {error}")
