#!/usr/bin/env python3
"""Documents per second for the energies table: a plain loop over the files
(tables.energies) against morv_qc_json.dask.energies on a LocalCluster of one
and of two worker processes, over documents that the importer writes from the
bundled Gaussian outputs.

    dask_bench.py [--documents N] [--repeats R]

The cluster starts before the clock does: the figures are those of reading
and tabulating, not of starting processes. Each figure is the best of R runs.
"""

import argparse
import pathlib
import tempfile
import time

from distributed import Client, LocalCluster

import morv_qc_json
import morv_qc_json.dask
from morv_qc_json import tables

OUTPUTS = pathlib.Path(__file__).resolve().parents[1] / "tests" / "data" / "gaussian"


def write_documents(folder: pathlib.Path, count: int) -> list[str]:
    results = [morv_qc_json.import_output(p) for p in sorted(OUTPUTS.iterdir()) if p.suffix in (".log", ".out")]
    paths = [str(folder / f"run{number:05d}.json") for number in range(count)]
    for number, path in enumerate(paths):
        morv_qc_json.dump(results[number % len(results)], path)
    return paths


def best_seconds(run, repeats: int) -> float:
    timings = []
    for _ in range(repeats):
        start = time.perf_counter()
        run()
        timings.append(time.perf_counter() - start)
    return min(timings)


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--documents", type=int, default=2000)
    parser.add_argument("--repeats", type=int, default=3)
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory() as scratch:
        paths = write_documents(pathlib.Path(scratch), arguments.documents)
        size = sum(pathlib.Path(path).stat().st_size for path in paths) / 1e6
        print(f"{len(paths)} documents, {size:.1f} MB of JSON")
        rows = [("plain loop (tables.energies)", best_seconds(lambda: tables.energies(paths), arguments.repeats))]
        for workers in (1, 2):
            with LocalCluster(n_workers=workers, threads_per_worker=1, processes=True) as cluster, Client(cluster):
                seconds = best_seconds(lambda: morv_qc_json.dask.energies(paths).compute(), arguments.repeats)
            rows.append((f"dask.energies, {workers} worker{'s' if workers > 1 else ''}", seconds))
        for name, seconds in rows:
            print(f"{name:<32} {seconds:8.3f} s  {len(paths) / seconds:10.0f} documents/s")


if __name__ == "__main__":
    main()
