#include "core/json_writer.hpp"
#include "sections/program.hpp"
#include "support/diagnostics.hpp"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace morv::qc::json {
namespace {

using morv::testing::describe;
using Lines = std::vector<std::string>;

std::string compact(JsonValue const& value) {
    std::ostringstream out;
    write_json(out, value, SerializeOptions{});
    return out.str();
}

TEST(Program, ReadsKnownWordsExactlyAndDefaultsEverythingElse) {
    struct Case {
        char const* json;
        ProgramInfo program;
        Lines diagnostics;
    };
    Case const cases[] = {
        {R"({"kind": "other", "name": 5})", {ProgramKind::unknown, "5", "", "", {}}, {}},
        {R"({"kind": "ORCA"})", {}, {}},
        {R"({"kind": "gaussian", "version": "16 C.01", "input_file_name": "a.gjf"})",
         {ProgramKind::gaussian, "", "16 C.01", "a.gjf", {}},
         {}},
        {R"({"kind": ["orca"], "name": {}, "termination": null})",
         {},
         {"error qc.json.invalid_field: Invalid value for field: kind",
          "error qc.json.invalid_field: Invalid value for field: name"}},
        {R"({"kind": "gamess", "termination": {"kind": "error", "normal": true, "reason": "SCF failed"}})",
         {ProgramKind::gamess, "", "", "", {TerminationKind::error, "SCF failed", std::nullopt}},
         {}},
        {R"({"termination": {"kind": "Normal", "source": null}})",
         {},
         {"error qc.json.invalid_source_span: Expected a source-span object."}},
        {R"({"termination": {"kind": "truncated", "reason": [], "source": {"source_id": 2, "begin": {}, "end": {}}}})",
         {ProgramKind::unknown, "", "", "", {TerminationKind::truncated, "", model::SourceSpan{model::SourceId(2), {}, {}}}},
         {"error qc.json.invalid_field: Invalid value for field: reason"}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.json);
        DocumentResult result;
        read_program(result, load_text(c.json));
        EXPECT_EQ(result.value.program, c.program);
        EXPECT_EQ(describe(result.diagnostics), c.diagnostics);
    }
}

TEST(Normalization, SwitchesStayRequestedUnlessTheTextSaysFalse) {
    struct Case {
        char const* json;
        ResultProfile profile;
        RequestedAnalyses requested;
        Lines diagnostics;
    };
    Case const cases[] = {
        {R"({"profile": "summary", "requested_analyses": {"orbitals": false}})",
         ResultProfile::summary,
         {true, true, true, false, true},
         {}},
        {R"({"profile": "full", "requested_analyses": {"gradients": false, "vibrations": "no", "dipoles": "maybe"}})",
         ResultProfile::full,
         {false, false, true, true, true},
         {"error qc.json.invalid_field: Invalid value for field: dipoles"}},
        {R"({"profile": null, "requested_analyses": 5})", ResultProfile::unknown, {}, {}},
        {R"({"profile": ["full"]})",
         ResultProfile::unknown,
         {},
         {"error qc.json.invalid_field: Invalid value for field: profile"}},
        {R"({"profile": "Standard"})", ResultProfile::unknown, {}, {}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.json);
        DocumentResult result;
        read_normalization(result, load_text(c.json));
        EXPECT_EQ(result.value.normalization, (Normalization{c.profile, c.requested}));
        EXPECT_EQ(describe(result.diagnostics), c.diagnostics);
    }
}

TEST(Program, WritesEmptyOptionalStringsOnlyForName) {
    ProgramInfo program;
    program.kind = ProgramKind::orca;
    EXPECT_EQ(compact(write_program(program)),
              R"({"kind":"orca","name":"","termination":{"kind":"unknown","normal":false}})");

    Termination const normal{TerminationKind::normal, "", std::nullopt};
    EXPECT_EQ(compact(write_termination(normal)), R"({"kind":"normal","normal":true})");
    EXPECT_EQ(compact(write_termination(Termination{static_cast<TerminationKind>(9), "", std::nullopt})),
              R"({"kind":"unknown","normal":false})");
}

TEST(Program, EveryKeyTravelsThroughText) {
    ProgramInfo program;
    program.kind = ProgramKind::gaussian;
    program.name = "Gaussian";
    program.version = "16 Rev. C.01";
    program.input_file_name = "ts-search.gjf";
    program.termination = {TerminationKind::interrupted, "walltime", model::SourceSpan{model::SourceId(3), {1, 2, 3}, {4, 5, 6}}};
    Normalization normalization;
    normalization.profile = ResultProfile::standard;
    normalization.requested_analyses = {false, true, false, true, false};

    std::string const program_text = compact(write_program(program));
    std::string const normalization_text = compact(write_normalization(normalization));
    DocumentResult result;
    read_program(result, load_text(program_text));
    read_normalization(result, load_text(normalization_text));
    EXPECT_TRUE(result.diagnostics.empty());
    EXPECT_EQ(result.value.program, program);
    EXPECT_EQ(result.value.normalization, normalization);
    EXPECT_EQ(compact(write_program(result.value.program)), program_text);
    EXPECT_EQ(normalization_text,
              R"({"profile":"standard","requested_analyses":{"dipoles":false,"excited_states":false,)"
              R"("gradients":false,"orbitals":true,"vibrations":true}})");
}

}  // namespace
}  // namespace morv::qc::json
