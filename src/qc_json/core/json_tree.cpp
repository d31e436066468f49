#include "core/json_tree.hpp"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace morv::qc::json {
namespace {

// yaml-cpp refuses nesting a little short of 500 levels. Real documents are
// a dozen deep, so the tree declines long before yaml-cpp would.
constexpr int max_depth = 256;

// yaml-cpp refuses a key whose opening quote stands more than 1,024 bytes
// before its colon; keys that come anywhere near are left to it.
constexpr std::ptrdiff_t max_key_to_colon = 1000;

bool is_digit(char c) { return c >= '0' && c <= '9'; }

// Every blank is a byte up to the space, and every other such byte ends a
// token where a blank may stand, so one comparison keeps compact text on
// its way.
bool maybe_blank(char c) { return static_cast<unsigned char>(c) <= ' '; }

// A quote or backslash ends the plain part of a string, and yaml-cpp folds
// or refuses raw control characters and tabs.
bool ends_plain_string(char c) { return c == '"' || c == '\\' || static_cast<unsigned char>(c) < 0x20; }

#if defined(__SSE2__)

constexpr std::ptrdiff_t block_size = 16;

__m128i load_block(char const* data) { return _mm_loadu_si128(reinterpret_cast<__m128i const*>(data)); }

// Bit k set where byte k of the block at `data` ends the plain part of a
// string.
unsigned plain_string_ends(char const* data) {
    __m128i const bytes = load_block(data);
    __m128i const quotes = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('"'));
    __m128i const backslashes = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\\'));
    // Unsigned: a byte is below 0x20 when raising it to 0x1F changes nothing.
    __m128i const controls = _mm_cmpeq_epi8(_mm_max_epu8(bytes, _mm_set1_epi8(0x1F)), _mm_set1_epi8(0x1F));
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(_mm_or_si128(quotes, backslashes), controls)));
}

// Bit k set where byte k of the block at `data` is no digit. Signed
// comparisons suit: the bytes from 0x80 up are negative, below '0'.
unsigned non_digits(char const* data) {
    __m128i const bytes = load_block(data);
    __m128i const digits = _mm_and_si128(_mm_cmpgt_epi8(bytes, _mm_set1_epi8('0' - 1)),
                                         _mm_cmplt_epi8(bytes, _mm_set1_epi8('9' + 1)));
    return static_cast<unsigned>(_mm_movemask_epi8(digits)) ^ 0xFFFFU;
}

#else

constexpr std::ptrdiff_t block_size = 8;

unsigned plain_string_ends(char const* data) {
    unsigned ends = 0;
    for (int at = 0; at < block_size; ++at) {
        ends |= static_cast<unsigned>(ends_plain_string(data[at])) << at;
    }
    return ends;
}

unsigned non_digits(char const* data) {
    unsigned stops = 0;
    for (int at = 0; at < block_size; ++at) {
        stops |= static_cast<unsigned>(!is_digit(data[at])) << at;
    }
    return stops;
}

#endif

// The first byte at or after `p` that ends the plain part of a string, or
// `end`; a block at a time but in the last few bytes of the text.
char const* find_plain_string_end(char const* p, char const* end) {
    for (; end - p >= block_size; p += block_size) {
        if (unsigned const ends = plain_string_ends(p)) {
            return p + __builtin_ctz(ends);
        }
    }
    while (p != end && !ends_plain_string(*p)) {
        ++p;
    }
    return p;
}

char const* skip_digits(char const* p, char const* end) {
    for (; end - p >= block_size; p += block_size) {
        if (unsigned const stops = non_digits(p)) {
            return p + __builtin_ctz(stops);
        }
    }
    while (p != end && is_digit(*p)) {
        ++p;
    }
    return p;
}

// Numbers are short: most are read whole from one look at which bytes of
// a window are digits, rather than from a scan for each of their parts.
constexpr int number_window = 32;

// The bytes past the window that the loader may look at.
constexpr int number_lookahead = 1;

// Bit k set where byte k of the window at `data` is no digit, and every
// bit from `number_window` up, so that every count of digits stops there.
std::uint64_t window_non_digits(char const* data) {
    std::uint64_t stops = ~std::uint64_t{0} << number_window;
    for (int block = 0; block < number_window / block_size; ++block) {
        stops |= std::uint64_t{non_digits(data + block * block_size)} << (block * block_size);
    }
    return stops;
}

// The length of the number at `data`, if it ends within the window there,
// which `number_lookahead` bytes of text follow; 0 where it is no number,
// and `number_window` where it may run on. Branches on which parts the
// number has, as the CPU foresees them, rather than arithmetic that would
// wait for each count of digits.
int number_length_in_window(char const* data) {
    std::uint64_t const stops = window_non_digits(data);
    // Past one digit or more from `at`, which is at most `number_window`.
    auto const digits_from = [stops](int at) {
        int const past = at + __builtin_ctzll(stops >> at);
        if (past >= number_window) {
            return number_window;
        }
        return past == at ? 0 : past;
    };
    int at = data[0] == '-' ? 1 : 0;
    if (data[at] == '0') {
        ++at;
    } else if ((at = digits_from(at)) == 0 || at == number_window) {
        return at;
    }
    if (data[at] == '.' && ((at = digits_from(at + 1)) == 0 || at == number_window)) {
        return at;
    }
    if (data[at] == 'e' || data[at] == 'E') {
        ++at;
        if (data[at] == '+' || data[at] == '-') {
            ++at;
        }
        at = digits_from(at);
    }
    return at;
}

int hex_value(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

void append_utf8(std::string& out, unsigned code_point) {
    if (code_point < 0x80) {
        out.push_back(static_cast<char>(code_point));
    } else if (code_point < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (code_point >> 6)));
        out.push_back(static_cast<char>(0x80 | (code_point & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xE0 | (code_point >> 12)));
        out.push_back(static_cast<char>(0x80 | ((code_point >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (code_point & 0x3F)));
    }
}

}  // namespace

// Each value but the outermost has a first byte and, just past its end, a
// separator or its container's closing bracket, and no two share either: a
// text of n bytes holds at most (n + 1) / 2 values. A first chunk of that
// size never fills with a text the loader takes, so a small text does not
// pay for a whole chunk, and the chunks that follow a whole first chunk
// keep the index arithmetic.
void JsonTree::reserve_for(std::size_t text_bytes) {
    capacity_ = static_cast<std::uint32_t>(std::min<std::size_t>(chunk_size, text_bytes / 2 + 1));
    chunks_.emplace_back(new TreeValue[capacity_]);
}

void JsonTree::grow() {
    chunks_.emplace_back(new TreeValue[chunk_size]);
    capacity_ += chunk_size;
}

void JsonTree::release_inside(std::uint32_t index) const {
    TreeValue const& container = (*this)[index];
    if (!container.is_container()) {
        return;
    }
    // Chunk 0 is of another size, and never wholly inside a container but
    // the root, which stays.
    std::uint32_t const first = (index + 1 + chunk_size - 1) / chunk_size;
    std::uint32_t const end = container.offset_or_next / chunk_size;
    for (std::uint32_t chunk = std::max(first, 1U); chunk < end; ++chunk) {
        chunks_[chunk].reset();
    }
}

// Either the map has a key twice, and only the first pair with that key
// counts, or the pair after the last match was not the one.
std::uint32_t JsonTree::find_from_start(std::uint32_t map, std::string_view key, std::uint32_t& hint) const {
    std::uint32_t const end = (*this)[map].offset_or_next;
    // The pairs of most maps lie in one chunk, reached once rather than at
    // every step.
    TreeValue const* const chunk = chunks_[map / chunk_size].get();
    bool const one_chunk = map / chunk_size == (end - 1) / chunk_size;
    for (std::uint32_t index = map + 1; index != end;) {
        TreeValue const& candidate = one_chunk ? chunk[index % chunk_size] : (*this)[index];
        TreeValue const& value = one_chunk ? chunk[(index + 1) % chunk_size] : (*this)[index + 1];
        std::uint32_t const after = value.is_container() ? value.offset_or_next : index + 2;
        if (text_is(candidate, key)) {
            hint = after;
            return index + 1;
        }
        index = after;
    }
    return size_;
}

// One loop reads the values in text order, with the containers that are
// open on a stack of its own: the tree needs no recursion, and a text
// nested deeper than yaml-cpp reads is declined before it costs stack.
// Each step returns where the text goes on, or nullptr to decline.
class StrictJsonLoader {
public:
    explicit StrictJsonLoader(std::string_view text) : begin_(text.data()), end_(text.data() + text.size()) {
        tree_.source_ = text;
        tree_.reserve_for(text.size());
        slot_ = tree_.chunks_.back().get();
        chunk_end_ = slot_ + tree_.capacity_;
    }

    std::optional<JsonTree> load() {
        if (end_ - begin_ >= std::numeric_limits<std::uint32_t>::max()) {
            return std::nullopt;
        }
        char const* p = skip_blanks(begin_);
        if (p == nullptr || p == end_ || (*p != '{' && *p != '[')) {
            return std::nullopt;
        }
        p = parse_root(p);
        if (p == nullptr || skip_blanks(p) != end_) {
            return std::nullopt;
        }
        tree_.size_ = size();
        return std::move(tree_);
    }

private:
    // Keys of one map so far, as one bit each of a hash: a key whose bit is
    // new is surely new, and only a key whose bit is taken is compared with
    // the keys before it.
    struct KeysSeen {
        std::uint64_t bits;
        bool unique;
    };

    // A container whose closing bracket is still to come. Without default
    // values, so that the stack of them costs nothing until it is used: a
    // small text would pay more for filling it than for being read.
    struct OpenContainer {
        std::uint32_t index;
        std::uint32_t count;
        KeysSeen seen;
        char close_bracket;

        bool is_map() const { return close_bracket == '}'; }
    };

    // Blanks between tokens, up to the next byte that is none, or nullptr
    // at a CR that starts no CRLF: yaml-cpp does not take a lone CR for a
    // line break.
    char const* skip_blanks(char const* p) const {
        while (p != end_ && maybe_blank(*p)) {
            char const c = *p;
            if (c == ' ' || c == '\t' || c == '\n') {
                ++p;
            } else if (c == '\r') {
                if (end_ - p < 2 || p[1] != '\n') {
                    return nullptr;
                }
                p += 2;
            } else {
                break;
            }
        }
        return p;
    }

    // The next token at or past `p`; every caller needs one.
    char const* next_token(char const* p) const {
        if (p != end_ && !maybe_blank(*p)) {
            return p;
        }
        p = skip_blanks(p);
        return p == end_ ? nullptr : p;
    }

    // The root container at `p` and all it holds.
    char const* parse_root(char const* p) {
        OpenContainer open[max_depth];
        int depth = 0;
        std::string_view text;
        for (;;) {
            switch (*p) {
                case '{':
                case '[': {
                    if (depth == max_depth) {
                        return nullptr;
                    }
                    OpenContainer& inner = open[depth];
                    if (!open_container(*p, inner) || (p = next_token(p + 1)) == nullptr) {
                        return nullptr;
                    }
                    if (*p != inner.close_bracket) {
                        ++depth;
                        if (inner.is_map() && (p = parse_key(p, inner)) == nullptr) {
                            return nullptr;
                        }
                        continue;
                    }
                    ++p;
                    if (!close(inner)) {
                        return nullptr;
                    }
                    break;
                }
                case '"': p = parse_string(p, text); break;
                case 't': p = parse_literal(p, "true", TreeKind::plain); break;
                case 'f': p = parse_literal(p, "false", TreeKind::plain); break;
                case 'n': p = parse_literal(p, "null", TreeKind::null); break;
                default: p = parse_number(p); break;
            }
            if (p == nullptr) {
                return nullptr;
            }
            // Past a value: close what ends here, then on to the next entry.
            for (;;) {
                if (depth == 0) {
                    return p;
                }
                OpenContainer& outer = open[depth - 1];
                ++outer.count;
                if ((p = next_token(p)) == nullptr) {
                    return nullptr;
                }
                if (*p == ',') {
                    if ((p = next_token(p + 1)) == nullptr ||
                        (outer.is_map() && (p = parse_key(p, outer)) == nullptr)) {
                        return nullptr;
                    }
                    break;
                }
                if (*p != outer.close_bracket || !close(outer)) {
                    return nullptr;
                }
                ++p;
                --depth;
            }
        }
    }

    std::uint32_t size() const { return tree_.capacity_ - static_cast<std::uint32_t>(chunk_end_ - slot_); }

    std::uint32_t offset(char const* p) const { return static_cast<std::uint32_t>(p - begin_); }

    bool push(TreeValue const& value) {
        if (slot_ == chunk_end_ && !next_chunk()) {
            return false;
        }
        *slot_ = value;
        ++slot_;
        return true;
    }

    // A first chunk shorter than the others fills only in a text that is
    // declined anyway, with more brackets opened than closed: the values
    // that follow would not be where the index arithmetic looks for them.
    bool next_chunk() {
        if (tree_.capacity_ % JsonTree::chunk_size != 0) {
            return false;
        }
        tree_.grow();
        slot_ = tree_.chunks_.back().get();
        chunk_end_ = slot_ + JsonTree::chunk_size;
        return true;
    }

    bool open_container(char open_bracket, OpenContainer& container) {
        bool const map = open_bracket == '{';
        container = OpenContainer{size(), 0, KeysSeen{0, true}, map ? '}' : ']'};
        return push(TreeValue{0, static_cast<std::uint32_t>(map ? TreeKind::map : TreeKind::sequence), 0, 0});
    }

    bool close(OpenContainer const& container) {
        if (container.count > JsonTree::max_size) {
            return false;
        }
        TreeValue& value = tree_[container.index];
        value.offset_or_next = size();
        value.size = container.count;
        value.flag = container.is_map() && container.seen.unique;
        return true;
    }

    bool push_scalar(TreeKind kind, std::size_t offset, std::size_t size, bool decoded) {
        if (size > JsonTree::max_size) {
            return false;
        }
        return push(TreeValue{static_cast<std::uint32_t>(offset), static_cast<std::uint32_t>(kind), decoded,
                              static_cast<std::uint32_t>(size)});
    }

    static unsigned key_bit(std::string_view key) {
        if (key.empty()) {
            return 0;
        }
        auto const byte = [&](std::size_t at) {
            return static_cast<std::uint32_t>(static_cast<unsigned char>(key[at]));
        };
        std::uint32_t const mixed = static_cast<std::uint32_t>(key.size()) ^ (byte(0) << 8) ^
                                    (byte(key.size() - 1) << 16) ^ (byte(key.size() / 2) << 24);
        return (mixed * 0x9E3779B1U) >> 26;
    }

    // `key` is the text of the value pushed last.
    void note_key(OpenContainer& map, std::string_view key) {
        if (!map.seen.unique) {
            return;
        }
        std::uint64_t const bit = std::uint64_t{1} << key_bit(key);
        if ((map.seen.bits & bit) != 0) {
            std::uint32_t const last = size() - 1;
            for (std::uint32_t earlier = map.index + 1; earlier != last; earlier = tree_.next(earlier + 1)) {
                if (tree_.key_is(earlier, key)) {
                    map.seen.unique = false;
                    return;
                }
            }
        }
        map.seen.bits |= bit;
    }

    // A key at `p` and its colon, up to its value.
    char const* parse_key(char const* p, OpenContainer& map) {
        char const* const quote = p;
        std::string_view key;
        if (*p != '"' || (p = parse_string(p, key)) == nullptr) {
            return nullptr;
        }
        note_key(map, key);
        // yaml-cpp refuses a line break between a key and its colon.
        while (p != end_ && (*p == ' ' || *p == '\t')) {
            ++p;
        }
        if (p == end_ || *p != ':' || p - quote > max_key_to_colon) {
            return nullptr;
        }
        return next_token(p + 1);
    }

    template <std::size_t N>
    char const* parse_literal(char const* p, char const (&word)[N], TreeKind kind) {
        constexpr std::size_t length = N - 1;
        if (static_cast<std::size_t>(end_ - p) < length || std::memcmp(p, word, length) != 0) {
            return nullptr;
        }
        return push_scalar(kind, offset(p), kind == TreeKind::null ? 0 : length, false) ? p + length : nullptr;
    }

    // Past one digit or more at `p`.
    char const* parse_digits(char const* p) const {
        char const* const past = skip_digits(p, end_);
        return past == p ? nullptr : past;
    }

    char const* parse_number(char const* p) {
        int const length =
            end_ - p >= number_window + number_lookahead ? number_length_in_window(p) : number_window;
        char const* const past = length == number_window ? skip_number(p) : length != 0 ? p + length : nullptr;
        if (past == nullptr ||
            !push_scalar(TreeKind::number, offset(p), static_cast<std::size_t>(past - p), false)) {
            return nullptr;
        }
        return past;
    }

    // Past a number of any length, near the end of the text too.
    char const* skip_number(char const* p) const {
        if (*p == '-') {
            ++p;
        }
        if (p != end_ && *p == '0') {
            ++p;
        } else if ((p = parse_digits(p)) == nullptr) {
            return nullptr;
        }
        if (p != end_ && *p == '.' && (p = parse_digits(p + 1)) == nullptr) {
            return nullptr;
        }
        if (p != end_ && (*p == 'e' || *p == 'E')) {
            ++p;
            if (p != end_ && (*p == '+' || *p == '-')) {
                ++p;
            }
            p = parse_digits(p);
        }
        return p;
    }

    // The string whose opening quote is at `p`; `text` is what it holds.
    // Most strings hold no escape and stay views into the source.
    char const* parse_string(char const* p, std::string_view& text) {
        char const* const start = p + 1;
        char const* const stop = find_plain_string_end(start, end_);
        if (stop != end_ && *stop == '"') {
            text = std::string_view(start, static_cast<std::size_t>(stop - start));
            return push_scalar(TreeKind::quoted, offset(start), text.size(), false) ? stop + 1 : nullptr;
        }
        return stop != end_ && *stop == '\\' ? parse_escaped_string(start, stop, text) : nullptr;
    }

    // The rest of a string from its first backslash at `p`, decoded into
    // the tree's buffer.
    char const* parse_escaped_string(char const* start, char const* p, std::string_view& text) {
        std::string& out = tree_.decoded_;
        std::size_t const begin = out.size();
        out.append(start, p);
        while (*p == '\\') {
            if ((p = decode_escape(p, out)) == nullptr) {
                return nullptr;
            }
            char const* const stop = find_plain_string_end(p, end_);
            if (stop == end_) {
                return nullptr;
            }
            out.append(p, stop);
            p = stop;
        }
        if (*p != '"' || !push_scalar(TreeKind::quoted, begin, out.size() - begin, true)) {
            return nullptr;
        }
        text = std::string_view(out).substr(begin);
        return p + 1;
    }

    char const* decode_escape(char const* p, std::string& out) const {
        if (end_ - p < 2) {
            return nullptr;
        }
        char const letter = p[1];
        p += 2;
        switch (letter) {
            case '"': out.push_back('"'); return p;
            case '\\': out.push_back('\\'); return p;
            case '/': out.push_back('/'); return p;
            case 'b': out.push_back('\b'); return p;
            case 'f': out.push_back('\f'); return p;
            case 'n': out.push_back('\n'); return p;
            case 'r': out.push_back('\r'); return p;
            case 't': out.push_back('\t'); return p;
            case 'u': return decode_unicode_escape(p, out);
            default: return nullptr;
        }
    }

    // yaml-cpp refuses every escape of a UTF-16 surrogate, even a valid pair.
    char const* decode_unicode_escape(char const* p, std::string& out) const {
        if (end_ - p < 4) {
            return nullptr;
        }
        unsigned code_point = 0;
        for (int i = 0; i < 4; ++i) {
            int const digit = hex_value(p[i]);
            if (digit < 0) {
                return nullptr;
            }
            code_point = code_point * 16 + static_cast<unsigned>(digit);
        }
        if (code_point >= 0xD800 && code_point <= 0xDFFF) {
            return nullptr;
        }
        append_utf8(out, code_point);
        return p + 4;
    }

    char const* begin_;
    char const* end_;
    JsonTree tree_;
    // Where the next value goes, and the end of its chunk.
    TreeValue* slot_;
    TreeValue* chunk_end_;
};

std::optional<JsonTree> load_strict_json(std::string_view text) { return StrictJsonLoader(text).load(); }

}  // namespace morv::qc::json
