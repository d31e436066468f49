#pragma once
// Conversion factors, from the CODATA 2018 recommended values, defined once so
// that every importer converts alike.
namespace morv::qc::import::units {

inline constexpr double bohr_in_angstrom = 0.529177210903;
inline constexpr double hartree_in_ev = 27.211386245988;
inline constexpr double hartree_in_kcal_per_mol = 627.5094740631;
inline constexpr double hartree_in_kj_per_mol = 2625.4996394799;
inline constexpr double hartree_in_wavenumber = 219474.6313632;
// One atomic unit of electric dipole moment (e a0) in debye.
inline constexpr double dipole_au_in_debye = 2.541746473;
// An infrared intensity of 1 debye^2 / (amu angstrom^2) in km/mol, from the
// debye's definition (1e-21 / c C m), the Avogadro constant, the electric
// constant and the atomic mass constant.
inline constexpr double ir_intensity_debye2_per_amu_angstrom2_in_km_per_mol = 42.25606162983883;
inline constexpr double atmosphere_in_pascal = 101325.0;

}  // namespace morv::qc::import::units
