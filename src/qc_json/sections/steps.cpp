#include "sections/steps.hpp"

#include "core/field_readers.hpp"
#include "core/optional_keys.hpp"
#include "core/sequences.hpp"
#include "core/source_spans.hpp"
#include "sections/convergence.hpp"
#include "sections/energy.hpp"

namespace morv::qc::json {

std::optional<CalculationStep> read_step(DocumentResult& result, Node const& node) {
    auto const id = read_entity_id_field<StepIdTag>(result, node, "id", Presence::required);
    auto const job_id = read_entity_id_field<JobIdTag>(result, node, "job_id", Presence::required);
    auto const system_id = read_entity_id_field<chem::SystemIdTag>(result, node, "system_id", Presence::required);
    if (!id || !job_id || !system_id) {
        return std::nullopt;
    }
    CalculationStep step;
    step.id = *id;
    step.job_id = *job_id;
    step.system_id = *system_id;
    step.ordinal = read_uint32_field(result, node, "ordinal", Presence::optional).value_or(id->value);
    step.native_cycle = read_int_field(result, node, "native_cycle", Presence::optional);
    step.frame_id = read_entity_id_field<chem::FrameIdTag>(result, node, "frame_id", Presence::optional);
    read_elements(result, node["energies"], step.energies, read_energy_record);
    step.primary_energy_id = read_entity_id_field<EnergyIdTag>(result, node, "primary_energy_id", Presence::optional);
    if (Node const gradient = node["gradient"]; gradient.defined()) {
        step.gradient = read_gradient(result, gradient);
    }
    if (Node const convergence = node["convergence"]; convergence.defined()) {
        step.convergence = read_convergence(result, convergence);
    }
    step.source = read_source_key(result, node);
    return step;
}

JsonValue write_step(CalculationStep const& step) {
    JsonValue object = make_json_object();
    object["id"] = step.id.value;
    object["job_id"] = step.job_id.value;
    object["system_id"] = step.system_id.value;
    object["ordinal"] = step.ordinal;
    set_if_present(object, "native_cycle", step.native_cycle);
    set_if_present(object, "frame_id", step.frame_id);
    object["energies"] = write_elements(step.energies, write_energy_record);
    set_if_present(object, "primary_energy_id", step.primary_energy_id);
    if (step.gradient) {
        object["gradient"] = write_gradient(*step.gradient);
    }
    if (step.convergence) {
        object["convergence"] = write_convergence(*step.convergence);
    }
    write_source_key(object, step.source);
    return object;
}

}  // namespace morv::qc::json
