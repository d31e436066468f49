// Each element of `analyses` read as a decode reads it and written again:
// the header that decides whether a block stays, then each payload's faults.

#include "support/analysis_blocks.hpp"

namespace morv::testing {

TEST(AnalysisBlock, HeaderDecidesWhetherTheBlockStaysAndInWhichOrderFaultsAreReported) {
    expect_blocks({
        {"null", {"error qc.json.invalid_analysis: Expected an analysis object."}, ""},
        // All three header keys are read before the block is given up.
        {R"({"job_id": -1, "type": ["vibrational"], "ordinal": "x"})", {missing("id"), invalid("job_id"), invalid("type")}, ""},
        {R"({"id": 4294967296, "job_id": 4294967296, "type": "nope"})", {out_of_range("id"), out_of_range("job_id")}, ""},
        {R"({"id": 1, "job_id": 1, "type": "", "ordinal": "x"})", {}, ""},
        {R"({"id": 1, "job_id": 1, "type": "Vibrational", "ordinal": -1, "source": null})",
         {"warning qc.json.unknown_analysis: Ignoring unknown analysis type: Vibrational"},
         ""},
        {R"({"id": 4294967295, "job_id": 0, "type": "vibrational"})",
         {},
         R"({"id":4294967295,"job_id":0,"modes":[],"ordinal":4294967295,"type":"vibrational"})"},
        // The alternative's own faults come before those of the later header keys.
        {R"({"id": 7, "job_id": 1, "type": "vibrational", "modes": [{}], "ordinal": -1,
             "reference_step_id": 4294967296, "source": null})",
         {missing("frequency_cm1"), invalid("ordinal"), out_of_range("reference_step_id"), bad_span},
         R"({"id":7,"job_id":1,"modes":[{"frequency_cm1":0,"imaginary":false}],"ordinal":7,"type":"vibrational"})"},
        {R"({"id": 7, "job_id": 1, "type": "dipoles", "ordinal": 0, "reference_step_id": "5",
             "source": {"source_id": 2, "begin": {}, "end": {}}})",
         {},
         R"({"id":7,"job_id":1,"moments":[],"ordinal":0,"reference_step_id":5,"source":{"begin":{"column":0,"line":0,)"
         R"("offset":0},"end":{"column":0,"line":0,"offset":0},"source_id":2},"type":"dipoles"})"},
    });
}

TEST(AnalysisBlock, AScalarRecordOrAMissingValuesObjectEndsTheDecode) {
    auto const at = [](int column, std::string const& key) { return on_scalar(1, column, key); };
    std::pair<char const*, Lines> const cases[] = {
        {R"("type": "vibrational", "modes": [5])", {at(119, "index")}},
        {R"("type": "excited_states", "states": [3])", {at(123, "index")}},
        {R"("type": "excited_states", "states": [{"contributions": [true]}])", {at(142, "label")}},
        {R"("type": "excited_states", "absorption_peaks": ["peak"])", {at(133, "spectrum_kind")}},
        {R"("type": "orbital_set", "orbitals": [5])", {at(122, "index")}},
        {R"("type": "thermochemistry")", {parse_failed("invalid node; first invalid key: \"values\"")}},
        {R"("type": "thermochemistry", "values": 5)", {at(123, "temperature_kelvin")}},
        {R"("type": "dipoles", "moments": [5])", {at(117, "atomic_units")}},
        {R"("type": "atomic_charges", "records": [5])", {at(124, "atom_index")}},
        {R"("type": "scalar_properties", "properties": [5])", {at(130, "key")}},
    };
    for (auto const& [keys, diagnostics] : cases) {
        std::string const text = document_with(R"("analyses": [{"id": 1, "job_id": 1, )" + std::string(keys) + "}]");
        SCOPED_TRACE(text);
        EXPECT_EQ(describe(qc::json::deserialize(text).diagnostics), diagnostics);
    }
}

TEST(Vibrations, ModesStayWhateverTheirFaultsAndImaginaryFollowsTheFrequency) {
    expect_blocks({
        {R"("modes": {"frequency_cm1": 1})", {}, R"({"modes":[]})"},
        // A bad displacement is left out and the ones after it move up.
        {R"("modes": [null, {"frequency_cm1": -120.5, "imaginary": false,
             "displacements": [{"x": 1, "y": 2, "z": 3}, 5, {"x": 4, "y": 5}, {"x": 7, "y": 8, "z": 9}]},
             {"frequency_cm1": 100, "imaginary": true, "raman_activity": 0, "displacements": {"x": 1, "y": 2, "z": 3}},
             {"frequency_cm1": "-0.0", "displacements": []}, {"frequency_cm1": ".inf"}])",
         {missing("frequency_cm1"), bad_vec3, missing("z")},
         R"({"modes":[{"frequency_cm1":0,"imaginary":false},)"
         R"({"displacements":[{"x":1,"y":2,"z":3},{"x":7,"y":8,"z":9}],"frequency_cm1":-120.5,"imaginary":true},)"
         R"({"frequency_cm1":100,"imaginary":false,"raman_activity":0},{"frequency_cm1":-0,"imaginary":false},)"
         R"({"frequency_cm1":null,"imaginary":false}]})"},
        {R"("modes": [{"index": 1.5, "frequency_cm1": "x", "symmetry": [], "reduced_mass_amu": {},
             "force_constant_mdyne_per_angstrom": "f", "ir_intensity_km_per_mol": "i", "raman_activity": "r"}])",
         {invalid("index"), invalid("frequency_cm1"), invalid("symmetry"), invalid("reduced_mass_amu"),
          invalid("force_constant_mdyne_per_angstrom"), invalid("ir_intensity_km_per_mol"), invalid("raman_activity")},
         R"({"modes":[{"frequency_cm1":0,"imaginary":false}]})"},
    }, "vibrational");
}

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

TEST(Orbitals, SetAndOrbitalKeepTheirOwnSpinAndKind) {
    std::string const zero = R"({"energy":)" + zero_energy;
    expect_blocks({
        {"", {}, R"({"kind":"canonical","orbitals":[],"spin":"none"})"},
        {R"("spin": ["alpha"], "kind": [], "orbitals": {})", {invalid("spin"), invalid("kind")},
         R"({"kind":"canonical","orbitals":[],"spin":"none"})"},
        // An orbital inherits nothing from its set; a plain number is no energy.
        {R"("spin": "beta", "kind": "", "orbitals": [{}, null, {"spin": "Alpha", "energy": -0.5, "kind": "",
             "occupation": 0, "index": -1}, {"spin": "alpha", "energy": {"hartree": 0}, "kind": "core", "symmetry": "A1"}])",
         {bad_energy, bad_energy, bad_energy},
         R"({"kind":"","orbitals":[)" + zero + R"(,"spin":"none"},)" + zero + R"(,"spin":"none"},)" + zero +
             R"(,"index":-1,"occupation":0,"spin":"none"},)" + zero + R"(,"kind":"core","spin":"alpha","symmetry":"A1"}],)"
             R"("spin":"beta"})"},
        {R"("spin": 7, "orbitals": [{"index": "i", "spin": [], "occupation": "o", "energy": {"hartree": null},
             "symmetry": [], "kind": {}}])",
         {invalid("index"), invalid("spin"), invalid("occupation"), missing("hartree"), invalid("symmetry"), invalid("kind")},
         R"({"kind":"canonical","orbitals":[)" + zero + R"(,"spin":"none"}],"spin":"none"})"},
    }, "orbital_set");
}

TEST(Thermochemistry, EnergiesMustBeObjectsWhileNumbersTreatNullAsAbsent) {
    expect_blocks({
        {R"("values": null)", {}, R"({"values":{}})"},
        {R"("values": {"temperature_kelvin": null, "pressure_atmosphere": "x", "total_mass_amu": 0,
             "electronic_energy": -76.4, "zero_point_energy": null, "thermal_energy": {"electron_volt": 1},
             "enthalpy": {"hartree": "h"}, "gibbs_correction": {"hartree": 0, "electron_volt": 5}})",
         {invalid("pressure_atmosphere"), bad_energy, bad_energy, missing("hartree"), invalid("hartree")},
         R"({"values":{"gibbs_correction":)" + zero_energy + R"(,"total_mass_amu":0}})"},
    }, "thermochemistry");
}

TEST(Dipoles, DamagedVectorsBecomeZeroAndTheMomentStays) {
    std::string const zero = R"({"atomic_units":{"x":0,"y":0,"z":0})";
    expect_blocks({
        {R"("moments": [{}, null, {"atomic_units": {"x": 1.0, "y": 2.0}, "magnitude_debye": 0, "method": "", "source": null},
             {"atomic_units": {"x": 0.5, "y": "y", "z": null}, "magnitude_atomic_units": "m", "method": {},
             "density_type": []}])",
         {bad_vec3, bad_vec3, missing("z"), bad_span, invalid("y"), missing("z"), invalid("magnitude_atomic_units"),
          invalid("method"), invalid("density_type")},
         R"({"moments":[)" + zero + "}," + zero + "}," + zero + R"(,"magnitude_debye":0},)" + zero + "}]}"},
    }, "dipoles");
}

TEST(AtomicCharges, RecordsNeedNoKeyAndSchemeIsAlwaysWritten) {
    expect_blocks({
        {"", {}, R"({"records":[],"scheme":""})"},
        {R"("scheme": 5, "records": [{}, null, {"atom_index": 1.5, "element": 6, "charge": 0, "population": ".nan"},
             {"atom_index": -1, "element": "", "spin_population": [], "secondary_population": "p", "secondary_charge": {}}])",
         {invalid("atom_index"), invalid("spin_population"), invalid("secondary_population"), invalid("secondary_charge")},
         R"({"records":[{},{},{"charge":0,"element":"6","population":null},{"atom_index":-1}],"scheme":"5"})"},
    }, "atomic_charges");
}

TEST(ScalarProperties, MissingKeyOrValueIsReportedButThePropertyStays) {
    expect_blocks({
        {R"("properties": [{}, null, {"key": 7, "value": "1.5", "label": "", "unit": "", "source": null},
             {"key": "", "value": ".inf", "label": [], "unit": "Eh"}, {"key": "dup", "value": "x", "unit": {}}])",
         {missing("key"), missing("value"), missing("key"), missing("value"), bad_span, invalid("label"), invalid("value"),
          invalid("unit")},
         R"({"properties":[{"key":"","value":0},{"key":"","value":0},{"key":"7","value":1.5},)"
         R"({"key":"","unit":"Eh","value":null},{"key":"dup","value":0}]})"},
    }, "scalar_properties");
}

}  // namespace morv::testing
