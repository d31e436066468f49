#pragma once

#include "core/diagnostics.hpp"
#include "core/json_writer.hpp"
#include "core/node.hpp"

#include <morv/qc/vibrations.hpp>

namespace morv::qc::json {

VibrationalBlock read_vibrational_block(DocumentResult& result, Node const& node);
// A mode is never dropped; one that is a scalar throws and ends the decode.
VibrationalMode read_vibrational_mode(DocumentResult& result, Node const& node);
void write_vibrational_block(JsonPrinter& printer, VibrationalBlock const& block);

}  // namespace morv::qc::json
