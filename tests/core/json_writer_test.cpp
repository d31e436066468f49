#include "core/json_writer.hpp"
#include "sections/extensions.hpp"
#include "support/json_text.hpp"

#include "random.hpp"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <functional>

namespace morv::qc::json {
namespace {

using namespace morv::testing;
using model::ExtensionValue;
using Members = std::map<std::string, ExtensionValue>;

std::string printed(std::function<void(JsonPrinter&)> const& print, bool pretty = false, std::uint32_t indent = 2) {
    SerializeOptions options;
    options.pretty = pretty;
    options.indent = indent;
    JsonPrinter printer(options);
    print(printer);
    return printer.finish();
}

template <typename Value>
std::string printed_value(Value const& value) {
    return printed([&](JsonPrinter& printer) { printer.value(value); });
}

TEST(JsonWriter, PrettyFormBreaksEveryElementAndIndentsByDepth) {
    auto const print = [](JsonPrinter& printer) {
        printer.begin_object();
        printer.key("a");
        printer.null();
        printer.key("b");
        printer.begin_array();
        printer.value(1);
        printer.begin_object();
        printer.end_object();
        printer.end_array();
        printer.key("c");
        printer.begin_object();
        printer.key("k");
        printer.begin_array();
        printer.begin_array();
        printer.end_array();
        printer.end_array();
        printer.end_object();
        printer.end_object();
    };
    EXPECT_EQ(printed(print), R"({"a":null,"b":[1,{}],"c":{"k":[[]]}})");
    EXPECT_EQ(printed(print, true), "{\n  \"a\": null,\n  \"b\": [\n    1,\n    {}\n  ],\n  \"c\": {\n    \"k\": [\n"
                                    "      []\n    ]\n  }\n}\n");
    EXPECT_EQ(printed(print, true, 0), "{\n\"a\": null,\n\"b\": [\n1,\n{}\n],\n\"c\": {\n\"k\": [\n[]\n]\n}\n}\n");
}

// Merged members go in where their keys fall, a printed key replaces a merged
// one of the same name, and an object merged into inside another hands the
// outer one back when it closes.
TEST(JsonWriter, MergedMembersFallAmongThePrintedKeysInByteOrder) {
    Members const outer{{"", {1ull}}, {"b", {2ull}}, {"d", {std::string("dropped")}}, {"z", {Members{{"y", {true}}}}}};
    Members const inner{{"a", {nullptr}}, {"c", {3ull}}};
    std::string const text = printed([&](JsonPrinter& printer) {
        ExtensionMembers outer_members(outer);
        printer.begin_object(outer_members);
        printer.key("c");
        ExtensionMembers inner_members(inner);
        printer.begin_object(inner_members);
        printer.member("b", 0);
        printer.end_object();
        printer.member("d", 4);
        printer.member("e", 5);
        printer.end_object();
    });
    EXPECT_EQ(text, R"({"":1,"b":2,"c":{"a":null,"b":0,"c":3},"d":4,"e":5,"z":{"y":true}})");
}

TEST(JsonWriter, NumbersPrintAsPrintfWithSeventeenDigitsAndNonFiniteAsNull) {
    std::pair<double, char const*> const doubles[] = {
        {-0.0, "-0"},
        // Exact halves at the eighteenth digit, which go to the even digit.
        {1234567890123456.25, "1234567890123456.2"}, {1234567890123456.75, "1234567890123456.8"},
        {std::numeric_limits<double>::max(), "1.7976931348623157e+308"},
        {std::numeric_limits<double>::denorm_min(), "4.9406564584124654e-324"},
        {nan, "null"}, {-inf, "null"},
    };
    for (auto const& [value, text] : doubles) {
        EXPECT_EQ(printed_value(value), text);
    }
    EXPECT_EQ(printed_value(-5), "-5");
    EXPECT_EQ(printed_value(std::numeric_limits<unsigned long long>::max()), "18446744073709551615");
    EXPECT_EQ(printed_value(std::numeric_limits<long long>::min()), "-9223372036854775808");
    EXPECT_EQ(printed_value(false), "false");
}

// The printer makes the digits of doubles from 2^-36 to 2^51 itself and
// leaves the others to std::to_chars; either way the text is printf's.
TEST(JsonWriter, DoublesPrintAsPrintfOverAMillionSamples) {
    bench::Random random(17);
    constexpr double powers_of_ten[] = {1, 10, 100, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8};
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
        ASSERT_EQ(printed_value(value), expected);
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
    for (auto const& [text, expected] : cases) {
        EXPECT_EQ(printed_value(text), expected);
    }
    EXPECT_EQ(printed([](JsonPrinter& printer) {
                  printer.begin_object();
                  printer.member("line\nbreak", "x");
                  printer.end_object();
              }),
              R"({"line\nbreak":"x"})");
}

// Texts far longer than the first piece of the buffer, made of tokens of
// every size, come out whole.
TEST(JsonWriter, LongTextsComeOutWhole) {
    std::string const escapes(100'000, '\n');
    std::string expected = "[";
    std::string const text = printed([&](JsonPrinter& printer) {
        printer.begin_array();
        for (int i = 0; i < 50'000; ++i) {
            printer.value(i + 0.5);
            expected += std::to_string(i) + ".5,";
        }
        printer.value(escapes);
        printer.end_array();
    });
    for (std::size_t i = 0; i < escapes.size(); ++i) {
        expected += i == 0 ? "\"\\n" : "\\n";
    }
    EXPECT_EQ(text, expected + "\"]");
}

}  // namespace
}  // namespace morv::qc::json
