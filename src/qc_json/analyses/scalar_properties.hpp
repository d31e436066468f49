#pragma once

#include "core/diagnostics.hpp"
#include "core/json_writer.hpp"
#include "core/node.hpp"

#include <morv/qc/scalar_properties.hpp>

namespace morv::qc::json {

ScalarPropertyBlock read_scalar_property_block(DocumentResult& result, Node const& node);
// A property is never dropped, even without `key` or `value`; one that is a
// scalar throws and ends the decode.
ScalarProperty read_scalar_property(DocumentResult& result, Node const& node);
void write_scalar_property_block(JsonPrinter& printer, ScalarPropertyBlock const& block);

}  // namespace morv::qc::json
