#pragma once

#include "core/json_value.hpp"

#include <morv/qc/json/codec.hpp>

#include <ostream>
#include <string>

namespace morv::qc::json {

// Prints a value at depth 0, compact or indented as the options say. No
// final line feed.
void write_json(std::ostream& out, JsonValue const& value, SerializeOptions const& options);

// Prints one quoted string, escaping byte by byte; no UTF-8 is decoded.
void write_json_string(std::ostream& out, std::string const& text);

}  // namespace morv::qc::json
