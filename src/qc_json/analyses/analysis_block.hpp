#pragma once

#include "core/diagnostics.hpp"
#include "core/json_value.hpp"
#include "core/node.hpp"

#include <morv/qc/analysis_block.hpp>

#include <optional>

namespace morv::qc::json {

// Gives nothing for an element that is not a map, a bad `id` or `job_id`, an
// empty `type` or a `type` outside the table. Once the type is known the
// block is produced, however damaged the alternative's own keys are.
std::optional<AnalysisBlock> read_analysis_block(DocumentResult& result, Node const& node);
JsonValue write_analysis_block(AnalysisBlock const& block);

}  // namespace morv::qc::json
