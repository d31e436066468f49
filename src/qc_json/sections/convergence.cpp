#include "sections/convergence.hpp"

#include "core/field_readers.hpp"
#include "core/optional_keys.hpp"
#include "core/sequences.hpp"
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

JsonValue write_criterion(ConvergenceCriterion const& criterion) {
    JsonValue object = make_json_object();
    object["kind"] = to_string(criterion.kind);
    object["value"] = criterion.value;
    set_if_present(object, "threshold", criterion.threshold);
    set_if_present(object, "satisfied", criterion.satisfied);
    set_unless_empty(object, "unit", criterion.unit);
    return object;
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

JsonValue write_gradient(GradientRecord const& gradient) {
    JsonValue object = make_json_object();
    // The vectors are always held in this unit; the key is a constant.
    object["unit"] = "hartree_per_bohr";
    set_if_present(object, "norm", gradient.norm);
    set_if_present(object, "rms", gradient.rms);
    set_if_present(object, "max", gradient.max);
    if (!gradient.vectors.empty()) {
        object["vectors"] = write_elements(gradient.vectors, write_vec3);
    }
    write_source_key(object, gradient.source);
    return object;
}

JsonValue write_convergence(ConvergenceRecord const& convergence) {
    JsonValue object = make_json_object();
    object["status"] = to_string(convergence.status);
    object["criteria"] = write_elements(convergence.criteria, write_criterion);
    write_source_key(object, convergence.source);
    return object;
}

}  // namespace morv::qc::json
