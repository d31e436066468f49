#pragma once

#include "core/json_value.hpp"

#include <morv/qc/json/codec.hpp>

#include <ostream>
#include <string>

namespace morv::qc::json {

// Appends a value printed at depth 0, compact or indented as the options say.
// No final line feed. Strings are escaped byte by byte; no UTF-8 is decoded.
void write_json(std::string& out, JsonValue const& value, SerializeOptions const& options);
void write_json(std::ostream& out, JsonValue const& value, SerializeOptions const& options);

}  // namespace morv::qc::json
