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

}  // namespace morv::testing
