#pragma once

#include "core/diagnostics.hpp"
#include "core/json_writer.hpp"
#include "core/node.hpp"

#include <morv/qc/step.hpp>

#include <optional>

namespace morv::qc::json {

// Gives nothing when `id`, `job_id` or `system_id` is unusable.
std::optional<CalculationStep> read_step(DocumentResult& result, Node const& node);
void write_step(JsonPrinter& printer, CalculationStep const& step);

}  // namespace morv::qc::json
