#include "odd_values.hpp"

#include <array>
#include <limits>

namespace morv::testing {
namespace {

// Texts that a YAML loader may take for something else than a string, and
// the format's own words, root keys among them for the extensions.
constexpr std::array<char const*, 43> tricky_texts = {
    "",      "null",  "Null", "~",     "true",  "false", "True",  "yes",   "1",     "-0",
    "017",   "0x10",  "+1",   "12.0",  "1e999", ".inf",  "-.inf", ".nan",  "inf",   "nan",
    "9223372036854775808",     "18446744073709551616",   " x",    "x ",    "- a",   "a: b",
    "#",     "&a",    "*a",   "!x",    "'",     "\"",    "\\",    "[",     "{}",    "partial",
    "error", "orca",  "morv.qc.document.v2",             "\xef\xbb\xbf", "<<",    "schema", "program"};

// Every branch of what the writer works out from a number: an energy has a
// wavelength only above zero, a mode is imaginary only below, and what is not
// finite prints as null.
constexpr std::array<double, 12> special_doubles = {
    std::numeric_limits<double>::quiet_NaN(),  std::numeric_limits<double>::infinity(),
    -std::numeric_limits<double>::infinity(),  -0.0,
    0.0,                                       std::numeric_limits<double>::max(),
    std::numeric_limits<double>::lowest(),     std::numeric_limits<double>::denorm_min(),
    0.1,                                       1e21,
    9007199254740993.0,                        -76.4};

// The doubles among them that text carries exactly and spells as a double,
// with a fraction or an exponent, whichever decode reads it.
constexpr std::array<double, 6> exact_doubles = {
    std::numeric_limits<double>::max(), std::numeric_limits<double>::lowest(),
    1e-300, 0.1, 1e21, -76.4};

// Keys stay short: yaml-cpp refuses keys over 1024 characters, which has a
// test of its own.
constexpr std::uint64_t max_raw_text_bytes = 16;
constexpr std::uint64_t max_code_points = 6;

// Bytes in the UTF-8 sequence that `lead` starts; 0 for a byte that starts none.
std::size_t sequence_length(unsigned char lead) {
    if (lead < 0x80) {
        return 1;
    }
    if ((lead & 0xE0) == 0xC0) {
        return 2;
    }
    if ((lead & 0xF0) == 0xE0) {
        return 3;
    }
    return (lead & 0xF8) == 0xF0 ? 4 : 0;
}

// RFC 3629, as strict JSON parsers apply it: no overlong forms, no
// surrogates, nothing above U+10FFFF.
bool is_valid_utf8(std::string const& text) {
    constexpr std::uint32_t smallest_code_point[] = {0, 0, 0x80, 0x800, 0x10000};
    std::size_t i = 0;
    while (i < text.size()) {
        auto const lead = static_cast<unsigned char>(text[i]);
        std::size_t const length = sequence_length(lead);
        if (length == 0 || i + length > text.size()) {
            return false;
        }
        std::uint32_t code_point = length == 1 ? lead : lead & (0x7Fu >> length);
        for (std::size_t k = 1; k < length; ++k) {
            auto const next = static_cast<unsigned char>(text[i + k]);
            if ((next & 0xC0) != 0x80) {
                return false;
            }
            code_point = (code_point << 6) | (next & 0x3Fu);
        }
        if (code_point < smallest_code_point[length] || code_point > 0x10FFFF ||
            (code_point >= 0xD800 && code_point <= 0xDFFF)) {
            return false;
        }
        i += length;
    }
    return true;
}

void append_utf8(std::string& text, std::uint32_t code_point) {
    if (code_point < 0x80) {
        text += static_cast<char>(code_point);
    } else if (code_point < 0x800) {
        text += static_cast<char>(0xC0 | (code_point >> 6));
        text += static_cast<char>(0x80 | (code_point & 0x3F));
    } else if (code_point < 0x10000) {
        text += static_cast<char>(0xE0 | (code_point >> 12));
        text += static_cast<char>(0x80 | ((code_point >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (code_point & 0x3F));
    } else {
        text += static_cast<char>(0xF0 | (code_point >> 18));
        text += static_cast<char>(0x80 | ((code_point >> 12) & 0x3F));
        text += static_cast<char>(0x80 | ((code_point >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (code_point & 0x3F));
    }
}

}  // namespace

std::uint64_t OddValues::any_bits(std::size_t bytes) {
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < bytes; ++i) {
        bits = bits << 8 | choices_.departure(256);
    }
    return bits;
}

std::string OddValues::text(std::string usual) {
    std::string chosen;
    switch (choices_.departure(4)) {
        case 0: return usual;
        case 1: chosen = tricky_texts[choices_.departure(tricky_texts.size())]; break;
        case 2:
            for (auto count = choices_.departure(max_raw_text_bytes + 1); count > 0; --count) {
                chosen += static_cast<char>(choices_.departure(256));
            }
            break;
        default:
            // Valid UTF-8 from anywhere in the code space: controls, DEL, the
            // two-, three- and four-byte forms, line and paragraph separators.
            for (auto count = choices_.departure(max_code_points + 1); count > 0; --count) {
                auto code_point = static_cast<std::uint32_t>(choices_.departure(0x110000));
                if (code_point >= 0xD800 && code_point <= 0xDFFF) {
                    code_point = 0x2028 + (code_point & 1);
                }
                append_utf8(chosen, code_point);
            }
            break;
    }
    all_text_is_utf8_ = all_text_is_utf8_ && is_valid_utf8(chosen);
    return chosen;
}

double OddValues::number(double usual) {
    if (!any_value_) {
        return choices_.departure(2) == 1 ? exact_doubles[choices_.departure(exact_doubles.size())] : usual;
    }
    switch (choices_.departure(3)) {
        case 1: return special_doubles[choices_.departure(special_doubles.size())];
        case 2: {
            std::uint64_t const bits = any_bits(sizeof(double));
            double value;
            std::memcpy(&value, &bits, sizeof value);
            return value;
        }
        default: return usual;
    }
}

}  // namespace morv::testing
