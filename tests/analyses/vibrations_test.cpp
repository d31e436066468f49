#include "support/analysis_blocks.hpp"

namespace morv::testing {

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

}  // namespace morv::testing
