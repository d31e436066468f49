#include "support/analysis_blocks.hpp"

namespace morv::testing {

TEST(ExcitedStates, StatesAreNeverDroppedAndOnlyTheHartreeOfAnEnergyIsRead) {
    expect_blocks({
        {R"("states": {}, "total_energies": "x", "absorption_peaks": {})", {}, R"({"states":[],"total_energies":[]})"},
        {R"("block_index": "1.5", "method": "", "section": [], "comment": "c", "states": [null, {}],
             "total_energies": [5, {"id": 1, "value": {"hartree": 0}}], "preferred_total_energy_id": 4294967296,
             "absorption_peaks": [])",
         {invalid("block_index"), invalid("section"), bad_energy_record,
          out_of_range("preferred_total_energy_id")},
         R"({"comment":"c","states":[{},{}],"total_energies":[{"id":1,"kind":"unknown","value":)" + zero_energy + "}]}"},
        // A state's method is its own; derived units are worked out again.
        {R"("method": "TDDFT", "preferred_total_energy_id": 9, "states": [{"method": "CIS", "reported_millihartree": null,
             "total_energy": {"hartree": -1.5, "electron_volt": 99}, "excitation_energy": {"hartree": "0.5"},
             "contributions": []}])",
         {},
         R"({"method":"TDDFT","preferred_total_energy_id":9,"states":[{"excitation_energy":{"electron_volt":)"
         R"(13.605693122993999,"hartree":0.5,"wavelength_nm":91.126705058240304,"wavenumber_cm1":109737.3156816},)"
         R"("method":"CIS","total_energy":{"electron_volt":-40.817079368982,"hartree":-1.5,)"
         R"("wavenumber_cm1":-329211.94704479998}}],"total_energies":[]})"},
        {R"("states": [{"index": "x", "root_label": [], "method": {}, "section": [], "multiplicity_label": [],
             "symmetry": [], "multiplicity": "m", "total_energy": null, "excitation_energy": {"electron_volt": 1},
             "reported_millihartree": "a", "reported_wavenumber_cm1": "b", "reported_wavelength_nm": "c",
             "oscillator_strength": ".nan", "spin_squared": "d", "spin_contamination": "e",
             "ground_state_amplitude": "f", "singles_character_percent": "g", "source": null}])",
         {invalid("index"), invalid("root_label"), invalid("method"), invalid("section"), invalid("multiplicity_label"),
          invalid("symmetry"), invalid("multiplicity"), bad_energy, missing("hartree"), invalid("reported_millihartree"),
          invalid("reported_wavenumber_cm1"), invalid("reported_wavelength_nm"), invalid("spin_squared"),
          invalid("spin_contamination"), invalid("ground_state_amplitude"), invalid("singles_character_percent"), bad_span},
         R"({"states":[{"oscillator_strength":null}],"total_energies":[]})"},
    }, "excited_states");
}

}  // namespace morv::testing
