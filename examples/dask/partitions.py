"""What there is to do in a directory of positions, and a partition of it on a worker."""

from __future__ import annotations

import contextlib
import functools
import os
import pathlib
import shutil
import tempfile
import warnings
from dataclasses import dataclass
from typing import Any, Callable, Iterator

import numpy as np
import pandas as pd

import kelstd

TEMPORARY = ".kelstd-"
ANGLE_DECIMALS, LENGTH_DECIMALS = 11, 5  # as kelstd convert prints: 0.01 mm


@dataclass(frozen=True)
class Partition:
    kind: str  # a name of KINDS
    source: str
    target: str
    first: int = 0  # of the rows of an array
    last: int = 0


@dataclass(frozen=True)
class Plan:
    """What is the same for all partitions."""

    system: str  # the document
    frame: str
    columns: tuple[str, ...]  # of CSV files: the headings of a position's three components


@dataclass(frozen=True)
class Done:
    partition: Partition
    positions: int
    failed: int


# --- A partition, on a worker --------------------------------------------------------------------


@functools.lru_cache(maxsize=2)
def converter_of(system: str) -> kelstd.Converter:
    """The one converter of a process, which keeps its builder from partition to partition."""
    return kelstd.Converter(kelstd.System.from_xml(system, lenient=True))


@contextlib.contextmanager
def replaced(target: pathlib.Path) -> Iterator[Any]:
    """A file that takes the place of ``target`` when it is whole and on the disk."""
    target.parent.mkdir(exist_ok=True)
    descriptor, name = tempfile.mkstemp(prefix=TEMPORARY, dir=target.parent)
    try:
        with os.fdopen(descriptor, "wb") as file:
            os.fchmod(descriptor, 0o644)
            yield file
            file.flush()
            os.fsync(descriptor)
        os.replace(name, target)
    except BaseException:
        os.unlink(name)
        raise


def convert_rows(plan: Plan, columns: Any) -> kelstd.Locations:
    # Dask spreads the work: one thread for each of its own.
    return converter_of(plan.system).convert(plan.frame, *columns, threads=1)


def block_of(made: kelstd.Locations) -> Any:
    return np.stack([made[name] for name in made], axis=1)


def convert_csv(plan: Plan, partition: Partition) -> Done:
    # As texts, so that what is carried through stays as it stands. A line of more fields than there
    # are headings would shift the others, or be cut.
    with warnings.catch_warnings():
        warnings.simplefilter("error", pd.errors.ParserWarning)
        table = pd.read_csv(
            partition.source, dtype=str, keep_default_na=False, index_col=False, encoding="utf-8-sig"
        )
    missing = [name for name in plan.columns if name not in table.columns]
    if missing:
        raise ValueError(f"there is no column {', '.join(missing)}; --columns names others")
    numbers = [pd.to_numeric(table[name], errors="coerce").to_numpy(float) for name in plan.columns]
    made = convert_rows(plan, numbers)
    for name in [*made, "local_height_reference", "reason"]:
        column = made.reasons if name == "reason" else made[name]
        if column.dtype == float:
            decimals = ANGLE_DECIMALS if name.endswith("_deg") else LENGTH_DECIMALS
            column = np.round(column, decimals)
        table[free_name(name, table.columns)] = column
    with replaced(pathlib.Path(partition.target)) as file:
        table.to_csv(file, index=False, lineterminator="\n")
    return Done(partition, len(table), int(made.failed.sum()))


def free_name(name: str, taken: Any) -> str:
    number = 1
    free = name
    while free in taken:
        number += 1
        free = f"{name}_{number}"
    return free


def convert_npy(plan: Plan, partition: Partition) -> Done:
    rows = np.load(partition.source, mmap_mode="r")[partition.first : partition.last]
    made = convert_rows(plan, rows.T)
    with replaced(pathlib.Path(partition.target)) as file:
        np.save(file, block_of(made))
    return Done(partition, len(rows), int(made.failed.sum()))


def convert_zarr(plan: Plan, partition: Partition) -> Done:
    import zarr

    rows = zarr.open_array(partition.source, mode="r")[partition.first : partition.last]
    made = convert_rows(plan, rows.T)
    # A chunk is a file, which Zarr replaces whole.
    zarr.open_array(partition.target, mode="r+")[partition.first : partition.last] = block_of(made)
    return Done(partition, len(rows), int(made.failed.sum()))


# --- What there is to do -------------------------------------------------------------------------


def width_of(plan: Plan) -> int:
    return len(names_of(plan))


def names_of(plan: Plan) -> list[str]:
    return list(converter_of(plan.system).convert(plan.frame, [], [], []))


def slices(count: int, rows: int) -> Iterator[tuple[int, int]]:
    return ((first, min(first + rows, count)) for first in range(0, count, rows))


def require_positions(array: Any, source: pathlib.Path) -> None:
    if array.ndim != 2 or array.shape[1] != 3 or array.dtype.kind not in "fiu":
        raise ValueError(f"{source}: {array.shape} of {array.dtype} is no array of rows of three numbers")


def csv_partitions(plan: Plan, source: pathlib.Path, target: pathlib.Path, rows: int) -> list[Partition]:
    return [] if target.exists() else [Partition("csv", str(source), str(target))]


def npy_partitions(plan: Plan, source: pathlib.Path, target: pathlib.Path, rows: int) -> list[Partition]:
    if target.exists():
        return []
    array = np.load(source, mmap_mode="r")
    require_positions(array, source)
    parts = parts_of(target)
    return [
        Partition("npy", str(source), str(part), first, last)
        for first, last in slices(len(array), rows)
        if not (part := parts / f"{first:012}.npy").exists()
    ]


def parts_of(target: pathlib.Path) -> pathlib.Path:
    return target.with_name(target.name + ".parts")


def zarr_partitions(plan: Plan, source: pathlib.Path, target: pathlib.Path, rows: int) -> list[Partition]:
    import zarr

    array = zarr.open_array(str(source), mode="r")
    require_positions(array, source)
    if not target.exists():
        made = zarr.open_array(str(target), mode="w-", shape=(len(array), width_of(plan)), dtype="f8",
                               chunks=(rows, width_of(plan)), fill_value=np.nan)
        made.attrs["columns"] = names_of(plan)
    done = zarr.open_array(str(target), mode="r").chunk_store
    return [
        Partition("zarr", str(source), str(target), first, last)
        for first, last in slices(len(array), rows)
        if f"{first // rows}.0" not in done
    ]


def finish_npy(plan: Plan, source: pathlib.Path, target: pathlib.Path) -> None:
    """Puts the parts of an array together, which then are removed."""
    if not target.exists():
        count = len(np.load(source, mmap_mode="r"))
        parts = sorted(parts_of(target).glob("*.npy"))
        with replaced(target) as file:
            header = {"descr": "<f8", "fortran_order": False, "shape": (count, width_of(plan))}
            np.lib.format.write_array_header_1_0(file, header)
            for part in parts:
                file.write(np.ascontiguousarray(np.load(part, mmap_mode="r"), "<f8").data)
    shutil.rmtree(parts_of(target), ignore_errors=True)


@dataclass(frozen=True)
class Kind:
    partitions: Callable[[Plan, pathlib.Path, pathlib.Path, int], list[Partition]]
    convert: Callable[[Plan, Partition], Done]
    finish: Callable[[Plan, pathlib.Path, pathlib.Path], None] | None = None


KINDS = {
    "csv": Kind(csv_partitions, convert_csv),
    "npy": Kind(npy_partitions, convert_npy, finish_npy),
    "zarr": Kind(zarr_partitions, convert_zarr),
}


def convert(plan: Plan, partition: Partition) -> Done:
    return KINDS[partition.kind].convert(plan, partition)
