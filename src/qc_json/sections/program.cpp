#include "sections/program.hpp"

#include "core/field_readers.hpp"
#include "core/optional_keys.hpp"
#include "core/source_spans.hpp"

#include <morv/qc/model.hpp>

#include <string>

namespace morv::qc::json {
namespace {

// A switch that is absent or refused stays requested.
bool read_switch(DocumentResult& result, Node const& node, char const* key) {
    return read_bool_field(result, node, key).value_or(true);
}

}  // namespace

void read_normalization(DocumentResult& result, Node const& node) {
    Normalization& normalization = result.value.normalization;
    normalization.profile = read_word_field<ResultProfile>(result, node, "profile");
    Node const requested = node["requested_analyses"];
    if (!requested.is_map()) {
        return;
    }
    RequestedAnalyses& analyses = normalization.requested_analyses;
    analyses.gradients = read_switch(result, requested, "gradients");
    analyses.vibrations = read_switch(result, requested, "vibrations");
    analyses.excited_states = read_switch(result, requested, "excited_states");
    analyses.orbitals = read_switch(result, requested, "orbitals");
    analyses.dipoles = read_switch(result, requested, "dipoles");
}

void read_program(DocumentResult& result, Node const& node) {
    ProgramInfo& program = result.value.program;
    program.kind = read_word_field<ProgramKind>(result, node, "kind");
    program.name = read_string_field(result, node, "name", Presence::optional).value_or("");
    program.version = read_string_field(result, node, "version", Presence::optional).value_or("");
    program.input_file_name = read_string_field(result, node, "input_file_name", Presence::optional).value_or("");
    if (auto termination = read_termination(result, node["termination"])) {
        program.termination = std::move(*termination);
    }
}

std::optional<Termination> read_termination(DocumentResult& result, Node const& node) {
    if (!node.is_map()) {
        return std::nullopt;
    }
    Termination termination;
    termination.kind = read_word_field<TerminationKind>(result, node, "kind");
    termination.reason = read_string_field(result, node, "reason", Presence::optional).value_or("");
    termination.source = read_source_key(result, node);
    return termination;
}

void write_termination(JsonPrinter& printer, Termination const& termination) {
    printer.begin_object();
    printer.member("kind", to_string(termination.kind));
    printer.member("normal", termination.kind == TerminationKind::normal);
    member_unless_empty(printer, "reason", termination.reason);
    write_source_key(printer, termination.source);
    printer.end_object();
}

void write_program(JsonPrinter& printer, ProgramInfo const& program) {
    printer.begin_object();
    member_unless_empty(printer, "input_file_name", program.input_file_name);
    printer.member("kind", to_string(program.kind));
    printer.member("name", program.name);
    printer.key("termination");
    write_termination(printer, program.termination);
    member_unless_empty(printer, "version", program.version);
    printer.end_object();
}

void write_normalization(JsonPrinter& printer, Normalization const& normalization) {
    RequestedAnalyses const& analyses = normalization.requested_analyses;
    printer.begin_object();
    printer.member("profile", to_string(normalization.profile));
    printer.key("requested_analyses");
    printer.begin_object();
    printer.member("dipoles", analyses.dipoles);
    printer.member("excited_states", analyses.excited_states);
    printer.member("gradients", analyses.gradients);
    printer.member("orbitals", analyses.orbitals);
    printer.member("vibrations", analyses.vibrations);
    printer.end_object();
    printer.end_object();
}

}  // namespace morv::qc::json
