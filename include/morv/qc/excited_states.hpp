#pragma once

#include <morv/chem/vec3.hpp>
#include <morv/model/diagnostic.hpp>
#include <morv/model/equality.hpp>
#include <morv/qc/energy.hpp>
#include <morv/qc/ids.hpp>

#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace morv::qc {

// How one orbital-to-orbital promotion takes part in an excited state.
struct ExcitationContribution {
    std::string label;
    std::optional<int> from_orbital;
    std::optional<int> to_orbital;
    std::string from_type;
    std::string to_type;
    std::optional<char> from_spin;
    std::optional<char> to_spin;
    std::optional<double> coefficient;
    std::optional<double> weight;
    bool reverse = false;
};

// One row of a spectrum table.
struct AbsorptionPeak {
    std::string spectrum_kind;
    std::string transition;
    std::optional<int> target_state_index;
    double excitation_energy = 0.0;
    std::optional<double> reported_wavenumber_cm1;
    std::optional<double> reported_wavelength_nm;
    std::optional<double> oscillator_strength;
    std::string strength_label;
    std::optional<double> strength;
    std::optional<chem::Vec3> transition_moment_au;
    std::optional<double> rotatory_strength;
    std::optional<model::SourceSpan> source;
};

struct ExcitedState {
    std::optional<int> index;
    std::string root_label;
    std::string method;
    std::string section;
    std::string multiplicity_label;
    std::string symmetry;
    std::optional<int> multiplicity;
    std::optional<double> total_energy;
    std::optional<double> excitation_energy;
    std::optional<double> reported_millihartree;
    std::optional<double> reported_wavenumber_cm1;
    std::optional<double> reported_wavelength_nm;
    std::optional<double> oscillator_strength;
    std::optional<double> spin_squared;
    std::optional<double> spin_contamination;
    std::optional<double> ground_state_amplitude;
    std::optional<double> singles_character_percent;
    std::vector<ExcitationContribution> contributions;
    std::optional<model::SourceSpan> source;
};

struct ExcitedStateBlock {
    std::optional<int> block_index;
    std::string method;
    std::string section;
    std::string comment;
    std::vector<ExcitedState> states;
    std::vector<EnergyRecord> total_energies;
    std::optional<EnergyId> preferred_total_energy_id;
    std::vector<AbsorptionPeak> absorption_peaks;
};

inline auto fields_of(ExcitationContribution const& c) {
    return std::tie(c.label, c.from_orbital, c.to_orbital, c.from_type, c.to_type, c.from_spin, c.to_spin,
                    c.coefficient, c.weight, c.reverse);
}
inline auto fields_of(AbsorptionPeak const& p) {
    return std::tie(p.spectrum_kind, p.transition, p.target_state_index, p.excitation_energy,
                    p.reported_wavenumber_cm1, p.reported_wavelength_nm, p.oscillator_strength, p.strength_label,
                    p.strength, p.transition_moment_au, p.rotatory_strength, p.source);
}
inline auto fields_of(ExcitedState const& s) {
    return std::tie(s.index, s.root_label, s.method, s.section, s.multiplicity_label, s.symmetry, s.multiplicity,
                    s.total_energy, s.excitation_energy, s.reported_millihartree, s.reported_wavenumber_cm1,
                    s.reported_wavelength_nm, s.oscillator_strength, s.spin_squared, s.spin_contamination,
                    s.ground_state_amplitude, s.singles_character_percent, s.contributions, s.source);
}
inline auto fields_of(ExcitedStateBlock const& b) {
    return std::tie(b.block_index, b.method, b.section, b.comment, b.states, b.total_energies,
                    b.preferred_total_energy_id, b.absorption_peaks);
}

MORV_DEFINE_EQUALITY(ExcitationContribution)
MORV_DEFINE_EQUALITY(AbsorptionPeak)
MORV_DEFINE_EQUALITY(ExcitedState)
MORV_DEFINE_EQUALITY(ExcitedStateBlock)

}  // namespace morv::qc
