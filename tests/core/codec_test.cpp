#include "support/diagnostics.hpp"

#include <morv/qc/json/codec.hpp>

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace morv::qc::json {
namespace {

using model::ParseStatus;
using model::Severity;
using morv::testing::describe;
using Lines = std::vector<std::string>;

constexpr char const* default_document_text =
    R"({"analyses":[],"diagnostics":[],"frames":[],"jobs":[],"metadata":{},)"
    R"("normalization":{"profile":"unknown","requested_analyses":{"dipoles":true,"excited_states":true,)"
    R"("gradients":true,"orbitals":true,"vibrations":true}},"parse_status":"complete",)"
    R"("program":{"kind":"unknown","name":"","termination":{"kind":"unknown","normal":false}},)"
    R"("schema":"morv.qc.document.v2","sources":[],"steps":[],"systems":[]})";

std::string const missing_program = "error qc.json.missing_program: QC document does not contain a program object.";

TEST(Deserialize, RootSchemaAndStatusDecideTheOutcome) {
    std::string const invalid_root = "error qc.json.invalid_root: The QC JSON root must be an object.";
    struct Case {
        std::string text;
        ParseStatus status;
        Lines diagnostics;
    };
    Case const cases[] = {
        {"", ParseStatus::failed, {invalid_root}},
        {"42", ParseStatus::failed, {invalid_root}},
        {"[]", ParseStatus::failed, {invalid_root}},
        {"{",
         ParseStatus::failed,
         {"error qc.json.parse_failed: Failed to parse QC JSON: yaml-cpp: error at line 1, column 1: end of map flow "
          "not found"}},
        {"{}",
         ParseStatus::failed,
         {"error qc.json.missing_field: Missing required field: schema",
          "error qc.json.unsupported_schema: Unsupported QC document schema: <missing>"}},
        {R"({"schema": ["morv.qc.document.v2"]})",
         ParseStatus::failed,
         {"error qc.json.invalid_field: Invalid value for field: schema",
          "error qc.json.unsupported_schema: Unsupported QC document schema: <missing>"}},
        {R"({"schema": ""})",
         ParseStatus::failed,
         {"error qc.json.unsupported_schema: Unsupported QC document schema: <missing>"}},
        {R"({"schema": "morv.qc.document.v1", "program": 5, "diagnostics": [5]})",
         ParseStatus::failed,
         {"error qc.json.unsupported_schema: Unsupported QC document schema: morv.qc.document.v1"}},
        // No error: the status is the one that the text gives.
        {R"({"schema": "morv.qc.document.v2", "program": {}})", ParseStatus::complete, {}},
        {R"({"schema": "morv.qc.document.v2", "program": {}, "parse_status": "partial"})", ParseStatus::partial, {}},
        {R"({"schema": "morv.qc.document.v2", "program": {}, "parse_status": "nonsense"})", ParseStatus::failed, {}},
        {R"({"schema": "morv.qc.document.v2", "program": {}, "diagnostics": [{"severity": "warning"}]})",
         ParseStatus::complete,
         {"warning : "}},
        // An error with all four main lists empty fails the document, stored
        // errors and missing programs alike.
        {R"({"schema": "morv.qc.document.v2"})", ParseStatus::failed, {missing_program}},
        {R"({"schema": "morv.qc.document.v2", "program": [], "parse_status": "partial"})",
         ParseStatus::failed,
         {missing_program}},
        {R"({"schema": "morv.qc.document.v2", "program": {}, "diagnostics": [{"severity": "error"}]})",
         ParseStatus::failed,
         {"error : "}},
        {R"({"schema": "morv.qc.document.v2", "program": {}, "parse_status": ["complete"]})",
         ParseStatus::failed,
         {"error qc.json.invalid_field: Invalid value for field: parse_status"}},
        // A scalar where a record is looked into ends the decode and drops
        // what was read before.
        {R"({"schema": "morv.qc.document.v2", "program": {"name": []}, "diagnostics": [5]})",
         ParseStatus::failed,
         {"error qc.json.parse_failed: Failed to parse QC JSON: yaml-cpp: error at line 1, column 76: operator[] "
          "call on a scalar (key: \"severity\")"}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.text);
        auto const result = deserialize(c.text);
        EXPECT_EQ(result.status, c.status);
        EXPECT_EQ(describe(result.diagnostics), c.diagnostics);
    }
}

TEST(Deserialize, FailedDecodesReturnTheDefaultDocument) {
    for (char const* text : {"{", "[]", R"({"schema": "x", "program": {"name": "kept?"}})",
                             R"({"schema": "morv.qc.document.v2", "program": {"name": "n"}, "diagnostics": [1]})"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(deserialize(text).value, Document{});
    }
}

TEST(Deserialize, ValidatorFindingsJoinTheListAndComeBackOnEveryRead) {
    std::string const text =
        R"({"schema": "morv.qc.document.v2",
            "program": {"kind": "orca", "termination": {"kind": "normal", "source": {"source_id": 9}}}})";
    std::string const finding = "warning qc.model.unknown_source: Program termination names source 9, which the "
                                "document does not contain.";
    std::string const bad_position = "error qc.json.invalid_source_position: Expected a source-position object.";
    auto const first = deserialize(text);
    EXPECT_EQ(describe(first.diagnostics), (Lines{bad_position, bad_position, finding}));

    auto const second = deserialize(serialize(first));
    EXPECT_EQ(describe(second.diagnostics), (Lines{bad_position, bad_position, finding, finding}));
    EXPECT_EQ(second.status, ParseStatus::failed);
}

TEST(Serialize, DefaultDocumentPrintsExactly) {
    EXPECT_EQ(serialize(Document{}), default_document_text);
    SerializeOptions without_diagnostics;
    without_diagnostics.include_diagnostics = false;
    EXPECT_EQ(serialize(Document{}, without_diagnostics), default_document_text);
}

TEST(Serialize, PrettyTextEndsWithOneLineFeedAndCompactTextWithTheBrace) {
    SerializeOptions pretty;
    pretty.pretty = true;
    pretty.indent = 4;
    std::string const text = serialize(Document{}, pretty);
    EXPECT_EQ(text.substr(0, 22), "{\n    \"analyses\": [],\n");
    EXPECT_EQ(text.substr(text.size() - 3), "\n}\n");
    EXPECT_EQ(serialize(Document{}).back(), '}');
}

TEST(Serialize, ResultKeepsItsStatusAndWritesDiagnosticsOnlyWhenAsked) {
    model::ParseResult<Document> result;
    result.status = ParseStatus::partial;
    result.diagnostics.push_back({Severity::error, "qc.json.missing_field", "Missing required field: id", {}});

    std::string const with = serialize(result);
    EXPECT_NE(with.find(R"("diagnostics":[{"code":"qc.json.missing_field","message":"Missing required field: id",)"
                        R"("severity":"error"}])"),
              std::string::npos);
    EXPECT_NE(with.find(R"("parse_status":"partial")"), std::string::npos);

    SerializeOptions options;
    options.include_diagnostics = false;
    std::string const without = serialize(result, options);
    EXPECT_NE(without.find(R"("diagnostics":[],)"), std::string::npos);
    EXPECT_NE(without.find(R"("parse_status":"partial")"), std::string::npos);

    result.status = ParseStatus::failed;
    EXPECT_NE(serialize(result).find(R"("parse_status":"failed")"), std::string::npos);
}

TEST(Serialize, ExtensionsFallInAmongTheFixedKeysButNeverReplaceThem) {
    Document document;
    document.extensions["schema"] = model::ExtensionValue{std::string("hijacked")};
    document.extensions["metadata"] = model::ExtensionValue{1ull};
    document.extensions["b_extra"] = model::ExtensionValue{nullptr};
    EXPECT_EQ(serialize(document),
              R"({"analyses":[],"b_extra":null,)" + std::string(default_document_text).substr(15));
}

TEST(Serialize, DocumentReadsBackToTheSameRecordAndText) {
    std::string const text =
        R"({"schema": "morv.qc.document.v2", "parse_status": "partial",
            "program": {"kind": "gamess", "name": "GAMESS", "version": "2023 R1"},
            "normalization": {"profile": "full", "requested_analyses": {"orbitals": false}},
            "diagnostics": [{"severity": "error", "code": "qc.json.missing_field", "message": "Missing required field: id"}],
            "zz_tool": {"name": "converter", "version": [1, 2]}})";
    auto const first = deserialize(text);
    ASSERT_EQ(first.status, ParseStatus::failed);
    std::string const written = serialize(first);
    auto const second = deserialize(written);
    EXPECT_EQ(second.value, first.value);
    EXPECT_EQ(second.diagnostics, first.diagnostics);
    EXPECT_EQ(serialize(second), written);
}

TEST(Examples, ShippedDocumentsReadCompleteAndWriteBackUnchanged) {
    for (char const* name : {"orca_water_opt_freq.json"}) {
        SCOPED_TRACE(name);
        std::ifstream file(std::string(MORV_EXAMPLES_DIR) + "/" + name);
        std::stringstream text;
        text << file.rdbuf();
        auto const result = deserialize(text.str());
        EXPECT_EQ(result.status, ParseStatus::complete);
        for (auto const& diagnostic : result.diagnostics) {
            EXPECT_EQ(diagnostic.severity, Severity::note) << morv::testing::describe(diagnostic);
        }
        EXPECT_FALSE(result.value.steps.empty());
        std::string const written = serialize(result.value);
        EXPECT_EQ(serialize(deserialize(written).value), written);
    }
}

}  // namespace
}  // namespace morv::qc::json
