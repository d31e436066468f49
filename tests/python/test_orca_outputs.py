"""ORCA outputs imported into documents, checked against the numbers that the
outputs print. Debian's cclib 1.6 gives up on every ORCA 6 output at hand (an
IndexError on the version banner, a ValueError on the scan's parameters; see
bench/README.md), so it can be no second opinion here and the printed text is
the reference: each output must import, complete, into a document that
validates and passes the JSON Schema; every "FINAL SINGLE POINT ENERGY" line
must come back as it stands; and a table of values copied from the outputs
covers what the C++ tests' bundled outputs do not."""

import json
import pathlib
import re

import pytest

import morv_qc_json
from program_outputs import SHARED_FOLDERS, analyses, imported, outputs, shared_folder, skip_without_shared

SCHEMA = pathlib.Path(__file__).resolve().parents[2] / "schema" / "morv.qc.document.v2.schema.json"


def energies(doc, label):
    return [e["value"]["hartree"] for step in doc["steps"] for e in step.get("energies", []) if e["label"] == label]


@pytest.mark.parametrize("path", outputs("orca"), ids=lambda p: p.name)
def test_output_imports_complete_and_valid(path):
    jsonschema = pytest.importorskip("jsonschema")
    result, doc = imported(path)
    ended = "****ORCA TERMINATED NORMALLY****" in path.read_text(errors="replace")
    assert str(result.status) == ("complete" if ended else "partial")
    assert len(morv_qc_json.validate_document(result.value)) == 0
    jsonschema.Draft202012Validator(json.loads(SCHEMA.read_text())).validate(doc)
    printed = re.findall(r"^FINAL SINGLE POINT ENERGY\s+(\S+)$", path.read_text(errors="replace"), re.M)
    assert energies(doc, "FINAL SINGLE POINT ENERGY") == [float(value) for value in printed]


# (file, what is looked at, the value as the output prints it)
PRINTED = [
    ("dvb_raman.out", lambda d: analyses(d, "vibrational")[0]["modes"][-1]["raman_activity"], 94.494836),
    ("dvb_raman.out", lambda d: analyses(d, "vibrational")[0]["modes"][-1]["frequency_cm1"], 3545.64),
    ("dvb_sp_un_hf.out", lambda d: [(a["spin"], len(a["orbitals"])) for a in analyses(d, "orbital_set")],
     [("alpha", 46), ("beta", 45)]),
    ("dvb_sp_un_hf.out", lambda d: analyses(d, "atomic_charges")[0]["records"][0]["spin_population"], 0.491170),
    ("dvb_sp_un_hf.out", lambda d: d["systems"][0]["electronic_state"], {"charge": 1, "multiplicity": 2}),
    ("water_mp3.out", lambda d: energies(d, "E(MP3)"), [-75.009120941]),
    ("dvb_dispersion_bp86_d3zero.out", lambda d: energies(d, "Dispersion correction"), [-0.014719932]),
    ("dvb_scan_unrelaxed.out", lambda d: [s.get("native_cycle") for s in d["steps"]], list(range(1, 13))),
    ("dvb_scan_unrelaxed.out", lambda d: d["jobs"][0]["tasks"], ["scan"]),
    # The CIS guess, the ionisations and attachments STEOM starts from, and
    # its own states.
    ("dvb_steom_ccsd.log", lambda d: [(a["method"], len(a["states"])) for a in analyses(d, "excited_states")],
     [("CIS", 2), ("IP-EOM-CCSD", 8), ("EA-EOM-CCSD", 8), ("STEOM-CCSD", 2)]),
    ("dvb_steom_ccsd.log", lambda d: analyses(d, "excited_states")[-1]["states"][0]["excitation_energy"]["hartree"],
     0.172381),
    # ROCIS: "STATE   1   Exc. Energy: 10718.290mEh", its reference state 0
    # left out of the first list.
    ("dvb_rocis.out", lambda d: [len(a["states"]) for a in analyses(d, "excited_states")], [4, 5]),
    ("dvb_rocis.out", lambda d: analyses(d, "excited_states")[0]["states"][0]["reported_millihartree"], 10718.290),
    ("Trp_polar.out", lambda d: len(d["systems"][0]["topology"]["atoms"]), 27),
    ("Trp_polar.out", lambda d: [p["value"] for a in analyses(d, "scalar_properties") for p in a["properties"]
                                 if p["key"] == "isotropic_polarizability"], [74.12424]),
]


@pytest.mark.parametrize("name, view, printed", PRINTED, ids=[f"{row[0]}-{i}" for i, row in enumerate(PRINTED)])
def test_values_as_printed(name, view, printed):
    skip_without_shared("orca")
    _, doc = imported(shared_folder("orca") / name)
    assert view(doc) == pytest.approx(printed) if isinstance(printed, float) else view(doc) == printed


@pytest.mark.parametrize("program", sorted(SHARED_FOLDERS))
def test_shared_outputs_present(program):
    skip_without_shared(program)
