#pragma once

#include "core/diagnostics.hpp"
#include "core/json_writer.hpp"
#include "core/node.hpp"

#include <morv/model/source_file.hpp>

#include <optional>

namespace morv::qc::json {

// Gives nothing when the id is unusable; the other keys are then not read.
std::optional<model::SourceFile> read_source_file(DocumentResult& result, Node const& node);
void write_source_file(JsonPrinter& printer, model::SourceFile const& file);

}  // namespace morv::qc::json
