#!/usr/bin/env python3
"""Tabulates every energy of a folder of documents on a dask LocalCluster,
with a progress bar, into one CSV file.

    batch_energies.py FOLDER -o energies.csv [--workers N] [--pattern '*.json']

Point a distributed.Client at a real cluster instead of the LocalCluster, and
the same morv_qc_json.dask.energies call reads the files on its workers.
"""

import argparse
import pathlib

from distributed import Client, LocalCluster, progress

import morv_qc_json.dask


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("-o", "--output", type=pathlib.Path, default=pathlib.Path("energies.csv"))
    parser.add_argument("--workers", type=int, default=2)
    parser.add_argument("--pattern", default="*.json", help="which files of the folder to read")
    arguments = parser.parse_args()

    with LocalCluster(n_workers=arguments.workers, threads_per_worker=1, processes=True) as cluster, \
            Client(cluster):
        table = morv_qc_json.dask.energies(str(arguments.folder / arguments.pattern)).persist()
        progress(table)
        frame = table.compute().reset_index(drop=True)
    frame.to_csv(arguments.output, index=False)
    documents = frame["document"].nunique()
    primary = frame[frame["primary"]]
    print(f"\n{documents} documents, {len(frame)} energies, {len(primary)} steps -> {arguments.output}")
    if len(primary):
        lowest = primary.loc[primary["energy_hartree"].idxmin()]
        print(f"lowest primary energy: {lowest['energy_hartree']:.10f} hartree in {lowest['document']}")


if __name__ == "__main__":
    main()
