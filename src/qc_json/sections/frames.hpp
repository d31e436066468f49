#pragma once

#include "core/diagnostics.hpp"
#include "core/json_writer.hpp"
#include "core/node.hpp"

#include <morv/chem/frame.hpp>

#include <optional>

namespace morv::qc::json {

// Gives nothing when `id` or `system_id` is unusable.
std::optional<chem::GeometryFrame> read_frame(DocumentResult& result, Node const& node);
void write_frame(JsonPrinter& printer, chem::GeometryFrame const& frame);

}  // namespace morv::qc::json
