#pragma once

#include "core/json_value.hpp"
#include "core/node.hpp"

#include <morv/model/extension_value.hpp>

namespace morv::qc::json {

// Accepts every node and reports nothing.
model::ExtensionValue read_extension_value(Node const& node);

JsonValue extension_to_json(model::ExtensionValue const& value);

}  // namespace morv::qc::json
