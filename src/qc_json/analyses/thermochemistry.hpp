#pragma once

#include "core/diagnostics.hpp"
#include "core/json_writer.hpp"
#include "core/node.hpp"

#include <morv/qc/thermochemistry.hpp>

namespace morv::qc::json {

// `values` is looked into with no test: a block without it, or with a scalar
// there, throws and ends the decode.
ThermochemistryBlock read_thermochemistry_block(DocumentResult& result, Node const& node);
void write_thermochemistry_block(JsonPrinter& printer, ThermochemistryBlock const& block);

}  // namespace morv::qc::json
