#pragma once

// Reads one element of `analyses` as a decode does and writes the block
// again, so that one table row states the diagnostics and the text at once.

#include "analyses/analysis_block.hpp"
#include "core/json_writer.hpp"
#include "support/diagnostics.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <sstream>
#include <string>
#include <variant>
#include <vector>

namespace morv::testing {

using Lines = std::vector<std::string>;

inline std::string invalid(std::string const& key) { return "error qc.json.invalid_field: Invalid value for field: " + key; }
inline std::string missing(std::string const& key) { return "error qc.json.missing_field: Missing required field: " + key; }
inline std::string out_of_range(std::string const& key) {
    return "error qc.json.id_out_of_range: Entity ID exceeds uint32 range: " + key;
}
inline std::string const bad_energy = "error qc.json.invalid_energy: Expected an energy object.";
inline std::string const bad_vec3 = "error qc.json.invalid_vec3: Expected a Cartesian vector object.";
inline std::string const bad_span = "error qc.json.invalid_source_span: Expected a source-span object.";
// An energy of 0 hartree: three zeros and no wavelength.
inline std::string const zero_energy = R"({"electron_volt":0,"hartree":0,"wavenumber_cm1":0})";
inline model::SourceSpan const some_span{model::SourceId(2), {1, 2, 3}, {4, 5, 6}};

inline std::string compact(qc::json::JsonValue const& value) {
    std::ostringstream out;
    qc::json::write_json(out, value, qc::json::SerializeOptions{});
    return out.str();
}

// The block that `json` reads as, its diagnostics, and the block written
// again without the keys in `left_out` ("" when the block was dropped).
struct BlockCase {
    std::string json;
    Lines diagnostics;
    std::string written;
};

inline BlockCase read_block(std::string const& json, std::vector<char const*> const& left_out = {}) {
    qc::json::DocumentResult result;
    auto const block = qc::json::read_analysis_block(result, qc::json::load_text(json));
    auto object = block ? std::get<qc::json::JsonObject>(qc::json::write_analysis_block(*block).storage())
                        : qc::json::JsonObject{};
    for (char const* key : left_out) {
        object.erase(key);
    }
    return {json, describe(result.diagnostics), block ? compact(qc::json::JsonValue(std::move(object))) : ""};
}

inline void expect_blocks(std::vector<BlockCase> const& cases, std::string const& type = "") {
    for (auto const& c : cases) {
        SCOPED_TRACE(c.json);
        // An alternative's rows hold its own members; the header is added
        // here and left out of the text written again.
        BlockCase const read = type.empty() ? read_block(c.json)
                                            : read_block("{" + c.json + (c.json.empty() ? "" : ", ") +
                                                             R"("id": 1, "job_id": 1, "type": ")" + type + "\"}",
                                                         {"id", "job_id", "ordinal", "type"});
        EXPECT_EQ(read.diagnostics, c.diagnostics);
        EXPECT_EQ(read.written, c.written);
    }
}

// A block with every header key set carries `payload` to text and back
// unchanged, and writes the same text again.
inline void expect_round_trip(qc::AnalysisPayload payload) {
    qc::AnalysisBlock const block{qc::AnalysisId(3), qc::JobId(4), 9, qc::StepId(5), std::move(payload), some_span};
    std::string const text = compact(qc::json::write_analysis_block(block));
    qc::json::DocumentResult result;
    auto const back = qc::json::read_analysis_block(result, qc::json::load_text(text));
    EXPECT_EQ(describe(result.diagnostics), Lines{});
    ASSERT_TRUE(back);
    EXPECT_TRUE(*back == block) << text;
    EXPECT_EQ(compact(qc::json::write_analysis_block(*back)), text);
}

}  // namespace morv::testing
