#include "core/json_writer.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>

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

// The blanks before a line: a 32-bit product, as the option itself is 32 bits.
std::uint32_t indentation(SerializeOptions const& options, std::uint32_t depth) { return depth * options.indent; }

// The first chunk holds a small document whole. Each further one holds a
// 32nd of what is printed so far: the chunks all live until `finish` copies
// them into the text, and a text of 40 MB takes about two hundred, whose
// list and allocator overhead the tail that `finish` keeps off the heap
// more than covers.
constexpr std::size_t first_chunk = 8192;
constexpr std::size_t chunk_share = 32;

// Indentation is mostly a few dozen blanks, which a store of fixed size
// covers; what it writes past the count, later bytes overwrite.
constexpr std::size_t short_blanks = 64;
constexpr std::size_t long_blanks = 4096;

}  // namespace

// The heap holds the text returned and, while that is allocated, every
// chunk: what is printed twice, and the list of chunks and what the
// allocator adds to each on top. The end of the text waits on the stack
// instead, which keeps the heap under twice the text.
std::string JsonPrinter::finish() {
    if (options_.pretty) {
        put('\n');
    }
    close_chunk();
    std::array<char, tail_size> tail;
    std::string_view const tail_text = move_tail(tail);
    trim_last_chunk();
    std::string text;
    text.reserve(chunks_bytes_ + tail_text.size());
    for (Chunk const& chunk : chunks_) {
        text.append(chunk.bytes.get(), chunk.used);
    }
    text.append(tail_text);
    chunks_.clear();
    chunks_bytes_ = 0;
    cursor_ = limit_ = nullptr;
    return text;
}

void JsonPrinter::close_chunk() {
    if (!chunks_.empty()) {
        Chunk& last = chunks_.back();
        last.used = static_cast<std::size_t>(cursor_ - last.bytes.get());
        chunks_bytes_ += last.used;
    }
}

// Moves the last bytes printed, as many as `tail` holds, to the end of
// `tail`, and lets go the chunks that they leave empty.
std::string_view JsonPrinter::move_tail(std::array<char, tail_size>& tail) {
    char* const end = tail.data() + tail.size();
    char* begin = end;
    while (!chunks_.empty() && begin != tail.data()) {
        Chunk& last = chunks_.back();
        std::size_t const count = std::min(last.used, static_cast<std::size_t>(begin - tail.data()));
        begin -= count;
        std::memcpy(begin, last.bytes.get() + last.used - count, count);
        last.used -= count;
        chunks_bytes_ -= count;
        if (last.used == 0) {
            chunks_.pop_back();
        }
    }
    return std::string_view(begin, static_cast<std::size_t>(end - begin));
}

// The last chunk left is mostly part empty. A copy of what it holds lets the
// rest go before the text is allocated.
void JsonPrinter::trim_last_chunk() {
    if (chunks_.empty()) {
        return;
    }
    Chunk& last = chunks_.back();
    std::unique_ptr<char[]> held(new char[last.used]);
    std::memcpy(held.get(), last.bytes.get(), last.used);
    last.bytes = std::move(held);
}

void JsonPrinter::start_chunk(std::size_t size) {
    close_chunk();
    std::size_t const capacity = std::max({size, first_chunk, chunks_bytes_ / chunk_share});
    chunks_.push_back(Chunk{std::unique_ptr<char[]>(new char[capacity]), 0});
    cursor_ = chunks_.back().bytes.get();
    limit_ = cursor_ + capacity;
}

void JsonPrinter::put(std::string_view word) {
    char* out = room(word.size());
    std::memcpy(out, word.data(), word.size());
    advance(out + word.size());
}

void JsonPrinter::indent() {
    if (!options_.pretty) {
        return;
    }
    put('\n');
    std::size_t count = indentation(options_, depth_);
    if (count <= short_blanks) {
        char* out = room(short_blanks);
        std::memset(out, ' ', short_blanks);
        advance(out + count);
        return;
    }
    while (count != 0) {
        std::size_t const run = std::min(count, long_blanks);
        char* out = room(run);
        std::memset(out, ' ', run);
        advance(out + run);
        count -= run;
    }
}

// Each element of an array or member of an object but the first follows a
// comma, and in the pretty form stands on a line of its own.
void JsonPrinter::before_element() {
    if (!first_) {
        put(',');
    }
    first_ = false;
    indent();
}

// A value after a key is the member's; at the root it stands alone; else it
// is the next element of an array.
void JsonPrinter::before_value() {
    if (after_key_) {
        after_key_ = false;
    } else if (depth_ != 0) {
        before_element();
    }
}

void JsonPrinter::begin(char bracket) {
    before_value();
    put(bracket);
    ++depth_;
    first_ = true;
}

// An empty container closes on its own line, a full one on a line of its own.
void JsonPrinter::end(char bracket) {
    --depth_;
    if (!first_) {
        indent();
    }
    put(bracket);
    first_ = false;
}

void JsonPrinter::begin_object() { begin('{'); }

void JsonPrinter::begin_object(MergedMembers& merged) {
    begin('{');
    merged.outer_ = merged_;
    merged.depth_ = depth_;
    merged_ = &merged;
}

void JsonPrinter::end_object() {
    if (merged_ != nullptr && merged_->depth_ == depth_) {
        print_merged_rest();
    }
    end('}');
}

void JsonPrinter::begin_array() { begin('['); }

void JsonPrinter::end_array() { end(']'); }

void JsonPrinter::key(std::string_view key) {
    if (merged_ != nullptr && merged_->depth_ == depth_) {
        print_merged_before(key);
    }
    print_key(key);
}

void JsonPrinter::print_key(std::string_view key) {
    before_element();
    print_string(key);
    put(options_.pretty ? std::string_view(": ") : std::string_view(":"));
    after_key_ = true;
}

void JsonPrinter::print_merged_before(std::string_view key) {
    MergedMembers& merged = *merged_;
    while (auto const next = merged.next_key()) {
        if (*next > key) {
            return;
        }
        if (*next == key) {
            merged.skip_next();
        } else {
            print_key(*next);
            merged.print_next(*this);
        }
    }
}

void JsonPrinter::print_merged_rest() {
    MergedMembers& merged = *merged_;
    while (auto const next = merged.next_key()) {
        print_key(*next);
        merged.print_next(*this);
    }
    merged_ = merged.outer_;
}

void JsonPrinter::null() {
    before_value();
    put("null");
}

void JsonPrinter::value(bool value) {
    before_value();
    put(value ? std::string_view("true") : std::string_view("false"));
}

void JsonPrinter::value(double value) {
    before_value();
    // NaN fails every comparison, so the test is written to let it through
    // to "null" along with both infinities.
    if (!(std::fabs(value) <= std::numeric_limits<double>::max())) {
        put("null");
        return;
    }
    advance(print_double(room(max_double_length), value));
}

void JsonPrinter::signed_value(long long number) {
    before_value();
    constexpr std::size_t max_length = std::numeric_limits<long long>::digits10 + 2;
    char* out = room(max_length);
    advance(std::to_chars(out, out + max_length, number).ptr);
}

void JsonPrinter::unsigned_value(unsigned long long number) {
    before_value();
    constexpr std::size_t max_length = std::numeric_limits<unsigned long long>::digits10 + 2;
    char* out = room(max_length);
    advance(std::to_chars(out, out + max_length, number).ptr);
}

void JsonPrinter::value(std::string_view text) {
    before_value();
    print_string(text);
}

// Byte by byte, as keys and most values are a few bytes long, and for them a
// call to copy a run costs more than the loop. A long text goes in pieces,
// each with room for every byte to need an escape.
void JsonPrinter::print_string(std::string_view text) {
    put('"');
    while (!text.empty()) {
        std::string_view const piece = text.substr(0, string_piece);
        char* out = room(piece.size() * max_escape_length);
        for (char const c : piece) {
            if (needs_escape(c)) {
                out = print_escape(out, static_cast<unsigned char>(c));
            } else {
                *out++ = c;
            }
        }
        advance(out);
        text.remove_prefix(piece.size());
    }
    put('"');
}

}  // namespace morv::qc::json
