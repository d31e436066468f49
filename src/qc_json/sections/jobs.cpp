#include "sections/jobs.hpp"

#include "core/field_readers.hpp"
#include "core/optional_keys.hpp"
#include "core/sequences.hpp"
#include "core/source_spans.hpp"
#include <morv/qc/wire_words.hpp>
#include "sections/program.hpp"

#include <morv/qc/model.hpp>

#include <limits>
#include <utility>

namespace morv::qc::json {
namespace {

void read_tasks(DocumentResult& result, Node const& list, std::vector<TaskKind>& tasks) {
    if (!list.is_sequence()) {
        return;
    }
    for (Node const element : list.elements()) {
        // No handler here on purpose: a task that is not a scalar ends the
        // decode, and a null reads as the text "null".
        std::string const text = element.as<std::string>();
        if (auto const task = enumerator_of_word<TaskKind>(text)) {
            tasks.push_back(*task);
        } else {
            add_warning(result, "qc.json.unknown_task", "Ignoring unknown task kind: " + text);
        }
    }
}

// Step ids are 64-bit conversions; a value that a step id cannot hold is as
// unusable as one that does not convert.
void read_step_ids(DocumentResult& result, Node const& list, std::vector<StepId>& step_ids) {
    if (!list.is_sequence()) {
        return;
    }
    for (Node const element : list.elements()) {
        auto const value = element.try_as<unsigned long long>();
        if (value && *value <= std::numeric_limits<std::uint32_t>::max()) {
            step_ids.emplace_back(static_cast<std::uint32_t>(*value));
        } else {
            add_error(result, "qc.json.invalid_step_id", "Calculation job contains an invalid step ID.");
        }
    }
}

void write_task(JsonPrinter& printer, TaskKind task) { printer.value(to_string(task)); }

void write_step_id(JsonPrinter& printer, StepId id) { printer.value(id.value); }

}  // namespace

std::optional<CalculationJob> read_job(DocumentResult& result, Node const& node) {
    auto const id = read_entity_id_field<JobIdTag>(result, node, "id", Presence::required);
    auto const system_id = read_entity_id_field<chem::SystemIdTag>(result, node, "system_id", Presence::required);
    if (!id || !system_id) {
        return std::nullopt;
    }
    CalculationJob job;
    job.id = *id;
    job.system_id = *system_id;
    job.ordinal = read_uint32_field(result, node, "ordinal", Presence::optional).value_or(id->value);
    job.parent_job_id = read_entity_id_field<JobIdTag>(result, node, "parent_job_id", Presence::optional);
    job.relation = read_word_field<JobRelation>(result, node, "relation");
    read_tasks(result, node["tasks"], job.tasks);
    if (auto const primary = read_string_field(result, node, "primary_task", Presence::optional)) {
        job.primary_task = enumerator_of_word<TaskKind>(*primary);
    }
    job.method = read_string_field(result, node, "method", Presence::optional).value_or("");
    job.basis_set = read_string_field(result, node, "basis_set", Presence::optional).value_or("");
    job.keywords = read_string_field(result, node, "keywords", Presence::optional).value_or("");
    read_step_ids(result, node["step_ids"], job.step_ids);
    if (auto termination = read_termination(result, node["termination"])) {
        job.termination = std::move(*termination);
    }
    job.source = read_source_key(result, node);
    return job;
}

void write_job(JsonPrinter& printer, CalculationJob const& job) {
    printer.begin_object();
    member_unless_empty(printer, "basis_set", job.basis_set);
    printer.member("id", job.id.value);
    member_unless_empty(printer, "keywords", job.keywords);
    member_unless_empty(printer, "method", job.method);
    printer.member("ordinal", job.ordinal);
    member_if_present(printer, "parent_job_id", job.parent_job_id);
    if (job.primary_task) {
        printer.member("primary_task", to_string(*job.primary_task));
    }
    printer.member("relation", to_string(job.relation));
    write_source_key(printer, job.source);
    printer.key("step_ids");
    write_elements(printer, job.step_ids, write_step_id);
    printer.member("system_id", job.system_id.value);
    printer.key("tasks");
    write_elements(printer, job.tasks, write_task);
    printer.key("termination");
    write_termination(printer, job.termination);
    printer.end_object();
}

}  // namespace morv::qc::json
