#pragma once

#include "core/diagnostics.hpp"
#include "core/json_writer.hpp"
#include "core/node.hpp"

#include <morv/qc/convergence.hpp>

#include <optional>

namespace morv::qc::json {

// Both give nothing, and report nothing, for a node that is not a map.
std::optional<GradientRecord> read_gradient(DocumentResult& result, Node const& node);
std::optional<ConvergenceRecord> read_convergence(DocumentResult& result, Node const& node);

void write_gradient(JsonPrinter& printer, GradientRecord const& gradient);
void write_convergence(JsonPrinter& printer, ConvergenceRecord const& convergence);

}  // namespace morv::qc::json
