#include "core/json_writer.hpp"
#include "sections/sources.hpp"
#include "support/diagnostics.hpp"

#include <morv/qc/json/codec.hpp>

#include <gtest/gtest.h>

#include <sstream>

namespace morv::qc::json {
namespace {

using model::SourceFile;
using model::SourceId;
using morv::testing::describe;
using Lines = std::vector<std::string>;

std::string compact(JsonValue const& value) {
    std::ostringstream out;
    write_json(out, value, SerializeOptions{});
    return out.str();
}

std::string invalid(std::string const& key) { return "error qc.json.invalid_field: Invalid value for field: " + key; }
std::string const missing_id = "error qc.json.missing_field: Missing required field: id";
std::string const id_too_large = "error qc.json.id_out_of_range: Entity ID exceeds uint32 range: id";

TEST(Sources, AnUnusableIdDropsTheFileWhileABadOptionalOnlyLosesItself) {
    struct Case { char const* json; std::optional<SourceFile> file; Lines diagnostics; };
    Case const cases[] = {
        {R"({"id": 3})", SourceFile{SourceId(3), "", {}, {}, {}}, {}},
        {R"({"id": "0x10", "path": 7, "sha256": "", "size_bytes": 18446744073709551615, "embedded_content": null})",
         SourceFile{SourceId(16), "7", "", 18446744073709551615ull, {}}, {}},
        {R"({"id": 1, "path": ["a"], "sha256": {}, "size_bytes": -1, "embedded_content": [], "extra": 1})",
         SourceFile{SourceId(1), "", {}, {}, {}},
         {invalid("path"), invalid("sha256"), invalid("size_bytes"), invalid("embedded_content")}},
        {R"({"id": 4294967296, "path": []})", std::nullopt, {id_too_large}},
        {R"({"id": -1, "size_bytes": "x"})", std::nullopt, {invalid("id")}},
        {R"({"id": null, "path": "a.log"})", std::nullopt, {missing_id}},
        {"[1]", std::nullopt, {missing_id}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.json);
        DocumentResult result;
        EXPECT_EQ(read_source_file(result, load_text(c.json)), c.file);
        EXPECT_EQ(describe(result.diagnostics), c.diagnostics);
    }
}

TEST(Sources, TheListClosesGapsOfDroppedFilesAndAScalarElementEndsTheDecode) {
    std::string const head = R"({"schema": "morv.qc.document.v2", "program": {}, "sources": )";
    auto const read = deserialize(head + R"([{"id": 2, "path": "b"}, {"id": 4294967296}, null, {"id": 1}]})");
    EXPECT_EQ(read.value.sources, (std::vector<SourceFile>{{SourceId(2), "b", {}, {}, {}}, {SourceId(1), "", {}, {}, {}}}));
    EXPECT_EQ(describe(read.diagnostics), (Lines{id_too_large, missing_id}));
    EXPECT_EQ(describe(deserialize(head + R"([{"id": 1}, 5]})").diagnostics),
              Lines{"error qc.json.parse_failed: Failed to parse QC JSON: yaml-cpp: error at line 1, column 73: "
                    "operator[] call on a scalar (key: \"id\")"});
}

TEST(Sources, EveryFieldTravelsThroughTextAndSetEmptyStringsAreKept) {
    EXPECT_EQ(compact(write_source_file(SourceFile{SourceId(3), "", {}, {}, {}})), R"({"id":3,"path":""})");
    SourceFile const file{SourceId(4294967295u), "run/a.log", "", 18446744073709551615ull, "E=\"-1\"\n"};
    std::string const text = compact(write_source_file(file));
    EXPECT_EQ(text, R"({"embedded_content":"E=\"-1\"\n","id":4294967295,"path":"run/a.log","sha256":"",)"
                    R"("size_bytes":18446744073709551615})");
    DocumentResult result;
    auto const read = read_source_file(result, load_text(text));
    EXPECT_TRUE(result.diagnostics.empty());
    ASSERT_EQ(read, file);
    EXPECT_EQ(compact(write_source_file(*read)), text);
}

}  // namespace
}  // namespace morv::qc::json
