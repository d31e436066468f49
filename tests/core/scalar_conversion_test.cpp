#include "core/json_tree.hpp"
#include "core/node.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <optional>
#include <string>

namespace morv::qc::json {
namespace {

// Same value, or both refused; NaN equals NaN, and 0 differs from -0.
template <typename T>
bool same(std::optional<T> const& a, std::optional<T> const& b) {
    if (!a || !b) {
        return !a && !b;
    }
    if constexpr (std::is_same_v<T, double>) {
        return std::memcmp(&*a, &*b, sizeof(double)) == 0 || (*a != *a && *b != *b);
    } else {
        return *a == *b;
    }
}

template <typename T>
void expect_same_conversion(std::string const& json) {
    std::optional<JsonTree> const tree = load_strict_json(json);
    ASSERT_TRUE(tree);
    Node const element = *Node(*tree, 0).elements().begin();
    Node const reference = *load_text(json).elements().begin();
    EXPECT_TRUE(same(element.try_as<T>(), reference.try_as<T>())) << typeid(T).name();
}

// The tree's conversions against yaml-cpp's on the same text, for every
// spelling that can reach them: JSON numbers and literals as written, and
// any text in quotes.
TEST(ScalarConversion, EveryTypeConvertsEverySpellingAsYamlCppDoes) {
    char const* const spellings[] = {
        "0", "-0", "1", "-1", "01", "-01", "00", "1.50", "1e5", "1E+5", "-1.5e-3", "0.1",
        "3.141592653589793238462643383279", "123456789012345678901234567890", "1e308", "1.8e308", "1e400",
        "-1e400", "1e-400", "-1e-400", "4.9e-324", "2.5e-320", "2.2250738585072011e-308", "32767", "65535",
        "65536", "2147483647", "2147483648", "-2147483648", "-2147483649", "4294967295", "4294967296",
        "18446744073709551615", "18446744073709551616", "-18446744073709551616", "0x1A", "0X1a", "010", "09",
        "+5", "+0", "- 5", " 5", "5 ", "5\t", "\t5", "", "1.", ".5", "5.e3", "1e", "1e+", "1_000", "1,5",
        ".inf", "+.inf", "-.Inf", ".INF", ".NaN", ".nan", "inf", "nan", "Infinity", "true", "True", "TRUE",
        "tRUE", "yes", "y", "on", "n", "No", "false", "Off", "null", "~", "1.5abc",
    };
    for (char const* spelling : spellings) {
        std::string const plain = std::string("[") + spelling + "]";
        std::string const quoted = std::string("[\"") + spelling + "\"]";
        for (std::string const& json : {plain, quoted}) {
            if (json == "[]" || !load_strict_json(json)) {
                continue;
            }
            SCOPED_TRACE(json);
            expect_same_conversion<std::string>(json);
            expect_same_conversion<bool>(json);
            expect_same_conversion<double>(json);
            expect_same_conversion<int>(json);
            expect_same_conversion<unsigned short>(json);
            expect_same_conversion<unsigned int>(json);
            expect_same_conversion<unsigned long long>(json);
        }
    }
}

TEST(ScalarConversion, NullAndContainersConvertOnlyToTextAsYamlCppDoes) {
    for (std::string const json : {"[null]", "[[1]]", "[{\"a\":1}]"}) {
        SCOPED_TRACE(json);
        expect_same_conversion<std::string>(json);
        expect_same_conversion<double>(json);
        expect_same_conversion<unsigned long long>(json);
    }
}

}  // namespace
}  // namespace morv::qc::json
