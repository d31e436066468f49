#pragma once

#include "core/diagnostics.hpp"
#include "core/json_writer.hpp"
#include "core/node.hpp"

#include <morv/chem/system.hpp>

#include <optional>

namespace morv::qc::json {

// Gives nothing when the id is unusable. A system with a usable id must have
// a `topology` that is not a scalar: otherwise the lookup of its atoms throws
// and the decode ends.
std::optional<chem::ChemicalSystem> read_system(DocumentResult& result, Node const& node);
void write_system(JsonPrinter& printer, chem::ChemicalSystem const& system);

}  // namespace morv::qc::json
