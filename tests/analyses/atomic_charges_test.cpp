#include "support/analysis_blocks.hpp"

namespace morv::testing {

TEST(AtomicCharges, RecordsNeedNoKeyAndSchemeIsAlwaysWritten) {
    expect_blocks({
        {"", {}, R"({"records":[],"scheme":""})"},
        {R"("scheme": 5, "records": [{}, null, {"atom_index": 1.5, "element": 6, "charge": 0, "population": ".nan"},
             {"atom_index": -1, "element": "", "spin_population": [], "secondary_population": "p", "secondary_charge": {}}])",
         {invalid("atom_index"), invalid("spin_population"), invalid("secondary_population"), invalid("secondary_charge")},
         R"({"records":[{},{},{"charge":0,"element":"6","population":null},{"atom_index":-1}],"scheme":"5"})"},
    }, "atomic_charges");
}

}  // namespace morv::testing
