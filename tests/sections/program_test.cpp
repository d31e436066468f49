#include "sections/program.hpp"
#include "support/json_text.hpp"

namespace morv::qc::json {
namespace {

using namespace morv::testing;

ProgramInfo program_of(DocumentResult& result, Node const& node) {
    read_program(result, node);
    return result.value.program;
}
Normalization normalization_of(DocumentResult& result, Node const& node) {
    read_normalization(result, node);
    return result.value.normalization;
}

TEST(Program, ReadsKnownWordsExactlyAndDefaultsEverythingElse) {
    expect_reads(program_of, {
        {R"({"kind": "other", "name": 5})", {ProgramKind::unknown, "5", "", "", {}}, {}},
        {R"({"kind": "ORCA"})", {}, {}},
        {R"({"kind": ["orca"], "name": {}, "termination": null})", {}, {invalid("kind"), invalid("name")}},
        {R"({"kind": "gamess", "termination": {"kind": "error", "normal": true, "reason": "SCF failed"}})",
         {ProgramKind::gamess, "", "", "", {TerminationKind::error, "SCF failed", std::nullopt}}, {}},
        {R"({"termination": {"kind": "Normal", "source": null}})", {}, {bad_span}},
        {R"({"termination": {"kind": "truncated", "reason": [], "source": {"source_id": 2, "begin": {}, "end": {}}}})",
         {ProgramKind::unknown, "", "", "", {TerminationKind::truncated, "", model::SourceSpan{model::SourceId(2), {}, {}}}},
         {invalid("reason")}},
    });
}

TEST(Normalization, SwitchesStayRequestedUnlessTheTextSaysFalse) {
    expect_reads(normalization_of, {
        {R"({"profile": "summary", "requested_analyses": {"orbitals": false}})",
         {ResultProfile::summary, {true, true, true, false, true}}, {}},
        {R"({"profile": "full", "requested_analyses": {"gradients": false, "vibrations": "no", "dipoles": "maybe"}})",
         {ResultProfile::full, {false, false, true, true, true}}, {invalid("dipoles")}},
        {R"({"profile": null, "requested_analyses": 5})", {}, {}},
        {R"({"profile": ["full"]})", {}, {invalid("profile")}},
        {R"({"profile": "Standard"})", {}, {}},
    });
}

TEST(Program, WritesEmptyOptionalStringsOnlyForName) {
    EXPECT_EQ(compact(write_program, ProgramInfo{ProgramKind::orca, "", "", "", {}}),
              R"({"kind":"orca","name":"","termination":{"kind":"unknown","normal":false}})");
    EXPECT_EQ(compact(write_termination, Termination{TerminationKind::normal, "", std::nullopt}),
              R"({"kind":"normal","normal":true})");
    EXPECT_EQ(compact(write_termination, Termination{static_cast<TerminationKind>(9), "", std::nullopt}),
              R"({"kind":"unknown","normal":false})");
}

TEST(Normalization, WritesEverySwitch) {
    EXPECT_EQ(compact(write_normalization, Normalization{ResultProfile::standard, {false, true, false, true, false}}),
              R"({"profile":"standard","requested_analyses":{"dipoles":false,"excited_states":false,)"
              R"("gradients":false,"orbitals":true,"vibrations":true}})");
}

}  // namespace
}  // namespace morv::qc::json
