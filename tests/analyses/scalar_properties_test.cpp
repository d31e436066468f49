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

}  // namespace morv::testing
