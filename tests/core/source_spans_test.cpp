#include "core/json_writer.hpp"
#include "core/source_spans.hpp"
#include "support/diagnostics.hpp"

#include <gtest/gtest.h>
#include <yaml-cpp/exceptions.h>

#include <sstream>
#include <string>
#include <vector>

namespace morv::qc::json {
namespace {

using model::Severity;
using model::SourcePosition;
using model::SourceSpan;
using morv::testing::describe;
using Lines = std::vector<std::string>;

std::string compact(JsonValue const& value) {
    std::ostringstream out;
    write_json(out, value, SerializeOptions{});
    return out.str();
}

SourceSpan span(std::uint32_t source, SourcePosition begin = {}, SourcePosition end = {}) {
    return SourceSpan{model::SourceId(source), begin, end};
}

TEST(SourceSpans, ASpanSurvivesDamagedPositionsButNotADamagedSourceId) {
    std::string const bad_position = "error qc.json.invalid_source_position: Expected a source-position object.";
    struct Case {
        char const* json;
        std::optional<SourceSpan> span;
        Lines diagnostics;
    };
    Case const cases[] = {
        {R"({"source_id": 2, "begin": {"offset": 10, "line": 2, "column": 3},
             "end": {"offset": 15, "line": 2, "column": 8}})",
         span(2, {10, 2, 3}, {15, 2, 8}),
         {}},
        {R"({"source_id": 1})", span(1), {bad_position, bad_position}},
        {R"({"source_id": 1, "begin": {}, "end": {}})", span(1), {}},
        {R"({"source_id": 1, "begin": {"line": "x", "column": 4}, "end": []})",
         span(1, {0, 0, 4}),
         {"error qc.json.invalid_field: Invalid value for field: line", bad_position}},
        {R"({"source_id": 4294967296, "begin": 5})",
         std::nullopt,
         {"error qc.json.id_out_of_range: Entity ID exceeds uint32 range: source_id"}},
        {R"({"source_id": null, "begin": 5})",
         std::nullopt,
         {"error qc.json.missing_field: Missing required field: source_id"}},
        {R"({"source_id": "one"})",
         std::nullopt,
         {"error qc.json.invalid_field: Invalid value for field: source_id"}},
        {"[]", std::nullopt, {"error qc.json.invalid_source_span: Expected a source-span object."}},
        {"null", std::nullopt, {"error qc.json.invalid_source_span: Expected a source-span object."}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.json);
        DocumentResult result;
        EXPECT_EQ(read_source_span(result, load_text(c.json)), c.span);
        EXPECT_EQ(describe(result.diagnostics), c.diagnostics);
    }
}

TEST(SourceSpans, SourceKeyIsReadWheneverItIsDefinedNullIncluded) {
    DocumentResult result;
    EXPECT_EQ(read_source_key(result, load_text(R"({"other": 1})")), std::nullopt);
    EXPECT_TRUE(result.diagnostics.empty());
    EXPECT_EQ(read_source_key(result, load_text(R"({"source": null})")), std::nullopt);
    EXPECT_EQ(describe(result.diagnostics),
              Lines{"error qc.json.invalid_source_span: Expected a source-span object."});
}

TEST(StoredDiagnostics, ReadBehindTheDecodesOwnWithUnknownSeveritiesAsNotes) {
    DocumentResult result;
    add_diagnostic(result, "qc.json.earlier", "raised first");
    read_diagnostics(result, load_text(R"([
        {"severity": "error", "code": "x.one", "message": "first",
         "source": {"source_id": 3, "begin": {"line": 1}, "end": {"line": 2}}},
        {"severity": "warning", "message": ""},
        {"severity": "fatal", "code": "x.two"},
        {"severity": "ERROR", "code": ["bad"], "message": 7},
        {"source": null},
        null,
        []
    ])"));
    EXPECT_EQ(describe(result.diagnostics), (Lines{
                                                "error qc.json.earlier: raised first",
                                                "error x.one: first",
                                                "warning : ",
                                                "note x.two: ",
                                                "error qc.json.invalid_field: Invalid value for field: code",
                                                "note : 7",
                                                "error qc.json.invalid_source_span: Expected a source-span object.",
                                                "note : ",
                                                "note : ",
                                                "note : ",
                                            }));
    EXPECT_EQ(result.diagnostics[1].source, span(3, {0, 1, 0}, {0, 2, 0}));
    EXPECT_EQ(result.diagnostics[2].source, std::nullopt);
}

TEST(StoredDiagnostics, AnythingButAnArrayIsIgnoredAndAScalarElementEndsTheDecode) {
    DocumentResult result;
    read_diagnostics(result, load_text(R"({"severity": "error"})"));
    read_diagnostics(result, load_text("{}")["absent"]);
    EXPECT_TRUE(result.diagnostics.empty());
    EXPECT_THROW(read_diagnostics(result, load_text("[5]")), YAML::BadSubscript);
}

TEST(StoredDiagnostics, WriteSeverityAlwaysCodeOnlyWhenSetAndMessageAlways) {
    std::vector<model::Diagnostic> const diagnostics = {
        {Severity::error, "", "", std::nullopt},
        {static_cast<Severity>(7), "a.b", "text", span(1, {1, 2, 3}, {4, 5, 6})},
        {Severity::warning, "w", "\"quoted\"", std::nullopt},
    };
    EXPECT_EQ(compact(write_diagnostics(diagnostics)),
              R"([{"message":"","severity":"error"},)"
              R"({"code":"a.b","message":"text","severity":"note","source":{"begin":{"column":3,"line":2,"offset":1},)"
              R"("end":{"column":6,"line":5,"offset":4},"source_id":1}},)"
              R"({"code":"w","message":"\"quoted\"","severity":"warning"}])");
}

TEST(StoredDiagnostics, RoundTripKeepsEveryField) {
    std::vector<model::Diagnostic> const diagnostics = {
        {Severity::note, "n", "a note", span(4294967295u, {1, 2, 3}, {18446744073709551615ull, 5, 6})},
        {Severity::warning, "w", "a warning", std::nullopt},
        {Severity::error, "", "an error", span(0)},
    };
    DocumentResult result;
    read_diagnostics(result, load_text(compact(write_diagnostics(diagnostics))));
    EXPECT_EQ(result.diagnostics, diagnostics);
}

}  // namespace
}  // namespace morv::qc::json
