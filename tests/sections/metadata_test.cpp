#include "sections/metadata.hpp"
#include "support/json_text.hpp"

#include <map>

namespace morv::qc::json {
namespace {

using namespace morv::testing;
using Strings = std::vector<std::string>;
using Doubles = std::vector<double>;
using Table = std::map<std::string, MetadataValue>;

std::string unsupported(std::string const& key) {
    return "warning qc.json.unsupported_metadata: Ignoring non-scalar metadata field: " + key;
}

Table metadata_of(DocumentResult& result, Node const& node) {
    read_metadata(result, node);
    return result.value.metadata;
}

TEST(Metadata, ValuesAreTypedByTheirText) {
    auto const read = [](DocumentResult& result, Node const& node) { return read_metadata_value(result, "a", node); };
    expect_reads(read, {
        // Quoting decides first, then the exact words true and false.
        {R"("true")", std::string("true"), {}}, {R"("12")", std::string("12"), {}}, {R"("")", std::string(""), {}},
        {"true", true, {}}, {"false", false, {}}, {"True", std::string("True"), {}}, {"yes", std::string("yes"), {}},
        // Whole base-10 integers, then whatever strtod takes whole.
        {"-12", -12ll, {}}, {"017", 17ll, {}}, {"9223372036854775807", std::numeric_limits<long long>::max(), {}},
        {"9223372036854775808", 9223372036854775808.0, {}}, {"-9223372036854775809", -9223372036854775809.0, {}},
        {"12.0", 12.0, {}}, {"0x10", 16.0, {}}, {"-inf", -inf, {}},
        {"1e999", std::string("1e999"), {}}, {".inf", std::string(".inf"), {}}, {"12abc", std::string("12abc"), {}},
        // Arrays are doubles when every element converts, else texts.
        {"[]", Doubles{}, {}}, {R"([1, "2.5", .inf])", Doubles{1, 2.5, inf}, {}},
        {R"([1, "x"])", Strings{"1", "x"}, {}}, {R"(["x", 1])", Strings{"x", "1"}, {}}, {"[1, null]", Strings{"1", ""}, {}},
        {"[1, [2]]", Strings{"1", ""}, {}}, {R"([1, {"b": 2}])", Strings{"1", ""}, {}},
        {"[1, inf, 1e999, true]", Strings{"1", "inf", "1e999", "true"}, {}},
        // No entry.
        {"~", std::nullopt, {}},
    });
}

TEST(Metadata, FirstValueOfADuplicateKeyStaysAndAnythingButAnObjectIsDroppedInSilence) {
    expect_reads(metadata_of, {
        {R"({"a": 1, "a": 2, "b": null, "b": "kept", "c": {}, "c": true, "d": 1.5, "d": {"x": 1}})",
         Table{{"a", 1ll}, {"b", std::string("kept")}, {"c", true}, {"d", 1.5}}, {unsupported("c"), unsupported("d")}},
    });
    for (char const* value : {"7", R"("text")", R"([1, "a"])", "null"}) {
        auto const result = deserialize(document_with(R"("metadata": )" + std::string(value)));
        EXPECT_EQ(result.value, Document{}) << value;
        EXPECT_EQ(describe(result.diagnostics), Lines{}) << value;
    }
}

TEST(Metadata, EachAlternativeIsWrittenAndReadBackAsItsTextSays) {
    Table const written{
        {"bool", false},        {"integer", -3ll},
        {"whole", 12.0},        {"tenth", 0.1},
        {"infinite", inf},      {"overflow", std::string("1e999")},
        {"texts", Strings{"1", "2"}}, {"doubles", Doubles{1, 2.5, inf}},
        {"empty", Strings{}},
    };
    std::string const text = compact(write_metadata, written);
    EXPECT_EQ(text, R"({"bool":false,"doubles":[1,2.5,null],"empty":[],"infinite":null,"integer":-3,)"
                    R"("overflow":"1e999","tenth":0.10000000000000001,"texts":["1","2"],"whole":12})");
    expect_reads(metadata_of, {{text,
                                Table{{"bool", false}, {"integer", -3ll}, {"whole", 12ll}, {"tenth", 0.1},
                                      {"overflow", std::string("1e999")}, {"texts", Doubles{1, 2}},
                                      {"doubles", Strings{"1", "2.5", ""}}, {"empty", Doubles{}}},
                                {}}});
}

}  // namespace
}  // namespace morv::qc::json
