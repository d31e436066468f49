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

JsonValue write_termination(Termination const& termination) {
    JsonValue object = make_json_object();
    object["kind"] = to_string(termination.kind);
    object["normal"] = termination.kind == TerminationKind::normal;
    set_unless_empty(object, "reason", termination.reason);
    write_source_key(object, termination.source);
    return object;
}

JsonValue write_program(ProgramInfo const& program) {
    JsonValue object = make_json_object();
    object["kind"] = to_string(program.kind);
    object["name"] = program.name;
    set_unless_empty(object, "version", program.version);
    set_unless_empty(object, "input_file_name", program.input_file_name);
    object["termination"] = write_termination(program.termination);
    return object;
}

JsonValue write_normalization(Normalization const& normalization) {
    RequestedAnalyses const& analyses = normalization.requested_analyses;
    JsonValue requested = make_json_object();
    requested["gradients"] = analyses.gradients;
    requested["vibrations"] = analyses.vibrations;
    requested["excited_states"] = analyses.excited_states;
    requested["orbitals"] = analyses.orbitals;
    requested["dipoles"] = analyses.dipoles;

    JsonValue object = make_json_object();
    object["profile"] = to_string(normalization.profile);
    object["requested_analyses"] = std::move(requested);
    return object;
}

}  // namespace morv::qc::json
