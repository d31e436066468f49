"""The dask tables against the serial ones, on two worker processes, over a
few hundred documents written by the importer."""

import os
import pathlib
import subprocess
import sys

import pytest

import morv_qc_json

pytest.importorskip("pandas")
pytest.importorskip("dask.dataframe")
distributed = pytest.importorskip("distributed")
import pandas  # noqa: E402

import morv_qc_json.dask  # noqa: E402
from morv_qc_json import tables  # noqa: E402

ROOT = pathlib.Path(__file__).resolve().parents[2]
DOCUMENTS = 240


@pytest.fixture(scope="module")
def folder(tmp_path_factory):
    outputs = sorted(p for p in (ROOT / "tests" / "data" / "gaussian").iterdir() if p.suffix in (".log", ".out"))
    results = [morv_qc_json.import_output(path) for path in outputs]
    folder = tmp_path_factory.mktemp("documents")
    for number in range(DOCUMENTS):
        morv_qc_json.dump(results[number % len(results)], folder / f"run{number:03d}.json")
    return folder


@pytest.fixture(scope="module")
def client():
    with distributed.LocalCluster(n_workers=2, threads_per_worker=1, processes=True) as cluster, \
            distributed.Client(cluster) as client:
        yield client


def test_two_workers_give_the_serial_table_and_results(folder, client):
    paths = sorted(str(p) for p in folder.glob("*.json"))
    serial = tables.energies(paths)
    parallel = morv_qc_json.dask.energies(str(folder / "*.json"), files_per_partition=16)
    assert parallel.npartitions == DOCUMENTS // 16
    pandas.testing.assert_frame_equal(parallel.compute().reset_index(drop=True), serial)
    # The results themselves come back from the workers' processes, pickled.
    assert morv_qc_json.dask.read(paths).compute() == [morv_qc_json.load(path) for path in paths]


def test_batch_example_writes_the_table(folder, tmp_path):
    csv = tmp_path / "energies.csv"
    run = subprocess.run([sys.executable, str(ROOT / "examples" / "batch_energies.py"), str(folder), "-o", str(csv),
                          "--workers", "2"], capture_output=True, text=True, env=os.environ, check=False)
    assert run.returncode == 0, run.stderr
    assert f"{DOCUMENTS} documents" in run.stdout
    written = pandas.read_csv(csv)
    serial = tables.energies(sorted(str(p) for p in folder.glob("*.json")))
    assert written["document"].tolist() == serial["document"].tolist()
    assert written["energy_hartree"].tolist() == serial["energy_hartree"].tolist()
