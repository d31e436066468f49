#pragma once

#include <morv/chem/vec3.hpp>
#include <morv/model/equality.hpp>

#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace morv::qc {

// One normal mode. An imaginary mode has a negative frequency.
struct VibrationalMode {
    std::optional<int> index;
    double frequency_cm1 = 0.0;
    std::string symmetry;
    std::optional<double> reduced_mass_amu;
    std::optional<double> force_constant_mdyne_per_angstrom;
    std::optional<double> ir_intensity_km_per_mol;
    std::optional<double> raman_activity;
    std::vector<chem::Vec3> displacements;
};

struct VibrationalBlock {
    std::vector<VibrationalMode> modes;
};

inline auto fields_of(VibrationalMode const& m) {
    return std::tie(m.index, m.frequency_cm1, m.symmetry, m.reduced_mass_amu, m.force_constant_mdyne_per_angstrom,
                    m.ir_intensity_km_per_mol, m.raman_activity, m.displacements);
}
inline auto fields_of(VibrationalBlock const& b) { return std::tie(b.modes); }

MORV_DEFINE_EQUALITY(VibrationalMode)
MORV_DEFINE_EQUALITY(VibrationalBlock)

}  // namespace morv::qc
