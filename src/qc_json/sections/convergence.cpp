#include "sections/convergence.hpp"

#include "core/field_readers.hpp"
#include "core/optional_keys.hpp"
#include "core/sequences.hpp"
#include "core/vec3_fields.hpp"
#include "core/source_spans.hpp"

#include <morv/qc/model.hpp>


namespace morv::qc::json {
namespace {

// A criterion is never dropped; a bad `value` leaves 0.
ConvergenceCriterion read_criterion(DocumentResult& result, Node const& node) {
    ConvergenceCriterion criterion;
    criterion.kind = read_word_field<CriterionKind>(result, node, "kind");
    criterion.value = read_double_field(result, node, "value", Presence::required).value_or(0.0);
    criterion.threshold = read_double_field(result, node, "threshold", Presence::optional);
    criterion.satisfied = read_bool_field(result, node, "satisfied");
    criterion.unit = read_string_field(result, node, "unit", Presence::optional).value_or("");
    return criterion;
}

void write_criterion(JsonPrinter& printer, ConvergenceCriterion const& criterion) {
    printer.begin_object();
    printer.member("kind", to_string(criterion.kind));
    member_if_present(printer, "satisfied", criterion.satisfied);
    member_if_present(printer, "threshold", criterion.threshold);
    member_unless_empty(printer, "unit", criterion.unit);
    printer.member("value", criterion.value);
    printer.end_object();
}

}  // namespace

std::optional<GradientRecord> read_gradient(DocumentResult& result, Node const& node) {
    if (!node.is_map()) {
        return std::nullopt;
    }
    GradientRecord gradient;
    gradient.norm = read_double_field(result, node, "norm", Presence::optional);
    gradient.rms = read_double_field(result, node, "rms", Presence::optional);
    gradient.max = read_double_field(result, node, "max", Presence::optional);
    read_elements(result, node["vectors"], gradient.vectors, read_vec3);
    gradient.source = read_source_key(result, node);
    return gradient;
}

std::optional<ConvergenceRecord> read_convergence(DocumentResult& result, Node const& node) {
    if (!node.is_map()) {
        return std::nullopt;
    }
    ConvergenceRecord convergence;
    convergence.status = read_word_field<ConvergenceStatus>(result, node, "status");
    read_elements(result, node["criteria"], convergence.criteria, read_criterion);
    convergence.source = read_source_key(result, node);
    return convergence;
}

void write_gradient(JsonPrinter& printer, GradientRecord const& gradient) {
    printer.begin_object();
    member_if_present(printer, "max", gradient.max);
    member_if_present(printer, "norm", gradient.norm);
    member_if_present(printer, "rms", gradient.rms);
    write_source_key(printer, gradient.source);
    // The vectors are always held in this unit; the key is a constant.
    printer.member("unit", "hartree_per_bohr");
    if (!gradient.vectors.empty()) {
        printer.key("vectors");
        write_elements(printer, gradient.vectors, write_vec3);
    }
    printer.end_object();
}

void write_convergence(JsonPrinter& printer, ConvergenceRecord const& convergence) {
    printer.begin_object();
    printer.key("criteria");
    write_elements(printer, convergence.criteria, write_criterion);
    write_source_key(printer, convergence.source);
    printer.member("status", to_string(convergence.status));
    printer.end_object();
}

}  // namespace morv::qc::json
