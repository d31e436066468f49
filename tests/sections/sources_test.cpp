#include "sections/sources.hpp"
#include "support/json_text.hpp"

namespace morv::qc::json {
namespace {

using namespace morv::testing;
using model::SourceFile;
using model::SourceId;

TEST(Sources, AnUnusableIdDropsTheFileWhileABadOptionalOnlyLosesItself) {
    expect_reads(read_source_file, {
        {R"({"id": "0x10", "path": 7, "sha256": "", "size_bytes": 18446744073709551615, "embedded_content": null})",
         SourceFile{SourceId(16), "7", "", 18446744073709551615ull, {}}, {}},
        {R"({"id": 1, "path": ["a"], "sha256": {}, "size_bytes": -1, "embedded_content": [], "extra": 1})",
         SourceFile{SourceId(1), "", {}, {}, {}},
         {invalid("path"), invalid("sha256"), invalid("size_bytes"), invalid("embedded_content")}},
        {R"({"id": 4294967296, "path": []})", std::nullopt, {out_of_range("id")}},
        {R"({"id": -1, "size_bytes": "x"})", std::nullopt, {invalid("id")}},
        {"[1]", std::nullopt, {missing("id")}},
    });
}

TEST(Sources, TheListClosesGapsOfDroppedFilesAndAScalarElementEndsTheDecode) {
    auto const read = deserialize(document_with(R"("sources": [{"id": 2, "path": "b"}, {"id": 4294967296}, null, {"id": 1}])"));
    EXPECT_EQ(read.value.sources, (std::vector<SourceFile>{{SourceId(2), "b", {}, {}, {}}, {SourceId(1), "", {}, {}, {}}}));
    EXPECT_EQ(describe(read.diagnostics), (Lines{out_of_range("id"), missing("id")}));
    EXPECT_EQ(describe(deserialize(document_with(R"("sources": [{"id": 1}, 5])")).diagnostics),
              Lines{on_scalar(1, 73, "id")});
}

TEST(Sources, SetEmptyStringsAreWritten) {
    EXPECT_EQ(compact(write_source_file, SourceFile{SourceId(3), "", {}, {}, {}}), R"({"id":3,"path":""})");
    SourceFile const file{SourceId(4294967295u), "run/a.log", "", 18446744073709551615ull, "E=\"-1\"\n"};
    EXPECT_EQ(compact(write_source_file, file),
              R"({"embedded_content":"E=\"-1\"\n","id":4294967295,"path":"run/a.log","sha256":"",)"
              R"("size_bytes":18446744073709551615})");
}

}  // namespace
}  // namespace morv::qc::json
