"""What there is to do in a directory of positions, and a partition of it on a worker."""

from __future__ import annotations

import contextlib
import functools
import io
import os
import pathlib
import shutil
import tempfile
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
    target: str  # the file that is there when it is done
    first: int = 0  # of the rows of an array
    last: int = 0


@dataclass(frozen=True)
class Plan:
    """What is the same for all partitions."""

    system: str  # the document
    frame: str
    columns: tuple[str, ...]  # of CSV files: the headings of a position's three components
    rows: int  # of an array, in a partition


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
    headings, table = table_of(pathlib.Path(partition.source).read_bytes())
    missing = [name for name in plan.columns if name not in headings]
    if missing:
        raise ValueError(f"there is no column {', '.join(missing)}; --columns names others")
    twice = [name for name in plan.columns if headings.count(name) > 1]
    if twice:
        raise ValueError(f"there is more than one column {', '.join(twice)}")
    numbers = [numbers_of(table[headings.index(name)].to_numpy(object)) for name in plan.columns]
    made = convert_rows(plan, numbers)
    for name in [*made, "local_height_reference", "reason"]:
        column = made.reasons if name == "reason" else made[name]
        if column.dtype == float:
            decimals = ANGLE_DECIMALS if name.endswith("_deg") else LENGTH_DECIMALS
            column = np.round(column, decimals)
        headings.append(free_name(name, headings))
        table[len(headings) - 1] = column
    with replaced(pathlib.Path(partition.target)) as file:
        table.to_csv(file, header=headings, index=False, lineterminator="\n")
    return Done(partition, len(table), int(made.failed.sum()))


def table_of(content: bytes) -> tuple[list[str], pd.DataFrame]:
    """The headings and the lines of a CSV file as texts, so that what is carried through stays as it stands.

    The headings are read as a line, too: pandas renames those that stand there twice, and takes for
    an index, or cuts, what lines have more than headings. As it is, such lines are a ValueError.
    """
    if b"\0" in content:  # where a text would end
        raise ValueError(f"line {content[:content.index(0)].count(10) + 1} has a null character")
    table = pd.read_csv(io.BytesIO(content), dtype=str, keep_default_na=False, header=None, encoding="utf-8-sig")
    return table.iloc[0].tolist(), table.iloc[1:].copy()


def numbers_of(texts: Any) -> Any:
    """Each text as the double next to it, which pandas.to_numeric can miss; NaN for what is no number."""
    if is_plain("".join(texts)):
        with contextlib.suppress(ValueError):
            return texts.astype(float)
    return np.array([number_of(text) for text in texts], dtype=float)


def number_of(text: str) -> float:
    try:
        return float(text) if is_plain(text) else np.nan
    except ValueError:
        return np.nan


def is_plain(text: str) -> bool:
    """Python's own numbers may have digits of any script, and underscores between them."""
    return text.isascii() and "_" not in text


def free_name(name: str, taken: Any) -> str:
    number = 1
    free = name
    while free in taken:
        number += 1
        free = f"{name}_{number}"
    return free


def convert_npy(plan: Plan, partition: Partition) -> Done:
    rows = npy_rows(partition.source)[partition.first : partition.last]
    made = convert_rows(plan, rows.T)
    with replaced(pathlib.Path(partition.target)) as file:
        np.save(file, block_of(made))
    return Done(partition, len(rows), int(made.failed.sum()))


def convert_zarr(plan: Plan, partition: Partition) -> Done:
    import zarr

    chunk = pathlib.Path(partition.target)
    rows = zarr.open_array(partition.source, mode="r")[partition.first : partition.last]
    made = convert_rows(plan, rows.T)
    if not is_done(chunk):
        chunk.unlink(missing_ok=True)  # which is empty, and would be read
    zarr.open_array(zarr_store(chunk.parent), mode="r+")[partition.first : partition.last] = block_of(made)
    return Done(partition, len(rows), int(made.failed.sum()))


def npy_rows(path: str | pathlib.Path) -> Any:
    return np.lib.format.open_memmap(path, mode="r")


def zarr_store(path: pathlib.Path) -> Any:
    """A directory whose files are on the disk before they have their names."""
    import zarr

    class Store(zarr.DirectoryStore):
        @staticmethod
        def _tofile(content: Any, name: str) -> None:
            with open(name, "wb") as file:
                file.write(content)
                file.flush()
                os.fsync(file.fileno())

    return Store(str(path))


# --- What there is to do -------------------------------------------------------------------------


def is_done(target: pathlib.Path) -> bool:
    """An empty file is what a machine without power leaves; no result is empty."""
    return target.exists() and target.stat().st_size > 0


def width_of(plan: Plan) -> int:
    return len(names_of(plan))


def names_of(plan: Plan) -> list[str]:
    return list(converter_of(plan.system).convert(plan.frame, [], [], []))


def slices(count: int, rows: int) -> Iterator[tuple[int, int]]:
    return ((first, min(first + rows, count)) for first in range(0, count, rows))


def require_positions(array: Any) -> None:
    if array.ndim != 2 or array.shape[1] != 3 or array.dtype.kind not in "fiu":
        raise ValueError(f"{array.shape} of {array.dtype} is no array of rows of three numbers")


def csv_partitions(plan: Plan, source: pathlib.Path, target: pathlib.Path) -> list[Partition]:
    return [] if is_done(target) else [Partition("csv", str(source), str(target))]


def npy_partitions(plan: Plan, source: pathlib.Path, target: pathlib.Path) -> list[Partition]:
    if is_done(target):
        return []
    array = npy_rows(source)
    require_positions(array)
    parts_of(target).mkdir(exist_ok=True)
    return [
        Partition("npy", str(source), str(part), first, last)
        for first, last in slices(len(array), plan.rows)
        if not is_done(part := part_of(target, first))
    ]


def parts_of(target: pathlib.Path) -> pathlib.Path:
    return target.with_name(target.name + ".parts")


def part_of(target: pathlib.Path, first: int) -> pathlib.Path:
    return parts_of(target) / f"{first:012}.npy"


def zarr_partitions(plan: Plan, source: pathlib.Path, target: pathlib.Path) -> list[Partition]:
    import zarr

    array = zarr.open_array(str(source), mode="r")
    require_positions(array)
    begin_zarr(plan, target, len(array))
    return [
        Partition("zarr", str(source), str(chunk), first, last)
        for first, last in slices(len(array), plan.rows)
        if not is_done(chunk := target / f"{first // plan.rows}.0")
    ]


def begin_zarr(plan: Plan, target: pathlib.Path, count: int) -> None:
    """Makes the array with its attributes, which appears whole; what is no such array goes, if it is empty."""
    import zarr

    shape, chunks = (count, width_of(plan)), (plan.rows, width_of(plan))
    with contextlib.suppress(ValueError, zarr.errors.MetadataError):
        begun = zarr.open_array(str(target), mode="r")
        if (begun.shape, begun.chunks, begun.attrs.get("columns")) == (shape, chunks, names_of(plan)):
            return
    if target.exists():
        if any(not file.name.startswith(".") for file in target.iterdir()):
            raise ValueError(f"{target} has something else in it")
        shutil.rmtree(target)
    place = pathlib.Path(tempfile.mkdtemp(prefix=TEMPORARY, dir=target.parent))
    try:
        made = zarr.open_array(zarr_store(place), mode="w", shape=shape, dtype="f8", chunks=chunks, fill_value=np.nan)
        made.attrs["columns"] = names_of(plan)
        place.chmod(0o755)
        place.rename(target)
    except BaseException:
        shutil.rmtree(place)
        raise


def finish_npy(plan: Plan, source: pathlib.Path, target: pathlib.Path) -> None:
    """Puts the parts of an array together, which then are removed."""
    if not is_done(target):
        count = len(npy_rows(source))
        with replaced(target) as file:
            header = {"descr": "<f8", "fortran_order": False, "shape": (count, width_of(plan))}
            np.lib.format.write_array_header_1_0(file, header)
            for first, _ in slices(count, plan.rows):
                file.write(np.ascontiguousarray(npy_rows(part_of(target, first)), "<f8").data)
    shutil.rmtree(parts_of(target), ignore_errors=True)


def finish_zarr(plan: Plan, source: pathlib.Path, target: pathlib.Path) -> None:
    for left in target.glob("*.partial"):
        left.unlink()  # of workers that were killed


@dataclass(frozen=True)
class Kind:
    partitions: Callable[[Plan, pathlib.Path, pathlib.Path], list[Partition]]
    convert: Callable[[Plan, Partition], Done]
    finish: Callable[[Plan, pathlib.Path, pathlib.Path], None] | None = None


KINDS = {
    "csv": Kind(csv_partitions, convert_csv),
    "npy": Kind(npy_partitions, convert_npy, finish_npy),
    "zarr": Kind(zarr_partitions, convert_zarr, finish_zarr),
}


def kind_of(source: pathlib.Path) -> str:
    return source.suffix[1:].lower()


def convert(plan: Plan, partition: Partition) -> Done:
    return KINDS[partition.kind].convert(plan, partition)
