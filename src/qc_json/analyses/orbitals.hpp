#pragma once

#include "core/diagnostics.hpp"
#include "core/json_writer.hpp"
#include "core/node.hpp"

#include <morv/qc/orbitals.hpp>

#include <string>

namespace morv::qc::json {

// Exactly "alpha" or "beta"; anything else is `none`, with no diagnostic.

OrbitalSetBlock read_orbital_set_block(DocumentResult& result, Node const& node);
// An orbital is never dropped; one that is a scalar throws and ends the decode.
Orbital read_orbital(DocumentResult& result, Node const& node);
void write_orbital_set_block(JsonPrinter& printer, OrbitalSetBlock const& block);

}  // namespace morv::qc::json
