#pragma once

#include "core/diagnostics.hpp"
#include "core/json_writer.hpp"
#include "core/node.hpp"

#include <morv/model/diagnostic.hpp>

#include <optional>
#include <vector>

namespace morv::qc::json {

// `node` is the position or span object itself.
std::optional<model::SourcePosition> read_source_position(DocumentResult& result, Node const& node);
std::optional<model::SourceSpan> read_source_span(DocumentResult& result, Node const& node);

// The `source` key of a record. Read whenever the key is defined, so a JSON
// null there is reported as a bad span.
std::optional<model::SourceSpan> read_source_key(DocumentResult& result, Node const& record);

// Appends the diagnostics stored under the root key `diagnostics`.
void read_diagnostics(DocumentResult& result, Node const& node);

void write_source_position(JsonPrinter& printer, model::SourcePosition const& position);
void write_source_span(JsonPrinter& printer, model::SourceSpan const& span);
// The `source` member of a record, when the span is there; the record's
// writer calls it where `source` falls among its keys.
void write_source_key(JsonPrinter& printer, std::optional<model::SourceSpan> const& span);
void write_diagnostics(JsonPrinter& printer, std::vector<model::Diagnostic> const& diagnostics);

}  // namespace morv::qc::json
