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

void write_step(JsonPrinter& printer, CalculationStep const& step) {
    printer.begin_object();
    if (step.convergence) {
        printer.key("convergence");
        write_convergence(printer, *step.convergence);
    }
    printer.key("energies");
    write_elements(printer, step.energies, write_energy_record);
    member_if_present(printer, "frame_id", step.frame_id);
    if (step.gradient) {
        printer.key("gradient");
        write_gradient(printer, *step.gradient);
    }
    printer.member("id", step.id.value);
    printer.member("job_id", step.job_id.value);
    member_if_present(printer, "native_cycle", step.native_cycle);
    printer.member("ordinal", step.ordinal);
    member_if_present(printer, "primary_energy_id", step.primary_energy_id);
    write_source_key(printer, step.source);
    printer.member("system_id", step.system_id.value);
    printer.end_object();
}

}  // namespace morv::qc::json
