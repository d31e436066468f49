#pragma once

#include "core/diagnostics.hpp"
#include "core/node.hpp"

#include <morv/model/diagnostic.hpp>
#include <morv/model/parse_result.hpp>
#include <morv/qc/document.hpp>
#include <morv/qc/json/codec.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace morv::qc::json {

// The root key of the stored diagnostics, which a write may leave empty.
inline constexpr char const diagnostics_key[] = "diagnostics";

// The text of the whole document, its extensions among the fixed keys of the
// root; without `include_diagnostics` the diagnostics are an empty array.
std::string write_document(Document const& document, model::ParseStatus status,
                           std::vector<model::Diagnostic> const& diagnostics, SerializeOptions const& options);

// Walks the root of a loaded text. Exceptions of the YAML::Exception family
// leave it; the caller turns them into the "qc.json.parse_failed" result.
DocumentResult read_document(Node const& root);

// The decode of `deserialize` done through YAML::Load alone. It defines what
// every decode gives; the tree of a strict JSON text is only a faster way to
// the same result.
DocumentResult decode_through_yaml(std::string_view text);

}  // namespace morv::qc::json
