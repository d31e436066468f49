#pragma once

#include <morv/model/equality.hpp>

#include <optional>
#include <tuple>

namespace morv::qc {

// The thermodynamic summary of a frequency calculation, as reported.
// Energies are in hartree.
struct ThermochemistryBlock {
    std::optional<double> temperature_kelvin;
    std::optional<double> pressure_atmosphere;
    std::optional<double> total_mass_amu;
    std::optional<double> electronic_energy;
    std::optional<double> zero_point_energy;
    std::optional<double> thermal_energy;
    std::optional<double> thermal_correction;
    std::optional<double> enthalpy;
    std::optional<double> enthalpy_correction;
    std::optional<double> entropy_correction;
    std::optional<double> gibbs_free_energy;
    std::optional<double> gibbs_correction;
};

inline auto fields_of(ThermochemistryBlock const& t) {
    return std::tie(t.temperature_kelvin, t.pressure_atmosphere, t.total_mass_amu, t.electronic_energy,
                    t.zero_point_energy, t.thermal_energy, t.thermal_correction, t.enthalpy, t.enthalpy_correction,
                    t.entropy_correction, t.gibbs_free_energy, t.gibbs_correction);
}

MORV_DEFINE_EQUALITY(ThermochemistryBlock)

}  // namespace morv::qc
