"""Gaussian outputs imported into documents against cclib's reading of the
same outputs: two readers written apart that agree are unlikely to share a
mistake. Where they disagree, the output text decides, and the case is kept in
DISAGREEMENTS with the line that settles it."""

import json
import os
import pathlib

import pytest

import morv_qc_json

cclib = pytest.importorskip("cclib", reason="cclib (Debian's python3-cclib) reads the outputs for comparison")
from cclib.parser.utils import convertor  # noqa: E402

BUNDLED = pathlib.Path(__file__).resolve().parents[1] / "data" / "gaussian"
SHARED = os.environ.get("MORV_SHARED_OUTPUTS", "")
SHARED_GAUSSIAN = pathlib.Path(SHARED) / "Gaussian" / "basicGaussian16" if SHARED else None

# cclib 1.6 turns hartree into eV and eV into cm-1 with constants older than
# CODATA 2018, so its values go back through its own constants, not ours.
HARTREE_EV = convertor(1.0, "hartree", "eV")
EV_CM1 = convertor(1.0, "eV", "wavenumber")


def outputs():
    found = sorted(p for p in BUNDLED.iterdir() if p.suffix in (".log", ".out"))
    if SHARED_GAUSSIAN is not None and SHARED_GAUSSIAN.is_dir():
        found += sorted(p for p in SHARED_GAUSSIAN.iterdir() if p.suffix in (".log", ".out"))
    return found


def ours_atoms(doc):
    return [[atom["atomic_number"] for atom in system["topology"]["atoms"]] for system in doc["systems"]][:1]


def theirs_atoms(data):
    return [list(map(int, data.atomnos))]


def ours_geometries(doc):
    return [[[p["x"], p["y"], p["z"]] for p in frame["positions_angstrom"]] for frame in doc["frames"]]


def theirs_geometries(data):
    # A geometry printed again unchanged (after a converged optimisation) is
    # one frame in a document and two entries in cclib's atomcoords.
    kept = []
    for frame in data.atomcoords.tolist():
        if not kept or kept[-1] != frame:
            kept.append(frame)
    return kept


def ours_scf(doc):
    return [e["value"]["hartree"] for step in doc["steps"] for e in step.get("energies", []) if e["kind"] == "scf"]


def theirs_scf(data):
    return [value / HARTREE_EV for value in data.scfenergies]


def analyses(doc, kind):
    return [a for a in doc["analyses"] if a["type"] == kind]


def ours_modes(doc, field):
    found = analyses(doc, "vibrational")
    if not found:
        return []
    return [m[field] for m in found[-1]["modes"]]


def ours_states(doc, field):
    found = analyses(doc, "excited_states")
    if not found:
        return []
    states = found[-1]["states"]
    if field == "excitation_energy":
        return [s[field]["electron_volt"] for s in states]
    return [s[field] for s in states]


def ours_orbitals(doc):
    # cclib keeps the orbitals printed last, of each spin.
    last = {}
    for found in analyses(doc, "orbital_set"):
        last[found["spin"]] = [o["energy"]["hartree"] for o in found["orbitals"]]
    return [last[spin] for spin in ("none", "alpha", "beta") if spin in last]


def theirs_orbitals(data):
    return [[value / HARTREE_EV for value in spin] for spin in data.moenergies]


def ours_mulliken(doc):
    found = [a for a in analyses(doc, "atomic_charges") if a["scheme"] == "Mulliken"]
    return [r["charge"] for r in found[-1]["records"]] if found else []


def theirs_mulliken(data):
    return list(data.atomcharges.get("mulliken", []))


# quantity: (ours, cclib's attribute or None, theirs, tolerance)
QUANTITIES = {
    "atoms": (ours_atoms, "atomnos", theirs_atoms, 0),
    "geometries": (ours_geometries, "atomcoords", theirs_geometries, 1e-6),
    "scf_energies": (ours_scf, "scfenergies", theirs_scf, 1e-8),
    "frequencies": (lambda d: ours_modes(d, "frequency_cm1"), "vibfreqs", lambda c: list(c.vibfreqs), 1e-4),
    "ir_intensities": (lambda d: ours_modes(d, "ir_intensity_km_per_mol"), "vibirs", lambda c: list(c.vibirs), 1e-4),
    "excitation_energies": (
        lambda d: ours_states(d, "excitation_energy"), "etenergies", lambda c: [v / EV_CM1 for v in c.etenergies], 1e-6),
    "oscillator_strengths": (
        lambda d: ours_states(d, "oscillator_strength"), "etoscs", lambda c: list(c.etoscs), 1e-9),
    "orbital_energies": (ours_orbitals, "moenergies", theirs_orbitals, 1e-8),
    "mulliken_charges": (ours_mulliken, "atomcharges", theirs_mulliken, 1e-9),
}

def whole(values):
    return values


def count_first(values):
    return len(values), values[0]


def count_first_sum(values):
    return len(values), values[0], round(sum(values), 5)


# (file, quantity): where cclib reads the output otherwise, what the document
# holds instead, as the output prints it: (a view of our values, that view of
# the printed values).
DISAGREEMENTS = {
    # An IPCM job runs SCF after SCF at one geometry until the solvent's
    # reaction field settles: line 320 is the gas-phase SCF, lines 612 to 1561
    # the cycles in solvent, and "Convergence Achieved." (line 1653) follows
    # the last, " SCF Done:  E(RHF) =  -74.9913922715     A.U. after    5
    # cycles". cclib lists all six; the step keeps one SCF energy, the last.
    ("water_hf_solvent_ipcm.log", "scf_energies"): (whole, [-74.9913922715]),
    # cclib 1.6 misses the table of an open shell or of a post-SCF density,
    # "Mulliken charges and spin densities:": nothing where the text has
    # "     1  O   -0.339215  -0.000000" (line 557) ...
    ("water_mp5.log", "mulliken_charges"): (whole, [-0.339215, 0.169607, 0.169607]),
    # ... or "     1  C    0.055742   0.213022" and 19 atoms more, whose
    # charges give "Sum of Mulliken charges =   1.00000   1.00000".
    ("dvb_un_sp.log", "mulliken_charges"): (count_first_sum, (20, 0.055742, 1.0)),
    ("dvb_un_sp_b.log", "mulliken_charges"): (count_first_sum, (20, 0.055742, 1.0)),
    ("dvb_un_sp_nso.log", "mulliken_charges"): (count_first_sum, (20, 0.055742, 1.0)),
    # An EOM-CCSD job prints the 80 CIS states of its guess (line 2701,
    # " Excited State   1:      Triplet-BU     2.2682 eV ...") before its own
    # ten (line 6147, " Excited State   1:      Triplet-BU     3.0322 eV  408.89
    # nm  f=0.0000"). cclib lists all 90 as one set; the document keeps them as
    # two blocks, of which the EOM-CCSD one is compared.
    ("dvb_eomccsd.log", "excitation_energies"): (count_first, (10, 3.0322)),
    ("dvb_eomccsd.log", "oscillator_strengths"): (count_first, (10, 0.0)),
}


def flatten(value):
    if isinstance(value, (list, tuple)):
        return [x for item in value for x in flatten(item)]
    return [value]


def shape(value):
    if isinstance(value, (list, tuple)):
        return [shape(item) for item in value] if value and isinstance(value[0], (list, tuple)) else len(value)
    return None


_cache = {}


def read_both(path):
    if path not in _cache:
        doc = json.loads(morv_qc_json.dumps(morv_qc_json.import_output(str(path))))
        try:
            data = cclib.io.ccread(str(path))
        except Exception:  # cclib gives up on some outputs; those are compared with nothing
            data = None
        _cache[path] = (doc, data)
    return _cache[path]


@pytest.mark.parametrize("quantity", sorted(QUANTITIES))
@pytest.mark.parametrize("path", outputs(), ids=lambda p: p.name)
def test_gaussian_output_agrees_with_cclib(path, quantity):
    ours_of, attribute, theirs_of, tolerance = QUANTITIES[quantity]
    doc, data = read_both(path)
    if data is None:
        pytest.skip(f"cclib does not read {path.name}")
    # What cclib does not find, the document must not hold either.
    ours, theirs = ours_of(doc), theirs_of(data) if hasattr(data, attribute) else []
    if (path.name, quantity) in DISAGREEMENTS:
        view, printed = DISAGREEMENTS[path.name, quantity]
        assert view(ours) == pytest.approx(printed, abs=tolerance)
        return
    assert shape(ours) == shape(theirs)
    assert flatten(ours) == pytest.approx(flatten(theirs), abs=tolerance)


def test_shared_outputs_present():
    if SHARED_GAUSSIAN is None or not SHARED_GAUSSIAN.is_dir():
        pytest.skip(f"the shared Gaussian outputs are not at MORV_SHARED_OUTPUTS={SHARED!r}: bundled outputs only")
