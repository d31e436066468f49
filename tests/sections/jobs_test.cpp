#include "sections/jobs.hpp"
#include "support/json_text.hpp"

namespace morv::qc::json {
namespace {

using namespace morv::testing;
using chem::SystemId;
using T = TaskKind;

std::string unknown_task(std::string const& text) { return "warning qc.json.unknown_task: Ignoring unknown task kind: " + text; }
std::string const bad_step = "error qc.json.invalid_step_id: Calculation job contains an invalid step ID.";

TEST(Jobs, UnusableIdsDropTheJobWhileOtherFaultsOnlyCostTheirField) {
    expect_reads(read_job, {
        {"null", std::nullopt, {missing("id"), missing("system_id")}},
        {R"({"id": "x", "system_id": 4294967296, "tasks": [{}]})", std::nullopt, {invalid("id"), out_of_range("system_id")}},
        {R"({"id": 7, "system_id": 1, "ordinal": 4294967296, "parent_job_id": 4294967296, "relation": "RESTART",
             "primary_task": "scan", "tasks": 5, "step_ids": {"a": 1}, "termination": {"kind": "normal", "reason": "done"}})",
         CalculationJob{JobId(7), SystemId(1), 7, {}, JobRelation::none, {}, T::scan, "", "", "", {},
                        {TerminationKind::normal, "done", {}}, {}},
         {invalid("ordinal"), out_of_range("parent_job_id")}},
        {R"({"source": null, "termination": 5, "step_ids": [1, "x", null, -1, "0x10", 4294967296, 1, 1.5, [2]],
             "keywords": 5, "basis_set": [], "method": "", "primary_task": "freq",
             "tasks": ["optimization", "freq", null, 5, "optimization", "neb"], "relation": ["link"],
             "ordinal": 0, "parent_job_id": 0, "system_id": 1, "id": 1})",
         CalculationJob{JobId(1), SystemId(1), 0, JobId(0), JobRelation::none, {T::optimization, T::optimization, T::neb},
                        {}, "", "", "5", {StepId(1), StepId(16), StepId(1)}, {}, {}},
         {invalid("relation"), unknown_task("freq"), unknown_task("null"), unknown_task("5"), invalid("basis_set"),
          bad_step, bad_step, bad_step, bad_step, bad_step, bad_step, bad_span}},
    });
}

TEST(Jobs, ATaskThatIsNotAScalarEndsTheWholeDecode) {
    auto const decoded = deserialize(document_with(R"("jobs": [{"id": 1, "system_id": 1,
        "tasks": ["scan", ["scan"]]}])"));
    EXPECT_EQ(describe(decoded.diagnostics), Lines{parse_failed("yaml-cpp: error at line 2, column 27: bad conversion")});
}

TEST(Jobs, WritesEmptyListsAndLeavesEmptyTextsOut) {
    CalculationJob const job{JobId(7), SystemId(1), 7, {}, JobRelation::none, {}, {}, "", "", "", {}, {}, {}};
    EXPECT_EQ(compact(write_job, job), R"({"id":7,"ordinal":7,"relation":"none","step_ids":[],"system_id":1,)"
                                       R"("tasks":[],"termination":{"kind":"unknown","normal":false}})");
}

}  // namespace
}  // namespace morv::qc::json
