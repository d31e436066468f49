#include "support/analysis_blocks.hpp"

namespace morv::testing {

TEST(Contributions, SpinLabelsKeepTheirFirstByteAndReverseIsAlwaysWritten) {
    expect_blocks({
        {R"("states": [{"contributions": [{}, null, {"from_spin": "beta", "to_spin": "", "coefficient": 0},
             {"from_spin": 7, "reverse": "yes"}]}])",
         {},
         R"({"states":[{"contributions":[{"reverse":false},{"reverse":false},)"
         R"({"coefficient":0,"from_spin":"b","reverse":false},{"from_spin":"7","reverse":true}]}],"total_energies":[]})"},
        {R"("states": [{"contributions": [{"label": [], "from_orbital": "x", "to_orbital": 1.5, "from_type": {},
             "to_type": [], "from_spin": [], "to_spin": {}, "coefficient": "c", "weight": "w", "reverse": "maybe"}]}])",
         {invalid("label"), invalid("from_orbital"), invalid("to_orbital"), invalid("from_type"), invalid("to_type"),
          invalid("from_spin"), invalid("to_spin"), invalid("coefficient"), invalid("weight"), invalid("reverse")},
         R"({"states":[{"contributions":[{"reverse":false}]}],"total_energies":[]})"},
    }, "excited_states");
}

TEST(AbsorptionPeaks, ExcitationEnergyIsExpectedAndAlwaysWritten) {
    std::string const zero = R"({"excitation_energy":)" + zero_energy;
    std::string const end = R"(],"states":[],"total_energies":[]})";
    expect_blocks({
        {R"("absorption_peaks": [{}, null, {"excitation_energy": null, "transition_moment_au": {"x": 1, "y": 2},
             "strength": 0}, {"excitation_energy": {"hartree": 0}, "transition_moment_au": null, "source": null}])",
         {bad_energy, bad_energy, bad_energy, missing("z"), bad_vec3, bad_span},
         R"({"absorption_peaks":[)" + zero + "}," + zero + "}," + zero + R"(,"strength":0},)" + zero + "}" + end},
        {R"("absorption_peaks": [{"spectrum_kind": [], "transition": {}, "target_state_index": "t",
             "excitation_energy": {"hartree": "h"}, "reported_wavenumber_cm1": "a", "reported_wavelength_nm": "b",
             "oscillator_strength": "c", "strength_label": [], "strength": "d", "transition_moment_au": [],
             "rotatory_strength": "e", "source": {"source_id": -1}}])",
         {invalid("spectrum_kind"), invalid("transition"), invalid("target_state_index"), invalid("hartree"),
          invalid("reported_wavenumber_cm1"), invalid("reported_wavelength_nm"), invalid("oscillator_strength"),
          invalid("strength_label"), invalid("strength"), bad_vec3, invalid("rotatory_strength"), invalid("source_id")},
         R"({"absorption_peaks":[)" + zero + "}" + end},
    }, "excited_states");
}

}  // namespace morv::testing
