#pragma once

#include "core/diagnostics.hpp"
#include "core/json_writer.hpp"
#include "core/node.hpp"

#include <morv/qc/program.hpp>

#include <optional>

namespace morv::qc::json {

// `node` is the map under the root key; the caller has tested that.
void read_program(DocumentResult& result, Node const& node);
void read_normalization(DocumentResult& result, Node const& node);

// Gives nothing, and reports nothing, for a node that is not a map.
std::optional<Termination> read_termination(DocumentResult& result, Node const& node);

void write_termination(JsonPrinter& printer, Termination const& termination);
void write_program(JsonPrinter& printer, ProgramInfo const& program);
void write_normalization(JsonPrinter& printer, Normalization const& normalization);

}  // namespace morv::qc::json
