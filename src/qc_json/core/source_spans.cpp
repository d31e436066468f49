#include "core/source_spans.hpp"

#include "core/field_readers.hpp"
#include "core/optional_keys.hpp"
#include "core/sequences.hpp"

#include <morv/qc/model.hpp>

#include <array>
#include <string_view>

namespace morv::qc::json {
namespace {

// The keys of a source position, in the order in which they are written.
constexpr std::array<std::string_view, 3> source_position_keys = {"column", "line", "offset"};

model::Diagnostic read_stored_diagnostic(DocumentResult& result, Node const& node) {
    model::Diagnostic diagnostic;
    diagnostic.severity = read_word_field<model::Severity>(result, node, "severity");
    diagnostic.code = read_string_field(result, node, "code", Presence::optional).value_or("");
    diagnostic.message = read_string_field(result, node, "message", Presence::optional).value_or("");
    diagnostic.source = read_source_key(result, node);
    return diagnostic;
}

void write_stored_diagnostic(JsonPrinter& printer, model::Diagnostic const& diagnostic) {
    printer.begin_object();
    member_unless_empty(printer, "code", diagnostic.code);
    printer.member("message", diagnostic.message);
    printer.member("severity", qc::to_string(diagnostic.severity));
    write_source_key(printer, diagnostic.source);
    printer.end_object();
}

}  // namespace

std::optional<model::SourcePosition> read_source_position(DocumentResult& result, Node const& node) {
    if (!node.is_map()) {
        add_error(result, "qc.json.invalid_source_position", "Expected a source-position object.");
        return std::nullopt;
    }
    model::SourcePosition position;
    if (std::array<unsigned long long, 3> numbers{}; node.numbers_in_order(source_position_keys, numbers)) {
        position.column = numbers[0];
        position.line = numbers[1];
        position.offset = numbers[2];
        return position;
    }
    position.offset = read_uint64_field(result, node, source_position_keys[2], Presence::optional).value_or(0);
    position.line = read_uint64_field(result, node, source_position_keys[1], Presence::optional).value_or(0);
    position.column = read_uint64_field(result, node, source_position_keys[0], Presence::optional).value_or(0);
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

void write_source_position(JsonPrinter& printer, model::SourcePosition const& position) {
    printer.begin_object();
    printer.member(source_position_keys[0], position.column);
    printer.member(source_position_keys[1], position.line);
    printer.member(source_position_keys[2], position.offset);
    printer.end_object();
}

void write_source_span(JsonPrinter& printer, model::SourceSpan const& span) {
    printer.begin_object();
    printer.key("begin");
    write_source_position(printer, span.begin);
    printer.key("end");
    write_source_position(printer, span.end);
    printer.member("source_id", span.source_id.value);
    printer.end_object();
}

void write_source_key(JsonPrinter& printer, std::optional<model::SourceSpan> const& span) {
    if (span) {
        printer.key("source");
        write_source_span(printer, *span);
    }
}

void write_diagnostics(JsonPrinter& printer, std::vector<model::Diagnostic> const& diagnostics) {
    write_elements(printer, diagnostics, write_stored_diagnostic);
}

}  // namespace morv::qc::json
