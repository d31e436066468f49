#include "core/json_writer.hpp"
#include "sections/steps.hpp"
#include "support/diagnostics.hpp"

#include <gtest/gtest.h>
#include <yaml-cpp/exceptions.h>

#include <sstream>
#include <string>
#include <vector>

namespace morv::qc::json {
namespace {

using chem::FrameId;
using chem::SystemId;
using morv::testing::describe;
using Lines = std::vector<std::string>;

std::string compact(JsonValue const& value) {
    std::ostringstream out;
    write_json(out, value, SerializeOptions{});
    return out.str();
}

std::string invalid(std::string const& key) { return "error qc.json.invalid_field: Invalid value for field: " + key; }
std::string missing(std::string const& key) { return "error qc.json.missing_field: Missing required field: " + key; }
std::string out_of_range(std::string const& key) { return "error qc.json.id_out_of_range: Entity ID exceeds uint32 range: " + key; }

TEST(Steps, UnusableIdsDropTheStepWhileOtherFaultsOnlyCostTheirField) {
    struct Case { char const* json; std::optional<CalculationStep> step; Lines diagnostics; };
    Case const cases[] = {
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
         {invalid("native_cycle"), invalid("frame_id"),
          "error qc.json.invalid_energy_record: Expected an energy-record object.",
          "error qc.json.invalid_energy: Expected an energy object.", invalid("norm"), invalid("status"),
          "error qc.json.invalid_source_span: Expected a source-span object."}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.json);
        DocumentResult result;
        EXPECT_EQ(read_step(result, load_text(c.json)), c.step);
        EXPECT_EQ(describe(result.diagnostics), c.diagnostics);
    }
    DocumentResult result;
    EXPECT_THROW(read_step(result, load_text("5")), YAML::Exception);
}

TEST(Steps, EveryKeyTravelsThroughText) {
    CalculationStep step{StepId(9), JobId(1), SystemId(2), 9, {}, {}, {}, {}, {}, {}, {}};
    EXPECT_EQ(compact(write_step(step)), R"({"energies":[],"id":9,"job_id":1,"ordinal":9,"system_id":2})");
    model::SourceSpan const span{model::SourceId(3), {1, 2, 3}, {4, 5, 6}};
    step = {StepId(4), JobId(5), SystemId(6), 0, -3, FrameId(0), {EnergyRecord{EnergyId(1), EnergyKind::scf, "", "", -76.4, span}},
            EnergyId(8), GradientRecord{{{0.5, -1e-05, 0}}, 1e-300, {}, {}, span},
            ConvergenceRecord{{{CriterionKind::rms_force, 3e-4, {}, true, ""}}, ConvergenceStatus::converged, {}}, span};
    std::string const text = compact(write_step(step));
    DocumentResult result;
    auto const back = read_step(result, load_text(text));
    EXPECT_EQ(back, step);
    EXPECT_TRUE(result.diagnostics.empty());
    EXPECT_EQ(compact(write_step(back.value_or(CalculationStep{}))), text);
}

}  // namespace
}  // namespace morv::qc::json
