#include "sections/steps.hpp"
#include "support/json_text.hpp"

namespace morv::qc::json {
namespace {

using namespace morv::testing;
using chem::SystemId;

TEST(Steps, UnusableIdsDropTheStepWhileOtherFaultsOnlyCostTheirField) {
    expect_reads(read_step, {
        {"[]", std::nullopt, {missing("id"), missing("job_id"), missing("system_id")}},
        {R"({"id": 1, "job_id": 4294967296, "system_id": "x", "ordinal": "y", "gradient": 5})", std::nullopt,
         {out_of_range("job_id"), invalid("system_id")}},
        {R"({"id": 9, "job_id": 1, "system_id": 2, "ordinal": -1, "native_cycle": -1, "frame_id": 4294967296,
             "energies": {}, "primary_energy_id": 4294967296, "gradient": null, "convergence": 5})",
         CalculationStep{StepId(9), JobId(1), SystemId(2), 9, -1, {}, {}, {}, {}, {}, {}},
         {invalid("ordinal"), out_of_range("frame_id"), out_of_range("primary_energy_id")}},
        // Keys in reverse order: the diagnostics still come in reading order.
        {R"({"source": null, "convergence": {"status": []}, "gradient": {"norm": "abc"}, "primary_energy_id": 2,
             "energies": [5, {"id": 1, "value": {"hartree": 0}}, {"id": 2}], "frame_id": "f", "native_cycle": 1.5,
             "ordinal": 0, "system_id": 0, "job_id": 0, "id": 0})",
         CalculationStep{StepId(0), JobId(0), SystemId(0), 0, {}, {}, {EnergyRecord{EnergyId(1), {}, "", "", 0.0, {}}},
                         EnergyId(2), GradientRecord{}, ConvergenceRecord{}, {}},
         {invalid("native_cycle"), invalid("frame_id"), bad_energy_record, bad_energy, invalid("norm"), invalid("status"),
          bad_span}},
    });
    DocumentResult result;
    EXPECT_THROW(read_step(result, load_text("5")), YAML::Exception);
}

TEST(Steps, WritesOnlyTheKeysThatAreSet) {
    CalculationStep step{StepId(9), JobId(1), SystemId(2), 9, {}, {}, {}, {}, {}, {}, {}};
    EXPECT_EQ(compact(write_step, step), R"({"energies":[],"id":9,"job_id":1,"ordinal":9,"system_id":2})");
}

}  // namespace
}  // namespace morv::qc::json
