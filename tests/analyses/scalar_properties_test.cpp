#include "support/analysis_blocks.hpp"

namespace morv::testing {

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

TEST(ScalarProperties, EveryKeyTravelsThroughText) {
    qc::ScalarProperty const s2{"s_squared", "<S**2>", 0.7532, "", some_span};
    expect_round_trip(qc::ScalarPropertyBlock{{s2, qc::ScalarProperty{"alpha", "", 1e21, "au", {}}}});
}

}  // namespace morv::testing
