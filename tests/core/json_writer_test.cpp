#include "core/json_value.hpp"
#include "core/json_writer.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>
#include <string>

namespace morv::qc::json {
namespace {

std::string print(JsonValue const& value, bool pretty = false, std::uint32_t indent = 2) {
    SerializeOptions options;
    options.pretty = pretty;
    options.indent = indent;
    std::ostringstream out;
    write_json(out, value, options);
    return out.str();
}

TEST(JsonWriter, ObjectKeysComeOutInByteOrderWhateverTheOrderOfAssignment) {
    JsonValue object;
    object["b"] = 3;
    object["a"] = 2;
    object["B"] = 1;
    object["a_b"] = 4;
    object["id"] = 5;
    object["kind"] = 6;
    EXPECT_EQ(print(object), R"({"B":1,"a":2,"a_b":4,"b":3,"id":5,"kind":6})");
}

TEST(JsonWriter, PrettyFormBreaksEveryElementAndIndentsByDepth) {
    JsonValue object;
    object["b"].push_back(1);
    object["b"].push_back(make_json_object());
    object["a"] = nullptr;
    EXPECT_EQ(print(object), R"({"a":null,"b":[1,{}]})");
    EXPECT_EQ(print(object, true), "{\n  \"a\": null,\n  \"b\": [\n    1,\n    {}\n  ]\n}");
    EXPECT_EQ(print(object, true, 0), "{\n\"a\": null,\n\"b\": [\n1,\n{}\n]\n}");

    JsonValue nested;
    JsonValue inner;
    inner["k"] = "v";
    nested["list"].push_back(std::move(inner));
    nested["empty"] = make_json_array();
    EXPECT_EQ(print(nested, true),
              "{\n  \"empty\": [],\n  \"list\": [\n    {\n      \"k\": \"v\"\n    }\n  ]\n}");
}

TEST(JsonWriter, NumbersPrintAsPrintfWithSeventeenDigitsAndNonFiniteAsNull) {
    struct Case {
        JsonValue value;
        char const* text;
    };
    Case const cases[] = {
        {1.0, "1"},
        {0.5, "0.5"},
        {0.1, "0.10000000000000001"},
        {1e21, "1e+21"},
        {-0.0, "-0"},
        {-76.4, "-76.400000000000006"},
        {std::numeric_limits<double>::max(), "1.7976931348623157e+308"},
        {std::numeric_limits<double>::denorm_min(), "4.9406564584124654e-324"},
        {std::numeric_limits<double>::quiet_NaN(), "null"},
        {std::numeric_limits<double>::infinity(), "null"},
        {-std::numeric_limits<double>::infinity(), "null"},
        {-5, "-5"},
        {std::numeric_limits<unsigned long long>::max(), "18446744073709551615"},
        {std::numeric_limits<long long>::min(), "-9223372036854775808"},
        {true, "true"},
        {false, "false"},
        {nullptr, "null"},
    };
    for (auto const& c : cases) {
        EXPECT_EQ(print(c.value), c.text);
    }
}

TEST(JsonWriter, StringsEscapeQuotesBackslashesAndControlBytesOnly) {
    struct Case {
        std::string text;
        std::string printed;
    };
    Case const cases[] = {
        {"plain", "\"plain\""},
        {"\"\\", R"("\"\\")"},
        {"\b\t\n\f\r", R"("\b\t\n\f\r")"},
        {std::string("\x00\x0b\x1f", 3), R"("\u0000\u000b\u001f")"},
        {"A\x1f\x7f\xc3\xa9", "\"A\\u001f\x7f\xc3\xa9\""},
        {"a/b", "\"a/b\""},
        {"\xff\xfe", "\"\xff\xfe\""},
    };
    for (auto const& c : cases) {
        EXPECT_EQ(print(JsonValue(c.text)), c.printed);
    }

    JsonValue object;
    object["line\nbreak"] = "x";
    EXPECT_EQ(print(object), R"({"line\nbreak":"x"})");
}

TEST(JsonWriter, EscapesLeaveTheStreamDecimal) {
    std::ostringstream out;
    write_json_string(out, "\x1f");
    out << 255 << '|' << std::string("x");
    EXPECT_EQ(out.str(), "\"\\u001f\"255|x");
}

TEST(JsonValue, AssignmentAndAccessReplaceWhateverTheValueHeld) {
    JsonValue object;
    object["k"] = 1;
    object["k"] = "two";
    EXPECT_EQ(print(object), R"({"k":"two"})");

    JsonValue number = 5;
    number["k"] = true;
    EXPECT_EQ(print(number), R"({"k":true})");

    JsonValue array = make_json_object();
    array["gone"] = 1;
    array.push_back(2.5);
    EXPECT_EQ(print(array), "[2.5]");

    JsonValue text = static_cast<char const*>(nullptr);
    EXPECT_EQ(print(text), R"("")");
}

}  // namespace
}  // namespace morv::qc::json
