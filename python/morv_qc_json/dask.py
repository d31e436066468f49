"""Many documents at once with dask, on a laptop's LocalCluster as on a
cluster's workers.

The client only lists the file names; the workers open and read the files,
so a document's text never goes through the client, and what comes back is
either ParseResults (which pickle as their JSON text) or table rows. dask is
imported when these functions are called.
"""

from __future__ import annotations

import glob
import math
import os
from collections.abc import Iterable, Sequence
from typing import TYPE_CHECKING, cast

from . import tables
from ._documents import read_document

if TYPE_CHECKING:
    import dask.bag
    import dask.dataframe
    import pandas  # type: ignore[import]

PathsOrGlob = str | os.PathLike[str] | Iterable[str | os.PathLike[str]]

# Files that one task reads: enough that the scheduler's cost per task is
# small beside the reading, few enough that the work spreads over workers.
DEFAULT_FILES_PER_PARTITION = 32


def expand(paths_or_glob: PathsOrGlob) -> list[str]:
    """The file names: a str is a glob pattern, sorted after expansion; anything else a list of paths."""
    if isinstance(paths_or_glob, str):
        return sorted(glob.glob(paths_or_glob))
    if isinstance(paths_or_glob, os.PathLike):
        return [os.fspath(paths_or_glob)]
    return [os.fspath(path) for path in paths_or_glob]


def _partitions(paths: Sequence[str], files_per_partition: int) -> list[list[str]]:
    return [list(paths[start:start + files_per_partition]) for start in range(0, len(paths), files_per_partition)]


def read(paths_or_glob: PathsOrGlob, files_per_partition: int = DEFAULT_FILES_PER_PARTITION) -> dask.bag.Bag:
    """A bag of the ParseResult of each file, read on the workers: JSON documents loaded, program outputs
    imported."""
    import dask.bag

    paths = expand(paths_or_glob)
    npartitions = max(1, math.ceil(len(paths) / files_per_partition))
    return dask.bag.from_sequence(paths, npartitions=npartitions).map(read_document)


def _energy_partition(paths: list[str]) -> pandas.DataFrame:
    return tables.energies(paths)


def energies(paths_or_glob: PathsOrGlob,
             files_per_partition: int = DEFAULT_FILES_PER_PARTITION) -> dask.dataframe.DataFrame:
    """The table of tables.energies over the files, one partition for each group of files, each read and
    tabulated on a worker; `document` holds each file's path, as tables.energies(paths) has it."""
    import dask
    import dask.dataframe

    parts = [dask.delayed(_energy_partition)(group) for group in _partitions(expand(paths_or_glob),
                                                                                files_per_partition)]
    # Every partition comes from tables.frame with these columns and dtypes,
    # so dask need not check each one against the empty table.
    meta = tables.frame([], tables.ENERGY_COLUMNS)
    if not parts:
        return dask.dataframe.from_pandas(meta, npartitions=1)
    return cast("dask.dataframe.DataFrame", dask.dataframe.from_delayed(parts, meta=meta, verify_meta=False))
