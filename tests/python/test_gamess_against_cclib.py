"""GAMESS-US outputs imported into documents against cclib's reading of the
same outputs. Where the two disagree, the output text decides, and the case is
kept in DISAGREEMENTS with the line that settles it."""

import pytest

from cclib_comparison import (HARTREE_EV, QUANTITIES, analyses, compare, ours_charges, ours_modes, outputs,
                              skip_without_shared, theirs_charges, whole)
from cclib.parser.utils import convertor  # noqa: E402  (cclib_comparison skips without cclib)

SHARED_FOLDER = "GAMESS/basicGAMESS-US2018"

# cclib gives dipoles in debye; the document's atomic units go through cclib's
# own constant.
EBOHR_DEBYE = convertor(1.0, "ebohr", "Debye")


def ours_correlated(doc, methods):
    return [e["value"]["hartree"] for step in doc["steps"] for e in step.get("energies", [])
            if e["kind"] == "correlated" and e["method"] in methods]


def theirs_last_row(rows):
    # One row per geometry, the energies of its levels in order, in eV.
    return [value / HARTREE_EV for value in rows[-1]] if len(rows) else []


def ours_dipole(doc):
    found = analyses(doc, "dipoles")
    if not found:
        return []
    moment = found[-1]["moments"][-1]["atomic_units"]
    return [moment[axis] * EBOHR_DEBYE for axis in ("x", "y", "z")]


GAMESS_QUANTITIES = dict(
    QUANTITIES,
    # GAMESS prints intensities in debye^2/(amu angstrom^2); cclib turns them
    # into km/mol with 42.255, the document with CODATA's 42.2561.
    ir_intensities=(lambda d: ours_modes(d, "ir_intensity_km_per_mol"), "vibirs", lambda c: list(c.vibirs),
                    {"rel": 5e-5, "abs": 1e-4}),
    lowdin_charges=(lambda d: ours_charges(d, "Lowdin"), "atomcharges", lambda c: theirs_charges(c, "lowdin"), 1e-9),
    mp2_energies=(lambda d: ours_correlated(d, ("MP2",)), "mpenergies", lambda c: theirs_last_row(c.mpenergies),
                  1e-8),
    cc_energies=(lambda d: ours_correlated(d, ("CCD", "CCSD", "CCSD(T)"))[-1:], "ccenergies",
                 lambda c: theirs_last_row([c.ccenergies]), 1e-8),
    dipoles=(ours_dipole, "moments", lambda c: list(c.moments[1]), 1e-6),
)

# (file, quantity): where cclib reads the output otherwise, what the document
# holds instead, as the output prints it: (a view of our values, that view of
# the printed values).
DISAGREEMENTS = {
    # A numerical Hessian computes the energy at the molecule's geometry
    # (line 311, " FINAL R-AM1 ENERGY IS       -9.1286961082 AFTER   8
    # ITERATIONS") and then at 24 displaced ones that it never prints. cclib
    # lists all 25; the one step keeps its own.
    ("nh3_ts_ir.out", "scf_energies"): (whole, [-9.1286961082]),
    # CIS prints a strength only for the singlets (line 689, "OSCILLATOR
    # STRENGTH =    0.001677" for state 2); a triplet's transition "IS
    # OPTICALLY INACTIVE" (line 677, state 1), a strength of zero. cclib lists
    # the four printed strengths as those of the first four states.
    ("water_cis_dets.out", "oscillator_strengths"): (
        whole, [0.0, 0.001677, 0.0, 0.0, 0.0, 0.0, 0.036761, 0.0, 0.025228, 0.0]),
}


@pytest.mark.parametrize("quantity", sorted(GAMESS_QUANTITIES))
@pytest.mark.parametrize("path", outputs("gamess", SHARED_FOLDER), ids=lambda p: p.name)
def test_gamess_output_agrees_with_cclib(path, quantity):
    compare(path, quantity, GAMESS_QUANTITIES, DISAGREEMENTS)


def test_shared_outputs_present():
    skip_without_shared(SHARED_FOLDER)
