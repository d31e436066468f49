"""Gaussian and GAMESS-US outputs imported into documents against cclib's
reading of the same outputs. Where the two disagree, the output text decides,
and the case is kept in DISAGREEMENTS with the line that settles it."""

import pytest

from cclib_comparison import (HARTREE_EV, QUANTITIES, compare, count_first, count_first_sum, ours_charges,
                              ours_modes, theirs_charges, whole)
from cclib.parser.utils import convertor  # noqa: E402  (cclib_comparison skips without cclib)
from program_outputs import analyses, outputs

# The quantities of every program, and the infrared intensities, which
# Gaussian prints in km/mol as the document holds them.
GAUSSIAN_QUANTITIES = dict(
    QUANTITIES,
    ir_intensities=(lambda d: ours_modes(d, "ir_intensity_km_per_mol"), "vibirs", lambda c: list(c.vibirs), 1e-4),
)

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

QUANTITIES_OF = {"gaussian": GAUSSIAN_QUANTITIES, "gamess": GAMESS_QUANTITIES}

# program: {(file, quantity): where cclib reads the output otherwise, what the
# document holds instead, as the output prints it: (a view of our values, that
# view of the printed values)}.
DISAGREEMENTS = {
    "gaussian": {
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
    },
    "gamess": {
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
    },
}

CASES = [(program, path, quantity) for program in QUANTITIES_OF for path in outputs(program)
         for quantity in sorted(QUANTITIES_OF[program])]


@pytest.mark.parametrize("program, path, quantity", CASES, ids=[f"{c[0]}-{c[1].name}-{c[2]}" for c in CASES])
def test_output_agrees_with_cclib(program, path, quantity):
    compare(path, quantity, QUANTITIES_OF[program], DISAGREEMENTS[program])
