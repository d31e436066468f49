#include "framework/text.hpp"

#include <array>
#include <cctype>
#include <cstdint>
#include <charconv>
#include <cmath>
#include <system_error>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace morv::qc::import {

#if defined(__SSE2__)
namespace {

// Bit k set where byte k of the sixteen at `data` is a blank.
unsigned blank_mask(char const* data) {
    __m128i const bytes = _mm_loadu_si128(reinterpret_cast<__m128i const*>(data));
    __m128i blanks = _mm_cmpeq_epi8(bytes, _mm_set1_epi8(' '));
    for (char const c : {'\t', '\r', '\f', '\v'}) {
        blanks = _mm_or_si128(blanks, _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)));
    }
    return static_cast<unsigned>(_mm_movemask_epi8(blanks));
}

}  // namespace
#endif

Fields::Fields(std::string_view text) {
    char const* const data = text.data();
    std::size_t i = 0;
    std::size_t start = 0;
    bool after_blank = true;
#if defined(__SSE2__)
    // Where fields start and end, sixteen bytes at a time: a branch per byte
    // would be mispredicted at every edge of a field, two per number of a
    // table row.
    for (; i + 16 <= text.size(); i += 16) {
        unsigned const blanks = blank_mask(data + i);
        unsigned const before_blank = ((blanks << 1) | (after_blank ? 1U : 0U)) & 0xFFFFU;
        unsigned const starts = ~blanks & before_blank & 0xFFFFU;
        unsigned edges = starts | (blanks & ~before_blank);
        while (edges != 0) {
            auto const at = static_cast<std::size_t>(__builtin_ctz(edges));
            if ((starts >> at) & 1U) {
                start = i + at;
            } else {
                push_back(text.substr(start, i + at - start));
            }
            edges &= edges - 1;
        }
        after_blank = (blanks >> 15) & 1U;
    }
#endif
    for (; i < text.size(); ++i) {
        bool const blank = is_blank(data[i]);
        if (!blank && after_blank) {
            start = i;
        } else if (blank && !after_blank) {
            push_back(text.substr(start, i - start));
        }
        after_blank = blank;
    }
    if (!after_blank) {
        push_back(text.substr(start));
    }
}

void Fields::spill(std::string_view field) {
    if (spilled_.empty()) {
        spilled_.assign(in_place_.begin(), in_place_.end());
    }
    spilled_.push_back(field);
    ++count_;
}

namespace {

constexpr std::array<double, 16> powers_of_ten = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                  1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

// Most numbers in an output are short decimals such as -0.123456. With at
// most 15 digits, the digits as an integer and the power of ten are both
// exact doubles, so their quotient is the correctly rounded value, the same
// that from_chars gives. Any other form is left to from_chars.
std::optional<double> short_decimal(std::string_view field) {
    bool const negative = !field.empty() && field.front() == '-';
    std::size_t i = negative ? 1 : 0;
    std::uint64_t digits = 0;
    std::size_t count = 0;
    std::size_t point = field.size();
    for (; i < field.size(); ++i) {
        char const c = field[i];
        if (c >= '0' && c <= '9') {
            digits = digits * 10 + static_cast<std::uint64_t>(c - '0');
            ++count;
        } else if (c == '.' && point == field.size()) {
            point = i;
        } else {
            return std::nullopt;
        }
    }
    std::size_t const decimals = point == field.size() ? 0 : field.size() - point - 1;
    if (count == 0 || count > 15 || (decimals == 0 && point != field.size()) || count == decimals) {
        return std::nullopt;
    }
    double const value = static_cast<double>(digits) / powers_of_ten[decimals];
    return negative ? -value : value;
}

}  // namespace

std::optional<double> to_double(std::string_view field) {
    // Only what a program prints as a number. from_chars takes no blanks,
    // hexadecimal or leading '+' and reads the C locale's form whatever the
    // process's locale; infinities and NaN it reads are turned away below.
    if (!field.empty() && field.front() == '+') {
        field.remove_prefix(1);
        if (!field.empty() && (field.front() == '+' || field.front() == '-')) {
            return std::nullopt;
        }
    }
    if (auto const value = short_decimal(field)) {
        return value;
    }
    // Fortran's D exponent, as in -0.75D+02.
    char copy[64];
    auto const exponent = field.find_first_of("dD");
    if (exponent != std::string_view::npos) {
        if (field.size() > sizeof copy) {
            return std::nullopt;
        }
        field.copy(copy, field.size());
        copy[exponent] = 'E';
        field = std::string_view(copy, field.size());
    }
    double value = 0.0;
    auto const [end, error] = std::from_chars(field.data(), field.data() + field.size(), value);
    if (field.empty() || error != std::errc() || end != field.data() + field.size() || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

std::optional<long long> to_integer(std::string_view field) {
    if (field.empty() || field.size() > 18) {
        return std::nullopt;
    }
    std::size_t i = field.front() == '-' || field.front() == '+' ? 1 : 0;
    if (i == field.size()) {
        return std::nullopt;
    }
    long long value = 0;
    for (; i < field.size(); ++i) {
        if (field[i] < '0' || field[i] > '9') {
            return std::nullopt;
        }
        value = value * 10 + (field[i] - '0');
    }
    return field.front() == '-' ? -value : value;
}

std::string ascii_upper(std::string_view text) {
    std::string out(text);
    for (char& c : out) {
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return out;
}

std::string ascii_lower(std::string_view text) {
    std::string out(text);
    for (char& c : out) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return out;
}

std::optional<NumberField> number_after(std::string_view text, std::string_view key) {
    auto const at = text.find(key);
    if (at == std::string_view::npos) {
        return std::nullopt;
    }
    auto rest = text.substr(at + key.size());
    auto skip_blanks = [&rest] {
        while (!rest.empty() && (rest.front() == ' ' || rest.front() == '\t')) {
            rest.remove_prefix(1);
        }
    };
    skip_blanks();
    if (!rest.empty() && rest.front() == '=') {
        rest.remove_prefix(1);
        skip_blanks();
    }
    auto const end = rest.find_first_of(" \t");
    auto const field = rest.substr(0, end);
    auto const value = to_double(field);
    if (!value) {
        return std::nullopt;
    }
    return NumberField{*value, field};
}

}  // namespace morv::qc::import
