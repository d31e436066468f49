#include "core/source_spans.hpp"
#include "support/json_text.hpp"

namespace morv::qc::json {
namespace {

using namespace morv::testing;
using model::Severity;
using model::SourcePosition;
using model::SourceSpan;

SourceSpan span(std::uint32_t source, SourcePosition begin = {}, SourcePosition end = {}) {
    return SourceSpan{model::SourceId(source), begin, end};
}

TEST(SourceSpans, ASpanSurvivesDamagedPositionsButNotADamagedSourceId) {
    expect_reads(read_source_span, {
        {R"({"source_id": 2, "begin": {"offset": 10, "line": 2, "column": 3},
             "end": {"offset": 15, "line": 2, "column": 8}})",
         span(2, {10, 2, 3}, {15, 2, 8}), {}},
        {R"({"source_id": 1})", span(1), {bad_position, bad_position}},
        {R"({"source_id": 1, "begin": {"line": "x", "column": 4}, "end": []})", span(1, {0, 0, 4}),
         {invalid("line"), bad_position}},
        {R"({"source_id": 4294967296, "begin": 5})", std::nullopt, {out_of_range("source_id")}},
        {R"({"source_id": null, "begin": 5})", std::nullopt, {missing("source_id")}},
        {R"({"source_id": "one"})", std::nullopt, {invalid("source_id")}},
        {"[]", std::nullopt, {bad_span}},
    });
}

TEST(StoredDiagnostics, ReadBehindTheDecodesOwnWithUnknownSeveritiesAsNotes) {
    DocumentResult result;
    add_error(result, "qc.json.earlier", "raised first");
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
    EXPECT_EQ(describe(result.diagnostics), (Lines{"error qc.json.earlier: raised first", "error x.one: first",
                                                   "warning : ", "note x.two: ", invalid("code"), "note : 7", bad_span,
                                                   "note : ", "note : ", "note : "}));
    EXPECT_EQ(result.diagnostics[1].source, span(3, {0, 1, 0}, {0, 2, 0}));
    EXPECT_EQ(result.diagnostics[2].source, std::nullopt);
}

TEST(StoredDiagnostics, AnythingButAnArrayIsIgnored) {
    DocumentResult result;
    read_diagnostics(result, load_text(R"({"severity": "error"})"));
    read_diagnostics(result, load_text("{}")["absent"]);
    EXPECT_TRUE(result.diagnostics.empty());
}

TEST(StoredDiagnostics, WriteSeverityAlwaysCodeOnlyWhenSetAndMessageAlwaysAndReadBackUnchanged) {
    std::vector<model::Diagnostic> const diagnostics = {
        {Severity::error, "", "", std::nullopt},
        {Severity::note, "a.b", "text", span(4294967295u, {1, 2, 3}, {18446744073709551615ull, 5, 6})},
        {Severity::warning, "w", "\"quoted\"", span(0)},
    };
    std::string const text = compact(write_diagnostics, diagnostics);
    EXPECT_EQ(text, R"([{"message":"","severity":"error"},)"
                    R"({"code":"a.b","message":"text","severity":"note","source":{"begin":{"column":3,"line":2,"offset":1},)"
                    R"("end":{"column":6,"line":5,"offset":18446744073709551615},"source_id":4294967295}},)"
                    R"({"code":"w","message":"\"quoted\"","severity":"warning","source":{"begin":{"column":0,"line":0,)"
                    R"("offset":0},"end":{"column":0,"line":0,"offset":0},"source_id":0}}])");
    DocumentResult result;
    read_diagnostics(result, load_text(text));
    EXPECT_EQ(result.diagnostics, diagnostics);
    EXPECT_EQ(compact(write_diagnostics, {{static_cast<Severity>(7), "", "", std::nullopt}}),
              R"([{"message":"","severity":"note"}])");
}

}  // namespace
}  // namespace morv::qc::json
