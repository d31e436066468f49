#pragma once

#include "core/diagnostics.hpp"
#include "core/json_writer.hpp"
#include "core/node.hpp"

#include <morv/qc/job.hpp>

#include <optional>
#include <string>

namespace morv::qc::json {

// The task whose wire string is exactly `text`; reports nothing.

// Gives nothing when `id` or `system_id` is unusable. A task that is a
// sequence or a map throws and ends the decode.
std::optional<CalculationJob> read_job(DocumentResult& result, Node const& node);
void write_job(JsonPrinter& printer, CalculationJob const& job);

}  // namespace morv::qc::json
