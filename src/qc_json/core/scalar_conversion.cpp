#include "core/scalar_conversion.hpp"

#include <yaml-cpp/yaml.h>

#include <charconv>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <system_error>
#include <type_traits>

namespace morv::qc::json {
namespace {

template <typename T>
std::optional<T> convert_with_yaml(std::string_view text) {
    T value{};
    if (YAML::convert<T>::decode(YAML::Node(std::string(text)), value)) {
        return value;
    }
    return std::nullopt;
}

// The first byte of a word loaded from the text is its lowest.
constexpr bool little_endian = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;

bool is_digit(char c) { return c >= '0' && c <= '9'; }

// Digits from `at` on; the position after them.
std::size_t skip_digits(std::string_view text, std::size_t at) {
    while (at < text.size() && is_digit(text[at])) {
        ++at;
    }
    return at;
}

// -?(0|[1-9][0-9]*): the decimal integers that a stream in yaml-cpp's
// base-detecting mode reads as decimal, since none has a leading zero.
// The position after the integer, or 0 when there is none.
std::size_t skip_integer(std::string_view text) {
    std::size_t at = !text.empty() && text[0] == '-' ? 1 : 0;
    if (at < text.size() && text[at] == '0') {
        return at + 1;
    }
    std::size_t const end = skip_digits(text, at);
    return end == at ? 0 : end;
}

bool is_plain_integer(std::string_view text) {
    std::size_t const end = skip_integer(text);
    return end != 0 && end == text.size();
}

// The number grammar of JSON, with fraction and exponent.
bool is_json_number(std::string_view text) {
    std::size_t at = skip_integer(text);
    if (at == 0) {
        return false;
    }
    if (at < text.size() && text[at] == '.') {
        std::size_t const end = skip_digits(text, at + 1);
        if (end == at + 1) {
            return false;
        }
        at = end;
    }
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        ++at;
        if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
            ++at;
        }
        std::size_t const end = skip_digits(text, at);
        if (end == at) {
            return false;
        }
        at = end;
    }
    return at == text.size();
}

// std::from_chars rounds correctly, as the stream's strtod does. Whatever it
// does not take in full (a number out of range, an underflow) goes to
// yaml-cpp, which has rules of its own for those.
template <typename T>
std::optional<T> convert_number(std::string_view text, bool spelled_plainly) {
    if (spelled_plainly) {
        T value{};
        auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (error == std::errc() && end == text.data() + text.size()) {
            return value;
        }
    }
    return convert_with_yaml<T>(text);
}

constexpr std::uint64_t byte_ones = 0x0101010101010101U;

// The value of the eight digits of `word`, or nothing when one of its bytes
// is not a digit. The first byte of a word loaded from the text is its lowest.
bool digits_of_word(std::uint64_t word, std::uint64_t& value) {
    // Every byte is 0x30 to 0x39: its high half is 3, and adding 6 carries
    // into no high half.
    if ((word & (byte_ones * 0xF0)) != byte_ones * 0x30 ||
        ((word + byte_ones * 0x06) & (byte_ones * 0xF0)) != byte_ones * 0x30) {
        return false;
    }
    word -= byte_ones * 0x30;
    // Pairs, then fours, then all eight, each the higher digits times a power
    // of ten plus the lower.
    word = (word * 10 + (word >> 8)) & 0x00FF00FF00FF00FFU;
    word = (word * 100 + (word >> 16)) & 0x0000FFFF0000FFFFU;
    value = (word * 10000 + (word >> 32)) & 0xFFFFFFFFU;
    return true;
}

std::uint64_t word_at(char const* p) {
    std::uint64_t word = 0;
    std::memcpy(&word, p, sizeof word);
    return word;
}

// The last `count` bytes (1 to 7) of the eight that end at `end`, when all
// are digits: the bytes before them are taken for leading zeros. A loop over
// a run of varying length mispredicts its end; this does not.
bool last_digits(char const* end, std::size_t count, std::uint64_t& value) {
    unsigned const dropped_bits = 8 * static_cast<unsigned>(8 - count);
    std::uint64_t const kept = ~std::uint64_t{0} << dropped_bits;
    return digits_of_word((word_at(end - 8) & kept) | (byte_ones * 0x30 & ~kept), value);
}

constexpr std::uint64_t integer_powers_of_ten[] = {1, 10, 100, 1'000, 10'000, 100'000, 1'000'000, 10'000'000};

// The digits from `p` on appended to `digits`; the position after them. The
// number's text starts at `begin` and ends at `end`.
inline char const* append_digits(char const* begin, char const* p, char const* end, std::uint64_t& digits) {
    if constexpr (little_endian) {
        if (std::uint64_t eight = 0; end - p >= 8 && digits_of_word(word_at(p), eight)) {
            digits = digits * 100'000'000 + eight;
            p += 8;
        }
        auto const rest = static_cast<std::size_t>(end - p);
        if (std::uint64_t tail = 0; rest > 0 && rest < 8 && end - begin >= 8 && last_digits(end, rest, tail)) {
            digits = digits * integer_powers_of_ten[rest] + tail;
            return end;
        }
    }
    for (; p != end && is_digit(*p); ++p) {
        digits = digits * 10 + static_cast<std::uint64_t>(*p - '0');
    }
    return p;
}

// Powers of ten that a double holds exactly.
constexpr double exact_powers_of_ten[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                          1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// A JSON number whose digits make an integer of at most 2^53 and whose
// power of ten is at most 22 either way: the digits and the power are both
// exact doubles, so one multiplication or division rounds the quotient or
// product once, correctly, to the double that std::from_chars gives. Most
// numbers that programs print are of this kind. False for any other number.
bool convert_short_number(std::string_view text, double& value) {
    constexpr std::uint64_t max_exact = std::uint64_t{1} << 53;
    // Longer texts are nearly all of 17 digits, which do not fit. Seventeen
    // digits or fewer never overflow 64 bits.
    constexpr std::size_t max_text = 17;
    if (text.size() > max_text) {
        return false;
    }
    char const* p = text.data();
    char const* const end = p + text.size();
    bool const negative = *p == '-';
    p += negative ? 1 : 0;
    std::uint64_t digits = 0;
    p = append_digits(text.data(), p, end, digits);
    int power = 0;
    if (p != end && *p == '.') {
        char const* const fraction = p + 1;
        p = append_digits(text.data(), fraction, end, digits);
        power = -static_cast<int>(p - fraction);
    }
    if (p != end) {
        // The exponent: a letter, a sign perhaps, and digits up to the end.
        ++p;
        bool const negative_exponent = *p == '-';
        p += *p == '-' || *p == '+' ? 1 : 0;
        int exponent = 0;
        for (; p != end; ++p) {
            if (exponent > 1000) {
                return false;
            }
            exponent = exponent * 10 + (*p - '0');
        }
        power += negative_exponent ? -exponent : exponent;
    }
    if (digits > max_exact || power < -22 || power > 22) {
        return false;
    }
    double const magnitude = power < 0 ? static_cast<double>(digits) / exact_powers_of_ten[-power]
                                       : static_cast<double>(digits) * exact_powers_of_ten[power];
    value = negative ? -magnitude : magnitude;
    return true;
}

// A JSON number of at most nine digits and nothing else: most integers of a
// document (ids, indices, counts, places in a text), read without a call.
bool convert_short_digits(std::string_view text, std::uint32_t& value) {
    constexpr std::size_t max_digits = 9;
    if (text.empty() || text.size() > max_digits) {
        return false;
    }
    char const* const end = text.data() + text.size();
    std::uint64_t digits = 0;
    if (append_digits(text.data(), text.data(), end, digits) != end) {
        return false;
    }
    value = static_cast<std::uint32_t>(digits);
    return true;
}

}  // namespace

template <>
std::optional<std::string> convert_scalar<std::string>(std::string_view text, bool) {
    return std::string(text);
}

template <>
std::optional<bool> convert_scalar<bool>(std::string_view text, bool) {
    if (text == "true") {
        return true;
    }
    if (text == "false") {
        return false;
    }
    return convert_with_yaml<bool>(text);
}

template <>
std::optional<double> convert_scalar<double>(std::string_view text, bool json_number) {
    if (double value = 0; json_number && convert_short_number(text, value)) {
        return value;
    }
    return convert_number<double>(text, json_number || is_json_number(text));
}

template <typename T>
std::optional<T> convert_scalar(std::string_view text, bool json_number) {
    static_assert(std::is_integral_v<T>);
    if (std::uint32_t value = 0; json_number && convert_short_digits(text, value) &&
                                 value <= std::numeric_limits<T>::max()) {
        return static_cast<T>(value);
    }
    // A JSON number that std::from_chars takes in full is a plain decimal
    // integer. It takes no minus sign for an unsigned type, and yaml-cpp
    // refuses one outright.
    return convert_number<T>(text, json_number || is_plain_integer(text));
}

template std::optional<int> convert_scalar<int>(std::string_view, bool);
template std::optional<unsigned short> convert_scalar<unsigned short>(std::string_view, bool);
template std::optional<unsigned int> convert_scalar<unsigned int>(std::string_view, bool);
template std::optional<unsigned long long> convert_scalar<unsigned long long>(std::string_view, bool);

}  // namespace morv::qc::json
