#include "support/json_text.hpp"

#include <fstream>

namespace morv::qc::json {
namespace {

using namespace morv::testing;
using model::ParseStatus;
using model::Severity;

std::string const default_document_text =
    R"({"analyses":[],"diagnostics":[],"frames":[],"jobs":[],"metadata":{},)"
    R"("normalization":{"profile":"unknown","requested_analyses":{"dipoles":true,"excited_states":true,)"
    R"("gradients":true,"orbitals":true,"vibrations":true}},"parse_status":"complete",)"
    R"("program":{"kind":"unknown","name":"","termination":{"kind":"unknown","normal":false}},)"
    R"("schema":"morv.qc.document.v2","sources":[],"steps":[],"systems":[]})";

// `text` with the first `from` replaced by `to`.
std::string with(std::string text, std::string const& from, std::string const& to) {
    return text.replace(text.find(from), from.size(), to);
}

std::string unsupported(std::string const& schema) {
    return "error qc.json.unsupported_schema: Unsupported QC document schema: " + schema;
}

TEST(Deserialize, RootSchemaAndStatusDecideTheOutcome) {
    std::string const invalid_root = "error qc.json.invalid_root: The QC JSON root must be an object.";
    std::string const missing_program = "error qc.json.missing_program: QC document does not contain a program object.";
    std::string const v2 = R"({"schema": "morv.qc.document.v2", )";
    struct Case {
        std::string text;
        ParseStatus status;
        Lines diagnostics;
    };
    Case const cases[] = {
        {"", ParseStatus::failed, {invalid_root}},
        {"42", ParseStatus::failed, {invalid_root}},
        {"[]", ParseStatus::failed, {invalid_root}},
        {"{", ParseStatus::failed, {parse_failed("yaml-cpp: error at line 1, column 1: end of map flow not found")}},
        {"{}", ParseStatus::failed, {missing("schema"), unsupported("<missing>")}},
        {R"({"schema": ["morv.qc.document.v2"]})", ParseStatus::failed, {invalid("schema"), unsupported("<missing>")}},
        {R"({"schema": ""})", ParseStatus::failed, {unsupported("<missing>")}},
        {R"({"schema": "morv.qc.document.v1", "program": 5, "diagnostics": [5]})", ParseStatus::failed,
         {unsupported("morv.qc.document.v1")}},
        // No error: the status is the one that the text gives.
        {v2 + R"("program": {}})", ParseStatus::complete, {}},
        {v2 + R"("program": {}, "parse_status": "partial"})", ParseStatus::partial, {}},
        {v2 + R"("program": {}, "parse_status": "nonsense"})", ParseStatus::failed, {}},
        {v2 + R"("program": {}, "diagnostics": [{"severity": "warning"}]})", ParseStatus::complete, {"warning : "}},
        // An error with all four main lists empty fails the document, stored
        // errors and missing programs alike.
        {v2 + R"("parse_status": "complete"})", ParseStatus::failed, {missing_program}},
        {v2 + R"("program": [], "parse_status": "partial"})", ParseStatus::failed, {missing_program}},
        {v2 + R"("program": {}, "diagnostics": [{"severity": "error"}]})", ParseStatus::failed, {"error : "}},
        {v2 + R"("program": {}, "parse_status": ["complete"]})", ParseStatus::failed, {invalid("parse_status")}},
        // A scalar where a record is looked into ends the decode and drops
        // what was read before.
        {v2 + R"("program": {"name": []}, "diagnostics": [5]})", ParseStatus::failed, {on_scalar(1, 76, "severity")}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.text);
        auto const result = deserialize(c.text);
        EXPECT_EQ(result.status, c.status);
        EXPECT_EQ(describe(result.diagnostics), c.diagnostics);
    }
}

TEST(Deserialize, FailedDecodesReturnTheDefaultDocument) {
    for (char const* text : {"{", R"({"schema": "x", "program": {"name": "kept?"}})",
                             R"({"schema": "morv.qc.document.v2", "program": {"name": "n"}, "diagnostics": [1]})"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(deserialize(text).value, Document{});
    }
}

TEST(Deserialize, ValidatorFindingsJoinTheListAndComeBackOnEveryRead) {
    auto const first = deserialize(R"({"schema": "morv.qc.document.v2",
        "program": {"kind": "orca", "termination": {"kind": "normal", "source": {"source_id": 9}}}})");
    std::string const finding = "warning qc.model.unknown_source: Program termination names source 9, which the "
                                "document does not contain.";
    EXPECT_EQ(describe(first.diagnostics), (Lines{bad_position, bad_position, finding}));
    auto const second = deserialize(serialize(first));
    EXPECT_EQ(describe(second.diagnostics), (Lines{bad_position, bad_position, finding, finding}));
    EXPECT_EQ(second.status, ParseStatus::failed);
}

TEST(Serialize, WritesTheStatusOfAResultAndItsDiagnosticsOnlyWhenAsked) {
    EXPECT_EQ(serialize(Document{}), default_document_text);
    model::ParseResult<Document> result;
    result.diagnostics = {{Severity::error, "c", "m", {}}};
    EXPECT_EQ(serialize(result), with(with(default_document_text, "complete", "failed"), R"("diagnostics":[])",
                                      R"("diagnostics":[{"code":"c","message":"m","severity":"error"}])"));
    result.status = ParseStatus::partial;
    SerializeOptions options;
    options.include_diagnostics = false;
    EXPECT_EQ(serialize(result, options), with(default_document_text, "complete", "partial"));
    options.pretty = true;
    options.indent = 4;
    std::string const text = serialize(Document{}, options);
    EXPECT_EQ(text.substr(0, 22), "{\n    \"analyses\": [],\n");
    EXPECT_EQ(text.substr(text.size() - 3), "\n}\n");
}

TEST(Serialize, ExtensionsFallInAmongTheFixedKeysButNeverReplaceThem) {
    Document document;
    document.extensions = {{"schema", {std::string("hijacked")}}, {"metadata", {1ull}}, {"b_extra", {nullptr}}};
    EXPECT_EQ(serialize(document), with(default_document_text, "[],", R"([],"b_extra":null,)"));
}

TEST(Serialize, DocumentReadsBackToTheSameRecordAndText) {
    auto const first = deserialize(R"({"schema": "morv.qc.document.v2", "parse_status": "partial",
        "program": {"kind": "gamess", "name": "GAMESS", "version": "2023 R1"},
        "normalization": {"profile": "full", "requested_analyses": {"orbitals": false}},
        "diagnostics": [{"severity": "error", "code": "qc.json.missing_field", "message": "Missing required field: id"}],
        "zz_tool": {"name": "converter", "version": [1, 2]}})");
    ASSERT_EQ(first.status, ParseStatus::failed);
    std::string const written = serialize(first);
    auto const second = deserialize(written);
    EXPECT_EQ(second.value, first.value);
    EXPECT_EQ(second.diagnostics, first.diagnostics);
    EXPECT_EQ(serialize(second), written);
}

TEST(Examples, ShippedDocumentsReadCompleteAndWriteBackUnchanged) {
    std::ifstream file(std::string(MORV_EXAMPLES_DIR) + "/orca_water_opt_freq.json");
    std::stringstream text;
    text << file.rdbuf();
    auto const result = deserialize(text.str());
    EXPECT_EQ(result.status, ParseStatus::complete);
    for (auto const& diagnostic : result.diagnostics) {
        EXPECT_EQ(diagnostic.severity, Severity::note) << describe(diagnostic);
    }
    EXPECT_FALSE(result.value.steps.empty());
    std::string const written = serialize(result.value);
    EXPECT_EQ(serialize(deserialize(written).value), written);
}

}  // namespace
}  // namespace morv::qc::json
