"""Gaussian outputs imported into documents against cclib's reading of the
same outputs: two readers written apart that agree are unlikely to share a
mistake. Where they disagree, the output text decides, and the case is kept in
DISAGREEMENTS with the line that settles it."""

import pytest

from cclib_comparison import (QUANTITIES, compare, count_first, count_first_sum, ours_modes, outputs,
                              skip_without_shared, whole)

SHARED_FOLDER = "Gaussian/basicGaussian16"

# The quantities of every program, and the infrared intensities, which
# Gaussian prints in km/mol as the document holds them.
GAUSSIAN_QUANTITIES = dict(
    QUANTITIES,
    ir_intensities=(lambda d: ours_modes(d, "ir_intensity_km_per_mol"), "vibirs", lambda c: list(c.vibirs), 1e-4),
)

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


@pytest.mark.parametrize("quantity", sorted(GAUSSIAN_QUANTITIES))
@pytest.mark.parametrize("path", outputs("gaussian", SHARED_FOLDER), ids=lambda p: p.name)
def test_gaussian_output_agrees_with_cclib(path, quantity):
    compare(path, quantity, GAUSSIAN_QUANTITIES, DISAGREEMENTS)


def test_shared_outputs_present():
    skip_without_shared(SHARED_FOLDER)
