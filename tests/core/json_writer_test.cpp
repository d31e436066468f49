#include "core/json_value.hpp"
#include "support/json_text.hpp"

namespace morv::qc::json {
namespace {

using namespace morv::testing;

std::string pretty(JsonValue const& value, std::uint32_t indent = 2) {
    SerializeOptions options;
    options.pretty = true;
    options.indent = indent;
    std::ostringstream out;
    write_json(out, value, options);
    return out.str();
}

TEST(JsonWriter, ObjectKeysComeOutInByteOrderWhateverTheOrderOfAssignment) {
    JsonValue object;
    for (char const* key : {"b", "a", "B", "a_b", "id"}) {
        object[key] = key;
    }
    EXPECT_EQ(compact(object), R"({"B":"B","a":"a","a_b":"a_b","b":"b","id":"id"})");
}

TEST(JsonWriter, PrettyFormBreaksEveryElementAndIndentsByDepth) {
    JsonValue object;
    object["b"].push_back(1);
    object["b"].push_back(make_json_object());
    object["a"] = nullptr;
    object["c"]["k"].push_back(make_json_array());
    EXPECT_EQ(compact(object), R"({"a":null,"b":[1,{}],"c":{"k":[[]]}})");
    EXPECT_EQ(pretty(object), "{\n  \"a\": null,\n  \"b\": [\n    1,\n    {}\n  ],\n  \"c\": {\n    \"k\": [\n"
                              "      []\n    ]\n  }\n}");
    EXPECT_EQ(pretty(object, 0), "{\n\"a\": null,\n\"b\": [\n1,\n{}\n],\n\"c\": {\n\"k\": [\n[]\n]\n}\n}");
}

TEST(JsonWriter, NumbersPrintAsPrintfWithSeventeenDigitsAndNonFiniteAsNull) {
    std::pair<JsonValue, char const*> const cases[] = {
        {1.0, "1"}, {0.5, "0.5"}, {0.1, "0.10000000000000001"}, {1e21, "1e+21"}, {-0.0, "-0"},
        // Exact halves at the eighteenth digit, which go to the even digit.
        {1234567890123456.25, "1234567890123456.2"}, {1234567890123456.75, "1234567890123456.8"},
        {std::numeric_limits<double>::max(), "1.7976931348623157e+308"},
        {std::numeric_limits<double>::denorm_min(), "4.9406564584124654e-324"},
        {nan, "null"}, {-inf, "null"}, {-5, "-5"},
        {std::numeric_limits<unsigned long long>::max(), "18446744073709551615"},
        {std::numeric_limits<long long>::min(), "-9223372036854775808"}, {false, "false"}, {nullptr, "null"},
    };
    for (auto const& [value, text] : cases) {
        EXPECT_EQ(compact(value), text);
    }
}

TEST(JsonWriter, StringsEscapeQuotesBackslashesAndControlBytesOnly) {
    std::pair<std::string, std::string> const cases[] = {
        {"\"\\", R"("\"\\")"},
        {"\b\t\n\f\r", R"("\b\t\n\f\r")"},
        {std::string("\x00\x0b\x1f", 3), R"("\u0000\u000b\u001f")"},
        {"A\x7f\xc3\xa9/", "\"A\x7f\xc3\xa9/\""},
        {"\xff\xfe", "\"\xff\xfe\""},
    };
    for (auto const& [text, printed] : cases) {
        EXPECT_EQ(compact(JsonValue(text)), printed);
    }
    JsonValue object;
    object["line\nbreak"] = "x";
    EXPECT_EQ(compact(object), R"({"line\nbreak":"x"})");
}

TEST(JsonValue, AssignmentAndAccessReplaceWhateverTheValueHeld) {
    JsonValue object;
    object["k"] = 1;
    object["k"] = "two";
    EXPECT_EQ(compact(object), R"({"k":"two"})");
    JsonValue number = 5;
    number["k"] = true;
    EXPECT_EQ(compact(number), R"({"k":true})");
    JsonValue array = make_json_object();
    array["gone"] = 1;
    array.push_back(2.5);
    EXPECT_EQ(compact(array), "[2.5]");
    EXPECT_EQ(compact(JsonValue(static_cast<char const*>(nullptr))), R"("")");
}

}  // namespace
}  // namespace morv::qc::json
