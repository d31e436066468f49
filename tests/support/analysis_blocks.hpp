#pragma once

// Reads one element of `analyses` as a decode does and writes the block
// again, so that one table row states the diagnostics and the text at once.

#include "analyses/analysis_block.hpp"
#include "support/json_text.hpp"

#include <string>
#include <variant>
#include <vector>

namespace morv::testing {

// The block that `json` reads as: its diagnostics, and the block written
// again without the header keys ("" when the block was dropped).
struct BlockCase {
    std::string json;
    Lines diagnostics;
    std::string written;
};

inline void write_payload_object(qc::json::JsonPrinter& printer, qc::AnalysisPayload const& payload) {
    printer.begin_object();
    qc::json::write_analysis_payload(printer, payload);
    printer.end_object();
}

// With a `type`, a row holds only the alternative's own members; the header
// is added here and left out of the text written again.
inline void expect_blocks(std::vector<BlockCase> const& cases, std::string const& type = "") {
    for (auto const& c : cases) {
        SCOPED_TRACE(c.json);
        std::string const json = type.empty() ? c.json
                                              : "{" + c.json + (c.json.empty() ? "" : ", ") +
                                                    R"("id": 1, "job_id": 1, "type": ")" + type + "\"}";
        for_each_backend(json, [&](Node const& node) {
            DocumentResult result;
            auto const block = qc::json::read_analysis_block(result, node);
            std::string written;
            if (block && type.empty()) {
                written = compact(qc::json::write_analysis_block, *block);
            } else if (block) {
                written = compact(write_payload_object, block->payload);
            }
            EXPECT_EQ(describe(result.diagnostics), c.diagnostics);
            EXPECT_EQ(written, c.written);
        });
    }
}

}  // namespace morv::testing
