#pragma once

#include "core/diagnostics.hpp"
#include "core/json_writer.hpp"
#include "core/node.hpp"

#include <morv/qc/excited_states.hpp>

namespace morv::qc::json {

ExcitedStateBlock read_excited_state_block(DocumentResult& result, Node const& node);
// A state is never dropped; one that is a scalar throws and ends the decode.
ExcitedState read_excited_state(DocumentResult& result, Node const& node);
void write_excited_state_block(JsonPrinter& printer, ExcitedStateBlock const& block);

}  // namespace morv::qc::json
