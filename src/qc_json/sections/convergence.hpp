#pragma once

#include "core/diagnostics.hpp"
#include "core/json_value.hpp"
#include "core/node.hpp"

#include <morv/qc/convergence.hpp>

#include <optional>

namespace morv::qc::json {

// Both give nothing, and report nothing, for a node that is not a map.
std::optional<GradientRecord> read_gradient(DocumentResult& result, Node const& node);
std::optional<ConvergenceRecord> read_convergence(DocumentResult& result, Node const& node);

JsonValue write_gradient(GradientRecord const& gradient);
JsonValue write_convergence(ConvergenceRecord const& convergence);

}  // namespace morv::qc::json
