#include "support/analysis_blocks.hpp"

namespace morv::testing {

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

}  // namespace morv::testing
