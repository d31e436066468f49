#include "core/json_value.hpp"
#include "support/json_text.hpp"

#include "random.hpp"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>

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
        {-0.0, "-0"},
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

// The printer makes the digits of doubles from 2^-36 to 2^51 itself and
// leaves the others to std::to_chars; either way the text is printf's.
TEST(JsonWriter, DoublesPrintAsPrintfOverAMillionSamples) {
    bench::Random random(17);
    constexpr double powers_of_ten[] = {1, 10, 100, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8};
    std::string text;
    char expected[32];
    for (int i = 0; i < 1'000'000; ++i) {
        double value = 0;
        switch (i % 4) {
            case 0: {  // Any bit pattern, so any exponent and subnormals.
                std::uint64_t const bits = random.next();
                std::memcpy(&value, &bits, sizeof value);
                break;
            }
            case 1:  // Anywhere in the printer's own range.
                value = std::ldexp(1.0 + random.unit(), static_cast<int>(random.below(88)) - 36);
                break;
            case 2:  // Short decimals, as programs print them, halves at the 18th digit among them.
                value = static_cast<double>(random.below(100'000'000)) / powers_of_ten[random.below(9)];
                break;
            default:  // Whole numbers up to 2^53, and their binary fractions.
                value = std::ldexp(static_cast<double>(random.next() >> 11), -static_cast<int>(random.below(64)));
        }
        if (random.one_in(2)) {
            value = -value;
        }
        if (!std::isfinite(value)) {
            continue;
        }
        std::snprintf(expected, sizeof expected, "%.17g", value);
        text.clear();
        write_json(text, JsonValue(value), SerializeOptions{});
        ASSERT_EQ(text, expected);
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
