"""Documents imported from program outputs beside cclib's reading of the same
outputs: what each test of a program compares, and how. Two readers written
apart that agree are unlikely to share a mistake; where they disagree, the
output text decides, and each program's test keeps the case in its
DISAGREEMENTS table with the line that settles it."""

import pytest

from program_outputs import analyses, imported

cclib = pytest.importorskip("cclib", reason="cclib (Debian's python3-cclib) reads the outputs for comparison")
from cclib.parser.utils import convertor  # noqa: E402

# cclib 1.6 turns hartree into eV and eV into cm-1 with constants older than
# CODATA 2018, so its values go back through its own constants, not ours.
HARTREE_EV = convertor(1.0, "hartree", "eV")
EV_CM1 = convertor(1.0, "eV", "wavenumber")


def ours_atoms(doc):
    # A ghost atom has no atomic number; cclib gives it 0.
    return [[atom.get("atomic_number", 0) for atom in system["topology"]["atoms"]] for system in doc["systems"]][:1]


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


def ours_modes(doc, field):
    found = analyses(doc, "vibrational")
    if not found:
        return []
    return [m.get(field) for m in found[-1]["modes"]]


def ours_states(doc, field):
    found = analyses(doc, "excited_states")
    if not found:
        return []
    states = found[-1]["states"]
    if field == "excitation_energy":
        return [s[field]["electron_volt"] for s in states]
    return [s.get(field) for s in states]


def ours_orbitals(doc):
    # cclib keeps the orbitals printed last, of each spin.
    last = {}
    for found in analyses(doc, "orbital_set"):
        last[found["spin"]] = [o["energy"]["hartree"] for o in found["orbitals"]]
    return [last[spin] for spin in ("none", "alpha", "beta") if spin in last]


def theirs_orbitals(data):
    return [[value / HARTREE_EV for value in spin] for spin in data.moenergies]


def ours_charges(doc, scheme):
    found = [a for a in analyses(doc, "atomic_charges") if a["scheme"] == scheme]
    return [r["charge"] for r in found[-1]["records"]] if found else []


def theirs_charges(data, scheme):
    return list(data.atomcharges.get(scheme, []))


# quantity: (ours, cclib's attribute, theirs, tolerance), for every program.
# A tolerance is absolute, or the keywords of pytest.approx.
QUANTITIES = {
    "atoms": (ours_atoms, "atomnos", theirs_atoms, 0),
    "geometries": (ours_geometries, "atomcoords", theirs_geometries, 1e-6),
    "scf_energies": (ours_scf, "scfenergies", theirs_scf, 1e-8),
    "frequencies": (lambda d: ours_modes(d, "frequency_cm1"), "vibfreqs", lambda c: list(c.vibfreqs), 1e-4),
    "excitation_energies": (
        lambda d: ours_states(d, "excitation_energy"), "etenergies", lambda c: [v / EV_CM1 for v in c.etenergies], 1e-6),
    "oscillator_strengths": (
        lambda d: ours_states(d, "oscillator_strength"), "etoscs", lambda c: list(c.etoscs), 1e-9),
    "orbital_energies": (ours_orbitals, "moenergies", theirs_orbitals, 1e-8),
    "mulliken_charges": (
        lambda d: ours_charges(d, "Mulliken"), "atomcharges", lambda c: theirs_charges(c, "mulliken"), 1e-9),
}


def whole(values):
    return values


def count_first(values):
    return len(values), values[0]


def count_first_sum(values):
    return len(values), values[0], round(sum(values), 5)


def flatten(value):
    if isinstance(value, (list, tuple)):
        return [x for item in value for x in flatten(item)]
    return [value]


def shape(value):
    if isinstance(value, (list, tuple)):
        return [shape(item) for item in value] if value and isinstance(value[0], (list, tuple)) else len(value)
    return None


_cclib_cache = {}


def read_both(path):
    if path not in _cclib_cache:
        try:
            _cclib_cache[path] = cclib.io.ccread(str(path))
        except Exception:  # cclib gives up on some outputs; those are compared with nothing
            _cclib_cache[path] = None
    return imported(path)[1], _cclib_cache[path]


def compare(path, quantity, quantities, disagreements):
    """Our reading of `quantity` in the output at `path` against cclib's, or
    against the printed values where the table of disagreements says so."""
    ours_of, attribute, theirs_of, tolerance = quantities[quantity]
    doc, data = read_both(path)
    if data is None:
        pytest.skip(f"cclib does not read {path.name}")
    # What cclib does not find, the document must not hold either.
    ours, theirs = ours_of(doc), theirs_of(data) if hasattr(data, attribute) else []
    within = tolerance if isinstance(tolerance, dict) else {"abs": tolerance}
    if (path.name, quantity) in disagreements:
        view, printed = disagreements[path.name, quantity]
        assert view(ours) == pytest.approx(printed, **within)
        return
    assert shape(ours) == shape(theirs)
    assert flatten(ours) == pytest.approx(flatten(theirs), **within)
