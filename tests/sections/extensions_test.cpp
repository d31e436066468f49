#include "sections/extensions.hpp"
#include "support/json_text.hpp"

namespace morv::qc::json {
namespace {

using namespace morv::testing;
using model::ExtensionValue;
using Items = std::vector<ExtensionValue>;
using Members = std::map<std::string, ExtensionValue>;

TEST(Extensions, ScalarsAreTypedByTheirText) {
    std::pair<char const*, ExtensionValue> const cases[] = {
        {"null", {nullptr}}, {"~", {nullptr}}, {R"("null")", {std::string("null")}},
        {"true", {true}}, {R"("false")", {std::string("false")}}, {"True", {std::string("True")}},
        {"+5", {5ull}}, {"017", {17ull}}, {"-5", {-5ll}}, {"18446744073709551615", {18446744073709551615ull}},
        {"18446744073709551616", {18446744073709551616.0}}, {"-9223372036854775809", {-9223372036854775809.0}},
        {"-1.5e3", {-1500.0}}, {"0x10", {16.0}}, {"1e999", {std::string("1e999")}}, {"inf", {std::string("inf")}},
        {"nan", {std::string("nan")}}, {".inf", {std::string(".inf")}}, {R"("12")", {std::string("12")}},
        {"12abc", {std::string("12abc")}},
    };
    for (auto const& [json, value] : cases) {
        EXPECT_EQ(read_extension_value(load_text(json)), value) << json;
    }
}

TEST(Extensions, ContainersNestAndKeepTheFirstOfDuplicateKeys) {
    ExtensionValue const value = read_extension_value(load_text(R"([1, "a", null, {"y": true, "y": false, "z": []}])"));
    EXPECT_EQ(value, (ExtensionValue{Items{{1ull}, {std::string("a")}, {nullptr}, {Members{{"y", {true}}, {"z", {Items{}}}}}}}));
    EXPECT_EQ(compact(write_extension_value, value), R"([1,"a",null,{"y":true,"z":[]}])");
}

TEST(Extensions, UnknownRootKeysSurviveAReadAndAWrite) {
    auto const result = deserialize(document_with(R"("x": [1, {"y": true}], "x": "second", "big": 18446744073709551616,
        "nothing": null, "metadata": 7, "parse_status": "complete")"));
    EXPECT_EQ(result.value.extensions, (Members{{"big", {18446744073709551616.0}}, {"nothing", {nullptr}},
                                                {"x", {Items{{1ull}, {Members{{"y", {true}}}}}}}}));
    std::string const text = serialize(result);
    EXPECT_NE(text.find(R"("big":1.8446744073709552e+19,)"), std::string::npos);
    EXPECT_NE(text.find(R"("nothing":null,)"), std::string::npos);
    EXPECT_NE(text.find(R"("x":[1,{"y":true}])"), std::string::npos);
    EXPECT_EQ(deserialize(text).value.extensions, result.value.extensions);
}

TEST(Extensions, SignedAndWholeDoubleValuesComeBackUnsigned) {
    Document document;
    document.extensions = {{"signed", {5ll}}, {"whole", {2.0}}, {"negative", {-2ll}}, {"infinite", {inf}}};
    EXPECT_EQ(deserialize(serialize(document)).value.extensions,
              (Members{{"signed", {5ull}}, {"whole", {2ull}}, {"negative", {-2ll}}, {"infinite", {nullptr}}}));
}

}  // namespace
}  // namespace morv::qc::json
