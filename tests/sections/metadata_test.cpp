#include "core/json_writer.hpp"
#include "sections/metadata.hpp"
#include "support/diagnostics.hpp"

#include <morv/qc/json/codec.hpp>

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace morv::qc::json {
namespace {

using morv::testing::describe;
using Lines = std::vector<std::string>;
using Strings = std::vector<std::string>;
using Doubles = std::vector<double>;
using Table = std::map<std::string, MetadataValue>;

constexpr double inf = std::numeric_limits<double>::infinity();

TEST(Metadata, ValuesAreTypedByTheirTextAndOnlyMapsAreReported) {
    std::string const unsupported = "warning qc.json.unsupported_metadata: Ignoring non-scalar metadata field: a";
    struct Case {
        char const* json;
        std::optional<MetadataValue> value;
        Lines diagnostics;
    };
    Case const cases[] = {
        // Quoting decides first, then the exact words true and false.
        {R"("true")", std::string("true"), {}},
        {R"("12")", std::string("12"), {}},
        {R"("")", std::string(""), {}},
        {"true", true, {}},
        {"false", false, {}},
        {"True", std::string("True"), {}},
        {"yes", std::string("yes"), {}},
        // Whole base-10 integers, then whatever strtod takes whole.
        {"12", 12ll, {}},
        {"-12", -12ll, {}},
        {"017", 17ll, {}},
        {"9223372036854775807", std::numeric_limits<long long>::max(), {}},
        {"9223372036854775808", 9223372036854775808.0, {}},
        {"-9223372036854775809", -9223372036854775809.0, {}},
        {"12.0", 12.0, {}},
        {"1.50", 1.5, {}},
        {"0x10", 16.0, {}},
        {"-inf", -inf, {}},
        {"1e999", std::string("1e999"), {}},
        {".inf", std::string(".inf"), {}},
        {"12abc", std::string("12abc"), {}},
        // Arrays are doubles when every element converts, else texts.
        {"[]", Doubles{}, {}},
        {"[1, 2.5, .inf]", Doubles{1, 2.5, inf}, {}},
        {R"(["1", "2"])", Doubles{1, 2}, {}},
        {R"([1, "x"])", Strings{"1", "x"}, {}},
        {"[1, null]", Strings{"1", ""}, {}},
        {"[1, [2]]", Strings{"1", ""}, {}},
        {R"([1, {"b": 2}])", Strings{"1", ""}, {}},
        {"[1, inf, 1e999, true]", Strings{"1", "inf", "1e999", "true"}, {}},
        // No entry.
        {"null", std::nullopt, {}},
        {"~", std::nullopt, {}},
        {R"({"b": 1})", std::nullopt, {unsupported}},
        {"{}", std::nullopt, {unsupported}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.json);
        DocumentResult result;
        EXPECT_EQ(read_metadata_value(result, "a", load_text(c.json)), c.value);
        EXPECT_EQ(describe(result.diagnostics), c.diagnostics);
    }
}

TEST(Metadata, FirstValueOfADuplicateKeyStaysAndLaterOnesStillReport) {
    auto const result = deserialize(R"({"schema": "morv.qc.document.v2", "program": {}, "metadata": {
        "a": 1, "a": 2, "b": null, "b": "kept", "c": {}, "c": true, "d": 1.5, "d": {"x": 1}}})");
    EXPECT_EQ(result.value.metadata, (Table{{"a", 1ll}, {"b", std::string("kept")}, {"c", true}, {"d", 1.5}}));
    EXPECT_EQ(describe(result.diagnostics),
              (Lines{"warning qc.json.unsupported_metadata: Ignoring non-scalar metadata field: c",
                     "warning qc.json.unsupported_metadata: Ignoring non-scalar metadata field: d"}));
    EXPECT_EQ(result.status, model::ParseStatus::complete);
}

TEST(Metadata, RootValueThatIsNotAnObjectIsDroppedInSilence) {
    for (char const* value : {"7", R"("text")", R"([1, "a"])", "null"}) {
        SCOPED_TRACE(value);
        auto const result = deserialize(R"({"schema": "morv.qc.document.v2", "program": {}, "metadata": )" +
                                         std::string(value) + "}");
        EXPECT_TRUE(result.value.metadata.empty());
        EXPECT_TRUE(result.value.extensions.empty());
        EXPECT_EQ(describe(result.diagnostics), Lines{});
    }
}

TEST(Metadata, EachAlternativeIsWrittenAndReadBackAsItsTextSays) {
    Table const written{
        {"bool", false},
        {"integer", -3ll},
        {"whole", 12.0},
        {"tenth", 0.1},
        {"infinite", inf},
        {"overflow", std::string("1e999")},
        {"texts", Strings{"1", "2"}},
        {"doubles", Doubles{1, 2.5, inf}},
        {"empty", Strings{}},
    };
    std::ostringstream out;
    write_json(out, write_metadata(written), SerializeOptions{});
    EXPECT_EQ(out.str(),
              R"({"bool":false,"doubles":[1,2.5,null],"empty":[],"infinite":null,"integer":-3,)"
              R"("overflow":"1e999","tenth":0.10000000000000001,"texts":["1","2"],"whole":12})");

    DocumentResult result;
    read_metadata(result, load_text(out.str()));
    EXPECT_EQ(result.value.metadata, (Table{
                                         {"bool", false},
                                         {"integer", -3ll},
                                         {"whole", 12ll},
                                         {"tenth", 0.1},
                                         {"overflow", std::string("1e999")},
                                         {"texts", Doubles{1, 2}},
                                         {"doubles", Strings{"1", "2.5", ""}},
                                         {"empty", Doubles{}},
                                     }));
    EXPECT_EQ(describe(result.diagnostics), Lines{});
}

}  // namespace
}  // namespace morv::qc::json
