#include "support/analysis_blocks.hpp"

namespace morv::testing {

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

}  // namespace morv::testing
