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

}  // namespace morv::qc::import::units
