#include "core/json_writer.hpp"
#include "sections/extensions.hpp"
#include "support/json_text.hpp"

#include <morv/testing/choices.hpp>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace morv::qc::json {
namespace {

using namespace morv::testing;
using model::ExtensionValue;
using Items = std::vector<ExtensionValue>;
using Members = std::map<std::string, ExtensionValue>;

std::string pretty(ExtensionValue const& value, std::uint32_t indent) {
    SerializeOptions options;
    options.pretty = true;
    options.indent = indent;
    JsonPrinter printer(options);
    write_extension_value(printer, value);
    return printer.finish();
}

TEST(JsonWriter, PrettyFormBreaksEveryElementAndIndentsByDepth) {
    ExtensionValue const value{
        Members{{"a", {nullptr}}, {"b", {Items{{1ull}, {Members{}}}}}, {"c", {Members{{"k", {Items{{Items{}}}}}}}}}};
    EXPECT_EQ(compact(write_extension_value, value), R"({"a":null,"b":[1,{}],"c":{"k":[[]]}})");
    EXPECT_EQ(pretty(value, 2), "{\n  \"a\": null,\n  \"b\": [\n    1,\n    {}\n  ],\n  \"c\": {\n    \"k\": [\n"
                                "      []\n    ]\n  }\n}\n");
    EXPECT_EQ(pretty(value, 0), "{\n\"a\": null,\n\"b\": [\n1,\n{}\n],\n\"c\": {\n\"k\": [\n[]\n]\n}\n}\n");
}

// Merged members go in where their keys fall, a printed key replaces a merged
// one of the same name, and an object merged into inside another hands the
// outer one back when it closes.
TEST(JsonWriter, MergedMembersFallAmongThePrintedKeysInByteOrder) {
    Members const outer{{"", {1ull}}, {"b", {2ull}}, {"d", {std::string("dropped")}}, {"z", {Members{{"y", {true}}}}}};
    Members const inner{{"a", {nullptr}}, {"c", {3ull}}};
    SerializeOptions const options;
    JsonPrinter printer(options);
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
    EXPECT_EQ(printer.finish(), R"({"":1,"b":2,"c":{"a":null,"b":0,"c":3},"d":4,"e":5,"z":{"y":true}})");
}

TEST(JsonWriter, ScalarsPrintAsPrintfWithSeventeenDigitsNonFiniteAsNullAndStringsEscapedByteByByte) {
    std::pair<ExtensionValue, std::string> const cases[] = {
        {{-0.0}, "-0"},
        // Exact halves at the eighteenth digit, which go to the even digit.
        {{1234567890123456.25}, "1234567890123456.2"}, {{1234567890123456.75}, "1234567890123456.8"},
        {{std::numeric_limits<double>::max()}, "1.7976931348623157e+308"},
        {{std::numeric_limits<double>::denorm_min()}, "4.9406564584124654e-324"},
        {{nan}, "null"}, {{-inf}, "null"}, {{-5ll}, "-5"},
        {{std::numeric_limits<unsigned long long>::max()}, "18446744073709551615"},
        {{std::numeric_limits<long long>::min()}, "-9223372036854775808"}, {{false}, "false"},
        {{std::string("\"\\")}, R"("\"\\")"},
        {{std::string("\b\t\n\f\r")}, R"("\b\t\n\f\r")"},
        {{std::string("\x00\x0b\x1f", 3)}, R"("\u0000\u000b\u001f")"},
        {{std::string("A\x7f\xc3\xa9/\xff")}, "\"A\x7f\xc3\xa9/\xff\""},
        {{Members{{"line\nbreak", {std::string("x")}}}}, R"({"line\nbreak":"x"})"},
    };
    for (auto const& [value, text] : cases) {
        EXPECT_EQ(compact(write_extension_value, value), text);
    }
}

// The printer makes the digits of doubles from 2^-36 to 2^51 itself and
// leaves the others to std::to_chars; either way the text is printf's.
TEST(JsonWriter, DoublesPrintAsPrintfOverAMillionSamples) {
    testing::Choices random(17);
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
        ASSERT_EQ(compact(write_extension_value, {value}), expected);
    }
}

// Texts far longer than the first piece of the buffer, made of tokens of
// every size, come out whole. The lines of the long string all differ, so
// that a byte out of place shows.
TEST(JsonWriter, LongTextsComeOutWhole) {
    Items items;
    std::string expected = "[";
    for (int i = 0; i < 50'000; ++i) {
        items.push_back({i + 0.5});
        expected += std::to_string(i) + ".5,";
    }
    std::string lines;
    expected += '"';
    for (int i = 0; i < 20'000; ++i) {
        lines += std::to_string(i) + '\n';
        expected += std::to_string(i) + "\\n";
    }
    items.push_back({lines});
    EXPECT_EQ(compact(write_extension_value, {items}), expected + "\"]");
}

}  // namespace
}  // namespace morv::qc::json
