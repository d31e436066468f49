#pragma once

#include <morv/chem/system.hpp>
#include <morv/model/diagnostic.hpp>
#include <morv/model/equality.hpp>
#include <morv/qc/ids.hpp>
#include <morv/qc/program.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace morv::qc {

enum class TaskKind : std::uint32_t {
    single_point = 0,
    optimization = 1,
    frequency = 2,
    excited_state = 3,
    irc = 4,
    scan = 5,
    neb = 6,
};

enum class JobRelation : std::uint32_t {
    none = 0,
    link = 1,
    restart = 2,
    branch = 3,
    image = 4,
};

// One piece of work of a run on one chemical system.
struct CalculationJob {
    JobId id;
    chem::SystemId system_id;
    std::uint32_t ordinal = 0;
    std::optional<JobId> parent_job_id;
    JobRelation relation = JobRelation::none;
    std::vector<TaskKind> tasks;
    std::optional<TaskKind> primary_task;
    std::string method;
    std::string basis_set;
    std::string keywords;
    std::vector<StepId> step_ids;
    Termination termination;
    std::optional<model::SourceSpan> source;
};

inline auto fields_of(CalculationJob const& j) {
    return std::tie(j.id, j.system_id, j.ordinal, j.parent_job_id, j.relation, j.tasks, j.primary_task,
                    j.method, j.basis_set, j.keywords, j.step_ids, j.termination, j.source);
}

MORV_DEFINE_EQUALITY(CalculationJob)

}  // namespace morv::qc
