#include "core/json_writer.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>
#include <optional>
#include <string_view>

namespace morv::qc::json {
namespace {

// GCC and Clang have it on every 64-bit target; __extension__ tells
// -Wpedantic that it is meant.
__extension__ using Uint128 = unsigned __int128;

constexpr std::uint32_t ten_to_8 = 100'000'000;
constexpr std::uint64_t ten_to_16 = 10'000'000'000'000'000;
constexpr std::uint64_t ten_to_17 = 100'000'000'000'000'000;

constexpr auto powers_of_five = [] {
    std::array<std::uint64_t, 28> powers{};
    std::uint64_t power = 1;
    for (auto& entry : powers) {
        entry = power;
        power *= 5;
    }
    return powers;
}();

// A positive number rounded to 17 significant digits: `digits` holds exactly
// 17 and the first of them stands for 10^exponent.
struct Decimal {
    std::uint64_t digits;
    int exponent;
};

// floor(log10(2^b)) for b from -36 to 50, with log10(2) as 78913 / 2^18. The
// offset keeps the shifted number positive.
int floor_log10_of_power_of_two(int b) { return ((b * 78913 + (12 << 18)) >> 18) - 12; }

// The digits that "%.17g" gives: the exact binary value rounded, ties to even.
// A double from 2^-36 up to 2^51 is m * 2^e2 with e2 <= -2, so scaling it to
// 17 integer digits is m * 5^s / 2^shift with s <= 27: a product of at most
// 116 bits and a shift of 1 to 62, all exact in 128 bits. Other magnitudes
// give nothing and are left to std::to_chars, which is exact everywhere but
// several times slower. The rounding takes no branch, as the digits are too
// random for any prediction.
std::optional<Decimal> seventeen_digits(std::uint64_t magnitude_bits) {
    int const e2 = static_cast<int>(magnitude_bits >> 52) - 1075;
    int const leading_bit = e2 + 52;
    if (leading_bit < -36 || leading_bit > 50) {
        return std::nullopt;
    }
    std::uint64_t const mantissa = (magnitude_bits & ((std::uint64_t{1} << 52) - 1)) | (std::uint64_t{1} << 52);
    // The leading bit fixes the decimal exponent up to one.
    int exponent = floor_log10_of_power_of_two(leading_bit);
    int shift = exponent - 16 - e2;
    bool const one_more = ((Uint128{mantissa} * powers_of_five[16 - exponent]) >> shift) >= ten_to_17;
    exponent += one_more;
    shift += one_more;
    Uint128 const product = Uint128{mantissa} * powers_of_five[16 - exponent];
    // The digits with one bit more, which says whether the part cut off is at
    // least a half, and a sticky bit for whether it is more than that.
    auto const twice = static_cast<std::uint64_t>(product >> (shift - 1));
    bool const sticky = (static_cast<std::uint64_t>(product) & ((std::uint64_t{1} << (shift - 1)) - 1)) != 0;
    std::uint64_t digits = twice >> 1;
    digits += twice & (sticky | digits) & 1;
    if (digits == ten_to_17) {
        return Decimal{ten_to_16, exponent + 1};
    }
    return Decimal{digits, exponent};
}

char const* two_digits(unsigned value) {
    static constexpr char pairs[] =
        "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
        "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
        "8081828384858687888990919293949596979899";
    return pairs + 2 * value;
}

void write_eight_digits(char* out, std::uint32_t value) {
    std::uint32_t const high = value / 10000;
    std::uint32_t const low = value % 10000;
    std::memcpy(out, two_digits(high / 100), 2);
    std::memcpy(out + 2, two_digits(high % 100), 2);
    std::memcpy(out + 4, two_digits(low / 100), 2);
    std::memcpy(out + 6, two_digits(low % 100), 2);
}

// The longest text of a double, "-2.2250738585072014e-308", and all that
// print_double writes, trailing zeros it drops again included.
constexpr std::size_t max_double_length = 24;

// One 64-bit division, and the rest in independent 32-bit steps.
void write_seventeen_digits(char* out, std::uint64_t digits) {
    auto const head = static_cast<std::uint32_t>(digits / ten_to_8);
    auto const tail = static_cast<std::uint32_t>(digits % ten_to_8);
    out[0] = static_cast<char>('0' + head / ten_to_8);
    write_eight_digits(out + 1, head % ten_to_8);
    write_eight_digits(out + 9, tail);
}

char* drop_trailing_zeros(char* end) {
    while (end[-1] == '0') {
        --end;
    }
    return end;
}

// A decimal point with no digit after it goes too.
char* drop_empty_fraction(char* end) { return end[-1] == '.' ? end - 1 : end; }

// "%.17g" layout: plain from exponent -4 to 16, else scientific, the fraction
// without trailing zeros either way. Here the exponent stays within -11 to 15,
// so a scientific one is negative and has two digits. The digits are written
// where they end up, or one place off and the few before the point moved
// back, since reading many of them back at once from where they were just
// stored would stall the processor.
char* print_decimal(char* out, Decimal decimal) {
    int const exponent = decimal.exponent;
    if (exponent >= 0) {
        write_seventeen_digits(out + 1, decimal.digits);
        std::memmove(out, out + 1, static_cast<std::size_t>(exponent) + 1);
        out[exponent + 1] = '.';
        return drop_empty_fraction(drop_trailing_zeros(out + 18));
    }
    if (exponent >= -4) {
        std::memcpy(out, "0.000", 5);
        write_seventeen_digits(out + 1 - exponent, decimal.digits);
        return drop_trailing_zeros(out + 18 - exponent);
    }
    write_seventeen_digits(out + 1, decimal.digits);
    out[0] = out[1];
    out[1] = '.';
    char* end = drop_empty_fraction(drop_trailing_zeros(out + 18));
    end[0] = 'e';
    end[1] = '-';
    std::memcpy(end + 2, two_digits(static_cast<unsigned>(-exponent)), 2);
    return end + 4;
}

// A finite double as "%.17g" prints it.
char* print_double(char* out, double value) {
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    std::uint64_t const sign = std::uint64_t{1} << 63;
    if (auto const decimal = seventeen_digits(bits & ~sign)) {
        *out = '-';
        out += (bits & sign) != 0;
        return print_decimal(out, *decimal);
    }
    return std::to_chars(out, out + max_double_length, value, std::chars_format::general, 17).ptr;
}

char const* short_escape(unsigned char byte) {
    switch (byte) {
        case 0x22: return "\\\"";
        case 0x5C: return "\\\\";
        case 0x08: return "\\b";
        case 0x09: return "\\t";
        case 0x0A: return "\\n";
        case 0x0C: return "\\f";
        case 0x0D: return "\\r";
        default: return nullptr;
    }
}

bool needs_escape(char c) {
    auto const byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x22 || byte == 0x5C;
}

// The longest escape, "\u001f".
constexpr std::size_t max_escape_length = 6;
// The bytes of a string handled at a time.
constexpr std::size_t string_piece = 256;

char* print_escape(char* out, unsigned char byte) {
    if (char const* escape = short_escape(byte)) {
        std::memcpy(out, escape, 2);
        return out + 2;
    }
    static char const hex_digits[] = "0123456789abcdef";
    char const unicode_escape[] = {'\\', 'u', '0', '0', hex_digits[byte >> 4], hex_digits[byte & 0x0F]};
    std::memcpy(out, unicode_escape, sizeof unicode_escape);
    return out + sizeof unicode_escape;
}

std::size_t printed_string_length(std::string_view text) {
    std::size_t length = text.size() + 2;
    for (char const c : text) {
        if (needs_escape(c)) {
            length += short_escape(static_cast<unsigned char>(c)) ? 1 : max_escape_length - 1;
        }
    }
    return length;
}

// The blanks before a line: a 32-bit product, as the option itself is 32 bits.
std::uint32_t indentation(SerializeOptions const& options, std::uint32_t depth) { return depth * options.indent; }

// Collects the text in a small array and hands it to the string in large
// pieces, so that most tokens cost a few stores and no call.
class TextBuffer {
public:
    explicit TextBuffer(std::string& out) : out_(out) {}

    // Room for `size` bytes at most as large as the array; `commit` then
    // says where the written bytes end.
    char* room(std::size_t size) {
        if (static_cast<std::size_t>(std::end(buffer_) - cursor_) < size) {
            flush();
        }
        return cursor_;
    }
    void commit(char* end) { cursor_ = end; }

    void put(char c) {
        char* out = room(1);
        *out = c;
        commit(out + 1);
    }

    // A word of a few bytes, such as "null".
    void put(std::string_view word) {
        char* out = room(word.size());
        std::memcpy(out, word.data(), word.size());
        commit(out + word.size());
    }

    // Indentation is mostly a few dozen blanks, which a store of fixed size
    // covers; what it writes past the count, later bytes overwrite.
    void put_blanks(std::size_t count) {
        if (count <= short_blanks) {
            char* out = room(short_blanks);
            std::memset(out, ' ', short_blanks);
            commit(out + count);
            return;
        }
        while (count != 0) {
            std::size_t const run = std::min(count, sizeof buffer_);
            char* out = room(run);
            std::memset(out, ' ', run);
            commit(out + run);
            count -= run;
        }
    }

    void flush() {
        out_.append(buffer_, cursor_);
        cursor_ = buffer_;
    }

private:
    static constexpr std::size_t short_blanks = 64;

    std::string& out_;
    char buffer_[4096];
    char* cursor_ = buffer_;
};

class Printer {
public:
    Printer(std::string& out, SerializeOptions const& options) : text_(out), options_(options) {}

    void print(JsonValue const& value, std::uint32_t depth) {
        std::visit([&](auto const& alternative) { print_alternative(alternative, depth); }, value.storage());
    }

    void finish() { text_.flush(); }

private:
    void print_alternative(std::nullptr_t, std::uint32_t) { text_.put("null"); }
    void print_alternative(bool value, std::uint32_t) { text_.put(value ? "true" : "false"); }
    void print_alternative(long long value, std::uint32_t) { print_integer(value); }
    void print_alternative(unsigned long long value, std::uint32_t) { print_integer(value); }
    void print_alternative(std::string const& value, std::uint32_t) { print_string(value); }

    void print_alternative(double value, std::uint32_t) {
        // NaN fails every comparison, so the test is written to let it through
        // to "null" along with both infinities.
        if (!(std::fabs(value) <= std::numeric_limits<double>::max())) {
            text_.put("null");
            return;
        }
        text_.commit(print_double(text_.room(max_double_length), value));
    }

    template <typename Integer>
    void print_integer(Integer value) {
        constexpr std::size_t max_length = std::numeric_limits<Integer>::digits10 + 2;
        char* out = text_.room(max_length);
        text_.commit(std::to_chars(out, out + max_length, value).ptr);
    }

    // Byte by byte, as keys and most values are a few bytes long, and for
    // them a call to copy a run costs more than the loop. A long text goes in
    // pieces that fit the buffer even if every byte needs an escape.
    void print_string(std::string_view value) {
        text_.put('"');
        while (!value.empty()) {
            std::string_view const piece = value.substr(0, string_piece);
            char* out = text_.room(piece.size() * max_escape_length);
            for (char const c : piece) {
                if (needs_escape(c)) {
                    out = print_escape(out, static_cast<unsigned char>(c));
                } else {
                    *out++ = c;
                }
            }
            text_.commit(out);
            value.remove_prefix(piece.size());
        }
        text_.put('"');
    }

    void print_alternative(JsonObject const& object, std::uint32_t depth) {
        text_.put('{');
        if (object.empty()) {
            text_.put('}');
            return;
        }
        newline();
        std::size_t remaining = object.size();
        for (auto const& [key, value] : object) {
            indent(depth + 1);
            print_string(key);
            text_.put(':');
            if (options_.pretty) {
                text_.put(' ');
            }
            print(value, depth + 1);
            if (--remaining != 0) {
                text_.put(',');
            }
            newline();
        }
        indent(depth);
        text_.put('}');
    }

    void print_alternative(JsonArray const& array, std::uint32_t depth) {
        text_.put('[');
        if (array.empty()) {
            text_.put(']');
            return;
        }
        newline();
        std::size_t remaining = array.size();
        for (auto const& element : array) {
            indent(depth + 1);
            print(element, depth + 1);
            if (--remaining != 0) {
                text_.put(',');
            }
            newline();
        }
        indent(depth);
        text_.put(']');
    }

    void newline() {
        if (options_.pretty) {
            text_.put('\n');
        }
    }

    void indent(std::uint32_t depth) {
        if (options_.pretty) {
            text_.put_blanks(indentation(options_, depth));
        }
    }

    TextBuffer text_;
    SerializeOptions const& options_;
};

// An upper bound of the printed length: exact but for numbers, which count at
// their longest. The text then goes into one allocation, so the pages it
// touches are those of the text alone and not those of every doubling of a
// growing string.
class LengthBound {
public:
    explicit LengthBound(SerializeOptions const& options) : options_(options) {}

    std::size_t of(JsonValue const& value, std::uint32_t depth) const {
        return std::visit([&](auto const& alternative) { return of_alternative(alternative, depth); },
                          value.storage());
    }

private:
    std::size_t of_alternative(std::nullptr_t, std::uint32_t) const { return 4; }
    std::size_t of_alternative(bool, std::uint32_t) const { return 5; }
    std::size_t of_alternative(long long, std::uint32_t) const { return 20; }
    std::size_t of_alternative(unsigned long long, std::uint32_t) const { return 20; }
    std::size_t of_alternative(double, std::uint32_t) const { return max_double_length; }
    std::size_t of_alternative(std::string const& value, std::uint32_t) const {
        return printed_string_length(value);
    }

    std::size_t of_alternative(JsonObject const& object, std::uint32_t depth) const {
        std::size_t length = container(object.size(), depth);
        for (auto const& [key, value] : object) {
            length += printed_string_length(key) + (options_.pretty ? 2 : 1) + of(value, depth + 1);
        }
        return length;
    }

    std::size_t of_alternative(JsonArray const& array, std::uint32_t depth) const {
        std::size_t length = container(array.size(), depth);
        for (auto const& element : array) {
            length += of(element, depth + 1);
        }
        return length;
    }

    // Brackets, commas, and in the pretty form a line for every element and
    // one for the closing bracket.
    std::size_t container(std::size_t elements, std::uint32_t depth) const {
        std::size_t length = 2 + elements;
        if (options_.pretty && elements != 0) {
            length += elements * (1 + std::size_t{indentation(options_, depth + 1)}) + 1 + indentation(options_, depth);
        }
        return length;
    }

    SerializeOptions const& options_;
};

}  // namespace

void write_json(std::string& out, JsonValue const& value, SerializeOptions const& options) {
    // One byte more leaves room for the line feed that ends a pretty document.
    out.reserve(out.size() + LengthBound(options).of(value, 0) + 1);
    Printer printer(out, options);
    printer.print(value, 0);
    printer.finish();
}

void write_json(std::ostream& out, JsonValue const& value, SerializeOptions const& options) {
    std::string text;
    write_json(text, value, options);
    out << text;
}

}  // namespace morv::qc::json
