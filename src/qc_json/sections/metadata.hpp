#pragma once

#include "core/diagnostics.hpp"
#include "core/json_writer.hpp"
#include "core/node.hpp"

#include <morv/qc/metadata.hpp>

#include <map>
#include <optional>
#include <string>

namespace morv::qc::json {

// Gives nothing for a null; warns and gives nothing for a map.
std::optional<MetadataValue> read_metadata_value(DocumentResult& result, std::string const& key, Node const& node);

// `node` is the map under the root key; the first entry of a key stays.
void read_metadata(DocumentResult& result, Node const& node);

void write_metadata(JsonPrinter& printer, std::map<std::string, MetadataValue> const& metadata);

}  // namespace morv::qc::json
