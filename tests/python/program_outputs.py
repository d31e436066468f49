"""The program outputs that the importer's tests read: the bundled ones, then
those of the shared folders when MORV_SHARED_OUTPUTS names them; each is
imported once, as its result and as the JSON its document writes."""

import json
import os
import pathlib

import pytest

import morv_qc_json

SHARED = os.environ.get("MORV_SHARED_OUTPUTS", "")
BUNDLED = pathlib.Path(__file__).resolve().parents[1] / "data"
SHARED_FOLDERS = {"gaussian": "Gaussian/basicGaussian16", "gamess": "GAMESS/basicGAMESS-US2018",
                  "orca": "ORCA/basicORCA6.0"}


def shared_folder(program):
    return pathlib.Path(SHARED) / SHARED_FOLDERS[program] if SHARED else None


def outputs(program):
    found = sorted(p for p in (BUNDLED / program).iterdir() if p.suffix in (".log", ".out"))
    shared = shared_folder(program)
    if shared is not None and shared.is_dir():
        found += sorted(p for p in shared.iterdir() if p.suffix in (".log", ".out"))
    return found


def skip_without_shared(program):
    shared = shared_folder(program)
    if shared is None or not shared.is_dir():
        pytest.skip(f"the shared outputs are not at MORV_SHARED_OUTPUTS={SHARED!r}/{SHARED_FOLDERS[program]}: "
                    "bundled outputs only")


_cache = {}


def imported(path):
    if path not in _cache:
        result = morv_qc_json.import_output(str(path))
        _cache[path] = (result, json.loads(morv_qc_json.dumps(result)))
    return _cache[path]


def analyses(doc, kind):
    return [a for a in doc["analyses"] if a["type"] == kind]
