#pragma once

#include "core/diagnostics.hpp"
#include "core/json_writer.hpp"
#include "core/node.hpp"

#include <morv/qc/analysis_block.hpp>

#include <optional>

namespace morv::qc::json {

// Gives nothing for an element that is not a map, a bad `id` or `job_id`, an
// empty `type` or a `type` outside the table. Once the type is known the
// block is produced, however damaged the alternative's own keys are.
std::optional<AnalysisBlock> read_analysis_block(DocumentResult& result, Node const& node);
void write_analysis_block(JsonPrinter& printer, AnalysisBlock const& block);
// The members of the block's own kind, into an object that is open: those of
// every kind below write them among the keys that all blocks share.
void write_analysis_payload(JsonPrinter& printer, AnalysisPayload const& payload);

}  // namespace morv::qc::json
