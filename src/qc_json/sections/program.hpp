#pragma once

#include "core/diagnostics.hpp"
#include "core/json_value.hpp"
#include "core/node.hpp"

#include <morv/qc/program.hpp>

#include <optional>

namespace morv::qc::json {

// `node` is the map under the root key; the caller has tested that.
void read_program(DocumentResult& result, Node const& node);
void read_normalization(DocumentResult& result, Node const& node);

// Gives nothing, and reports nothing, for a node that is not a map.
std::optional<Termination> read_termination(DocumentResult& result, Node const& node);

JsonValue write_termination(Termination const& termination);
JsonValue write_program(ProgramInfo const& program);
JsonValue write_normalization(Normalization const& normalization);

}  // namespace morv::qc::json
