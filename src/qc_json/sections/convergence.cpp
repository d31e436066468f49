#include "sections/convergence.hpp"

#include "core/field_readers.hpp"
#include "core/optional_keys.hpp"
#include "core/sequences.hpp"
#include "core/source_spans.hpp"
#include "core/wire_names.hpp"

#include <morv/qc/model.hpp>


namespace morv::qc::json {
namespace {

constexpr WireNames<ConvergenceStatus, 2> statuses = {{
    {"converged", ConvergenceStatus::converged},
    {"not_converged", ConvergenceStatus::not_converged},
}};

// "gradient_norm" is the default, so it needs no entry of its own.
constexpr WireNames<CriterionKind, 6> criterion_kinds = {{
    {"max_force", CriterionKind::max_force},
    {"rms_force", CriterionKind::rms_force},
    {"max_displacement", CriterionKind::max_displacement},
    {"rms_displacement", CriterionKind::rms_displacement},
    {"energy_change", CriterionKind::energy_change},
    {"constraint_violation", CriterionKind::constraint_violation},
}};

// A criterion is never dropped; a bad `value` leaves 0.
ConvergenceCriterion read_criterion(DocumentResult& result, Node const& node) {
    ConvergenceCriterion criterion;
    criterion.kind = find_wire_name(read_string_field(result, node, "kind", false).value_or(""), criterion_kinds)
                         .value_or(CriterionKind::gradient_norm);
    criterion.value = read_double_field(result, node, "value", true).value_or(0.0);
    criterion.threshold = read_double_field(result, node, "threshold", false);
    criterion.satisfied = read_bool_field(result, node, "satisfied");
    criterion.unit = read_string_field(result, node, "unit", false).value_or("");
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
    gradient.norm = read_double_field(result, node, "norm", false);
    gradient.rms = read_double_field(result, node, "rms", false);
    gradient.max = read_double_field(result, node, "max", false);
    read_elements(result, node["vectors"], gradient.vectors, read_vec3);
    gradient.source = read_source_key(result, node);
    return gradient;
}

std::optional<ConvergenceRecord> read_convergence(DocumentResult& result, Node const& node) {
    if (!node.is_map()) {
        return std::nullopt;
    }
    ConvergenceRecord convergence;
    convergence.status = find_wire_name(read_string_field(result, node, "status", false).value_or(""), statuses)
                             .value_or(ConvergenceStatus::unknown);
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
