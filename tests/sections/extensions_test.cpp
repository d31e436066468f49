#include "core/json_writer.hpp"
#include "sections/extensions.hpp"

#include <morv/qc/json/codec.hpp>

#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <string>

namespace morv::qc::json {
namespace {

using model::ExtensionValue;
using Items = std::vector<ExtensionValue>;
using Members = std::map<std::string, ExtensionValue>;

std::string compact(JsonValue const& value) {
    std::ostringstream out;
    write_json(out, value, SerializeOptions{});
    return out.str();
}

TEST(Extensions, ScalarsAreTypedByTheirText) {
    struct Case {
        char const* json;
        ExtensionValue value;
    };
    Case const cases[] = {
        {"null", {nullptr}},
        {"~", {nullptr}},
        {R"("null")", {std::string("null")}},
        {"true", {true}},
        {R"("false")", {std::string("false")}},
        {"True", {std::string("True")}},
        {"5", {5ull}},
        {"+5", {5ull}},
        {"017", {17ull}},
        {"-5", {-5ll}},
        {"18446744073709551615", {18446744073709551615ull}},
        {"18446744073709551616", {18446744073709551616.0}},
        {"-9223372036854775809", {-9223372036854775809.0}},
        {"2.0", {2.0}},
        {"-1.5e3", {-1500.0}},
        {"0x10", {16.0}},
        {"1e999", {std::string("1e999")}},
        {"inf", {std::string("inf")}},
        {"nan", {std::string("nan")}},
        {".inf", {std::string(".inf")}},
        {R"("12")", {std::string("12")}},
        {"12abc", {std::string("12abc")}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.json);
        EXPECT_EQ(read_extension_value(load_text(c.json)), c.value);
    }
}

TEST(Extensions, ContainersNestAndKeepTheFirstOfDuplicateKeys) {
    ExtensionValue const value = read_extension_value(load_text(R"([1, "a", null, {"y": true, "y": false, "z": []}])"));
    ExtensionValue const expected{Items{
        {1ull},
        {std::string("a")},
        {nullptr},
        {Members{{"y", {true}}, {"z", {Items{}}}}},
    }};
    EXPECT_EQ(value, expected);
    EXPECT_EQ(compact(extension_to_json(value)), R"([1,"a",null,{"y":true,"z":[]}])");
}

TEST(Extensions, UnknownRootKeysSurviveAReadAndAWrite) {
    auto const result = deserialize(R"({"schema": "morv.qc.document.v2", "program": {},
        "x": [1, "a", null, {"y": true}], "x": "second", "big": 18446744073709551616, "nothing": null,
        "metadata": 7, "parse_status": "complete"})");
    ASSERT_EQ(result.value.extensions.size(), 3u);
    EXPECT_EQ(result.value.extensions.at("x"),
              (ExtensionValue{Items{{1ull}, {std::string("a")}, {nullptr}, {Members{{"y", {true}}}}}}));
    EXPECT_EQ(result.value.extensions.at("big"), ExtensionValue{18446744073709551616.0});
    EXPECT_EQ(result.value.extensions.at("nothing"), ExtensionValue{nullptr});

    std::string const text = serialize(result);
    EXPECT_NE(text.find(R"("big":1.8446744073709552e+19,)"), std::string::npos);
    EXPECT_NE(text.find(R"("nothing":null,)"), std::string::npos);
    EXPECT_NE(text.find(R"("x":[1,"a",null,{"y":true}])"), std::string::npos);
    EXPECT_EQ(deserialize(text).value.extensions, result.value.extensions);
}

TEST(Extensions, SignedAndWholeDoubleValuesComeBackUnsigned) {
    Document document;
    document.extensions["signed"] = {5ll};
    document.extensions["whole"] = {2.0};
    document.extensions["negative"] = {-2ll};
    document.extensions["infinite"] = {std::numeric_limits<double>::infinity()};
    auto const extensions = deserialize(serialize(document)).value.extensions;
    EXPECT_EQ(extensions.at("signed"), ExtensionValue{5ull});
    EXPECT_EQ(extensions.at("whole"), ExtensionValue{2ull});
    EXPECT_EQ(extensions.at("negative"), ExtensionValue{-2ll});
    EXPECT_EQ(extensions.at("infinite"), ExtensionValue{nullptr});
}

}  // namespace
}  // namespace morv::qc::json
