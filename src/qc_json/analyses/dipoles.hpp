#pragma once

#include "core/diagnostics.hpp"
#include "core/json_writer.hpp"
#include "core/node.hpp"

#include <morv/qc/dipoles.hpp>

namespace morv::qc::json {

DipoleBlock read_dipole_block(DocumentResult& result, Node const& node);
// A moment is never dropped; one that is a scalar throws and ends the decode.
PermanentDipole read_permanent_dipole(DocumentResult& result, Node const& node);
void write_dipole_block(JsonPrinter& printer, DipoleBlock const& block);

}  // namespace morv::qc::json
