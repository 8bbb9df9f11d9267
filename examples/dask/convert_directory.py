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
partition, and how many there are, changes no byte. What cannot be converted is told of, and the rest
is done all the same. INPUT and OUTPUT have to be the same directories on all machines;
KELSTD_HOME_DIR is best one of each machine's own.
"""

from __future__ import annotations

import argparse
import contextlib
import hashlib
import json
import os
import pathlib
import shutil
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


def keep_to_manifest(plan: partitions.Plan, output: pathlib.Path, inputs: list[pathlib.Path]) -> None:
    """Refuses to go on with what another system, another frame or other inputs began."""
    now = {"system": plan.system, "frame": plan.frame, "csv_columns": list(plan.columns), "rows": plan.rows,
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


def finished(plan: partitions.Plan, todo: list[partitions.Partition], options: argparse.Namespace) -> Iterator[
        tuple[partitions.Partition, partitions.Done | BaseException]]:
    """What becomes of each partition, in the order in which they are done."""
    if not todo or (options.workers == 0 and options.scheduler is None):
        for partition in todo:
            try:
                yield partition, partitions.convert(plan, partition)
            except Exception as error:
                yield partition, error
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
            yield partition_of[future], future.exception() or future.result()
            del partition_of[future]  # which the cluster then forgets


class Run:
    """What there is to do for a directory, and what came of it."""

    def __init__(self, plan: partitions.Plan, inputs: list[pathlib.Path], output: pathlib.Path) -> None:
        self.plan = plan
        self.inputs = inputs
        self.output = output
        self.mistakes: dict[pathlib.Path, str] = {}  # the first one of each input
        self.positions = self.failed = 0

    @contextlib.contextmanager
    def mistakes_of(self, source: pathlib.Path) -> Iterator[None]:
        """What is wrong with an input costs the others nothing."""
        try:
            yield
        except Exception as error:
            self.note(source, error)

    def note(self, source: pathlib.Path, error: BaseException) -> None:
        self.mistakes.setdefault(source, str(error).strip() or repr(error))

    def to_do(self) -> list[partitions.Partition]:
        todo: list[partitions.Partition] = []
        for source in self.inputs:
            with self.mistakes_of(source):
                kind = partitions.KINDS[partitions.kind_of(source)]
                todo += kind.partitions(self.plan, source, self.output / source.name)
        return todo

    def convert(self, todo: list[partitions.Partition], options: argparse.Namespace) -> None:
        done = []
        for partition, outcome in finished(self.plan, todo, options):
            if isinstance(outcome, BaseException):
                self.note(pathlib.Path(partition.source), outcome)
                continue
            done.append(partition)
            self.positions, self.failed = self.positions + outcome.positions, self.failed + outcome.failed
            print(f"{len(done)} of {len(todo)} partitions, {self.positions} positions", file=sys.stderr)
        self.look_for(done)

    def look_for(self, done: list[partitions.Partition]) -> None:
        """Workers elsewhere may have written into another directory of this name."""
        for folder in {pathlib.Path(partition.target).parent for partition in done}:
            os.listdir(folder)  # so that a network file system looks again
        for partition in done:
            if not partitions.is_done(pathlib.Path(partition.target)):
                unseen = OSError(f"the workers do not see {self.output}: there is no {partition.target}")
                self.note(pathlib.Path(partition.source), unseen)

    def finish(self) -> None:
        for source in self.inputs:
            finish = partitions.KINDS[partitions.kind_of(source)].finish
            if finish and source not in self.mistakes:
                with self.mistakes_of(source):
                    finish(self.plan, source, self.output / source.name)
        if not self.mistakes:
            for left in self.output.glob(partitions.TEMPORARY + "*"):
                shutil.rmtree(left) if left.is_dir() else left.unlink()  # of workers that were killed


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
    if len(set(columns)) != 3:
        parser.error("--columns names a column twice")
    options.columns = tuple(columns)
    # Workers may have another current directory.
    options.input, options.output = options.input.absolute(), options.output.absolute()
    return options


def inputs_of(directory: pathlib.Path, output: pathlib.Path) -> list[pathlib.Path]:
    """What is converted; of everything else it is said that it is not."""
    taken = []
    for path in sorted(directory.iterdir()):
        if path == output:
            continue
        if partitions.kind_of(path) in partitions.KINDS and not path.name.startswith(partitions.TEMPORARY):
            taken.append(path)
        else:
            print(f"not taken: {path}", file=sys.stderr)
    return taken


def main() -> int:
    options = arguments()
    is_file = os.path.isfile(options.system)
    system = kelstd.System.open(options.system) if is_file else kelstd.System.find(options.system)
    # Otherwise the order of its attributes would not always be the same.
    document = ElementTree.canonicalize(system.to_xml())
    plan = partitions.Plan(document, options.frame, options.columns, options.rows)
    inputs = inputs_of(options.input, options.output)
    if not inputs:
        raise SystemExit(f"{options.input} has none of {', '.join('*.' + kind for kind in partitions.KINDS)}")
    options.output.mkdir(exist_ok=True)
    keep_to_manifest(plan, options.output, inputs)

    run = Run(plan, inputs, options.output)
    todo = run.to_do()
    if not todo:
        print("nothing is left to do", file=sys.stderr)
    run.convert(todo, options)
    run.finish()
    for source, mistake in run.mistakes.items():
        print(f"not converted: {source}: {mistake}", file=sys.stderr)
    if run.failed:
        print(f"{run.failed} of {run.positions} positions failed", file=sys.stderr)
    return 1 if run.mistakes else 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except (kelstd.Error, OSError) as error:
        sys.exit(f"convert_directory: {error}")
