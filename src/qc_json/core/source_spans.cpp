#include "core/source_spans.hpp"

#include "core/field_readers.hpp"

#include <morv/qc/model.hpp>

namespace morv::qc::json {
namespace {

model::Diagnostic read_stored_diagnostic(DocumentResult& result, Node const& node) {
    model::Diagnostic diagnostic;
    diagnostic.severity = read_word_field<model::Severity>(result, node, "severity");
    diagnostic.code = read_string_field(result, node, "code", Presence::optional).value_or("");
    diagnostic.message = read_string_field(result, node, "message", Presence::optional).value_or("");
    diagnostic.source = read_source_key(result, node);
    return diagnostic;
}

JsonValue write_stored_diagnostic(model::Diagnostic const& diagnostic) {
    JsonValue object = make_json_object();
    object["severity"] = qc::to_string(diagnostic.severity);
    if (!diagnostic.code.empty()) {
        object["code"] = diagnostic.code;
    }
    object["message"] = diagnostic.message;
    write_source_key(object, diagnostic.source);
    return object;
}

}  // namespace

std::optional<model::SourcePosition> read_source_position(DocumentResult& result, Node const& node) {
    if (!node.is_map()) {
        add_error(result, "qc.json.invalid_source_position", "Expected a source-position object.");
        return std::nullopt;
    }
    model::SourcePosition position;
    position.offset = read_uint64_field(result, node, "offset", Presence::optional).value_or(0);
    position.line = read_uint64_field(result, node, "line", Presence::optional).value_or(0);
    position.column = read_uint64_field(result, node, "column", Presence::optional).value_or(0);
    return position;
}

std::optional<model::SourceSpan> read_source_span(DocumentResult& result, Node const& node) {
    if (!node.is_map()) {
        add_error(result, "qc.json.invalid_source_span", "Expected a source-span object.");
        return std::nullopt;
    }
    auto const source_id = read_id_field(result, node, "source_id", Presence::required);
    if (!source_id) {
        return std::nullopt;
    }
    model::SourceSpan span;
    span.source_id = model::SourceId(*source_id);
    // A damaged position costs only itself: it becomes all zeros.
    span.begin = read_source_position(result, node["begin"]).value_or(model::SourcePosition{});
    span.end = read_source_position(result, node["end"]).value_or(model::SourcePosition{});
    return span;
}

std::optional<model::SourceSpan> read_source_key(DocumentResult& result, Node const& record) {
    Node const source = record["source"];
    if (!source.defined()) {
        return std::nullopt;
    }
    return read_source_span(result, source);
}

void read_diagnostics(DocumentResult& result, Node const& node) {
    if (!node.is_sequence()) {
        return;
    }
    for (Node const element : node.elements()) {
        model::Diagnostic diagnostic = read_stored_diagnostic(result, element);
        result.diagnostics.push_back(std::move(diagnostic));
    }
}

JsonValue write_source_position(model::SourcePosition const& position) {
    JsonValue object = make_json_object();
    object["offset"] = position.offset;
    object["line"] = position.line;
    object["column"] = position.column;
    return object;
}

JsonValue write_source_span(model::SourceSpan const& span) {
    JsonValue object = make_json_object();
    object["source_id"] = span.source_id.value;
    object["begin"] = write_source_position(span.begin);
    object["end"] = write_source_position(span.end);
    return object;
}

void write_source_key(JsonValue& record, std::optional<model::SourceSpan> const& span) {
    if (span) {
        record["source"] = write_source_span(*span);
    }
}

JsonValue write_diagnostics(std::vector<model::Diagnostic> const& diagnostics) {
    JsonValue array = make_json_array();
    for (auto const& diagnostic : diagnostics) {
        array.push_back(write_stored_diagnostic(diagnostic));
    }
    return array;
}

}  // namespace morv::qc::json
