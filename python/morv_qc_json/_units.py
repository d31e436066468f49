"""Conversion factors of the pure-Python submodules, from the CODATA 2018
recommended values: the same numbers as the C++ importers use, so that an
angstrom position that an importer made from bohr goes back to the bohr the
program printed. qcelemental's default context is CODATA 2014, which differs
in the ninth digit; its CODATA 2018 context holds these very values."""

BOHR_IN_ANGSTROM = 0.529177210903
HARTREE_IN_EV = 27.211386245988
HARTREE_IN_KCAL_PER_MOL = 627.5094740631
# The product of Planck's constant and the speed of light, in eV nm: a
# photon of E eV has a wavelength of EV_NANOMETRE / E nm.
EV_NANOMETRE = 1239.8419843320025
