#include "core/json_tree.hpp"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>

namespace morv::qc::json {
namespace {

// yaml-cpp refuses nesting a little short of 500 levels. Real documents are
// a dozen deep, so the tree declines long before yaml-cpp would.
constexpr int max_depth = 256;

// yaml-cpp refuses a key whose opening quote stands more than 1,024 bytes
// before its colon; keys that come anywhere near are left to it.
constexpr std::ptrdiff_t max_key_to_colon = 1000;

// The first byte of a word loaded from the text is its lowest.
constexpr bool little_endian = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;

bool is_digit(char c) { return c >= '0' && c <= '9'; }

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
// size never fills, so a small text does not pay for a whole chunk, and the
// chunks that follow a whole first chunk keep the index arithmetic.
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
    for (std::uint32_t index = map + 1; index != (*this)[map].offset_or_next; index = next(index + 1)) {
        if (key_is(index, key)) {
            hint = next(index + 1);
            return index + 1;
        }
    }
    return size_;
}

class StrictJsonLoader {
public:
    explicit StrictJsonLoader(std::string_view text)
        : begin_(text.data()), p_(text.data()), end_(text.data() + text.size()) {
        tree_.source_ = text;
        tree_.reserve_for(text.size());
    }

    std::optional<JsonTree> load() {
        if (end_ - begin_ >= std::numeric_limits<std::uint32_t>::max()) {
            return std::nullopt;
        }
        if (!skip_blanks() || p_ == end_ || (*p_ != '{' && *p_ != '[')) {
            return std::nullopt;
        }
        if (!parse_value(0) || !skip_blanks() || p_ != end_) {
            return std::nullopt;
        }
        return std::move(tree_);
    }

private:
    // Blanks between tokens. A CR must start a CRLF: yaml-cpp does not take a
    // lone CR for a line break.
    bool skip_blanks() {
        while (p_ != end_) {
            char const c = *p_;
            if (c == ' ' || c == '\t' || c == '\n') {
                ++p_;
            } else if (c == '\r') {
                if (end_ - p_ < 2 || p_[1] != '\n') {
                    return false;
                }
                p_ += 2;
            } else {
                break;
            }
        }
        return true;
    }

    // yaml-cpp refuses a line break between a key and its colon.
    void skip_blanks_within_line() {
        while (p_ != end_ && (*p_ == ' ' || *p_ == '\t')) {
            ++p_;
        }
    }

    bool at(char c) const { return p_ != end_ && *p_ == c; }

    bool parse_value(int depth) {
        switch (*p_) {
            case '{': return parse_map(depth + 1);
            case '[': return parse_sequence(depth + 1);
            case '"': return parse_string();
            case 't': return parse_literal("true", TreeKind::plain);
            case 'f': return parse_literal("false", TreeKind::plain);
            case 'n': return parse_literal("null", TreeKind::null);
            default: return parse_number();
        }
    }

    std::uint32_t open(TreeKind kind) { return tree_.push_back(TreeValue{0, static_cast<std::uint32_t>(kind), 0, 0}); }

    bool close(std::uint32_t index, std::uint32_t count, bool unique_keys) {
        if (count > JsonTree::max_size) {
            return false;
        }
        TreeValue& container = tree_[index];
        container.offset_or_next = tree_.end();
        container.size = count;
        container.flag = unique_keys;
        return true;
    }

    bool push_scalar(TreeKind kind, std::size_t offset, std::size_t size, bool decoded) {
        if (size > JsonTree::max_size) {
            return false;
        }
        tree_.push_back(TreeValue{static_cast<std::uint32_t>(offset), static_cast<std::uint32_t>(kind), decoded,
                                  static_cast<std::uint32_t>(size)});
        return true;
    }

    // After an element or a pair: true at the closing bracket, and past a
    // comma at the start of the next one.
    bool next_entry(char close_bracket, bool& closed) {
        if (!skip_blanks() || p_ == end_) {
            return false;
        }
        if (*p_ == close_bracket) {
            ++p_;
            closed = true;
            return true;
        }
        if (*p_ != ',') {
            return false;
        }
        ++p_;
        return skip_blanks() && p_ != end_;
    }

    // The entries of a sequence or a map up to its closing bracket, the
    // index of the container and the count of its entries; `entry` reads
    // one element or one pair.
    template <typename Entry>
    bool parse_entries(int depth, TreeKind kind, char close_bracket, std::uint32_t& index, std::uint32_t& count,
                       Entry entry) {
        if (depth > max_depth) {
            return false;
        }
        index = open(kind);
        ++p_;
        if (!skip_blanks() || p_ == end_) {
            return false;
        }
        count = 0;
        bool closed = at(close_bracket);
        if (closed) {
            ++p_;
        }
        while (!closed) {
            if (!entry()) {
                return false;
            }
            ++count;
            if (!next_entry(close_bracket, closed)) {
                return false;
            }
        }
        return true;
    }

    bool parse_sequence(int depth) {
        std::uint32_t index = 0;
        std::uint32_t count = 0;
        return parse_entries(depth, TreeKind::sequence, ']', index, count, [&] { return parse_value(depth); }) &&
               close(index, count, false);
    }

    bool parse_map(int depth) {
        std::uint32_t index = 0;
        std::uint32_t count = 0;
        KeysSeen seen;
        return parse_entries(depth, TreeKind::map, '}', index, count,
                             [&] { return parse_pair(depth, index, seen); }) &&
               close(index, count, seen.unique);
    }

    // Keys of one map so far, as one bit each of a hash: a key whose bit is
    // new is surely new, and only a key whose bit is taken is compared with
    // the keys before it.
    struct KeysSeen {
        std::uint64_t bits = 0;
        bool unique = true;
    };

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

    void note_key(std::uint32_t map, std::uint32_t key, KeysSeen& seen) {
        if (!seen.unique) {
            return;
        }
        std::string_view const text = tree_.text(tree_[key]);
        std::uint64_t const bit = std::uint64_t{1} << key_bit(text);
        if ((seen.bits & bit) != 0) {
            for (std::uint32_t earlier = map + 1; earlier != key; earlier = tree_.next(earlier + 1)) {
                if (tree_.key_is(earlier, text)) {
                    seen.unique = false;
                    return;
                }
            }
        }
        seen.bits |= bit;
    }

    bool parse_pair(int depth, std::uint32_t map, KeysSeen& seen) {
        char const* const key = p_;
        if (*p_ != '"' || !parse_string()) {
            return false;
        }
        note_key(map, tree_.end() - 1, seen);
        skip_blanks_within_line();
        if (!at(':') || p_ - key > max_key_to_colon) {
            return false;
        }
        ++p_;
        return skip_blanks() && p_ != end_ && parse_value(depth);
    }

    bool parse_literal(char const* word, TreeKind kind) {
        std::size_t const length = std::strlen(word);
        if (static_cast<std::size_t>(end_ - p_) < length || std::memcmp(p_, word, length) != 0) {
            return false;
        }
        std::size_t const offset = static_cast<std::size_t>(p_ - begin_);
        p_ += length;
        return push_scalar(kind, offset, kind == TreeKind::null ? 0 : length, false);
    }

    // Eight digits at a time while there are, then one at a time.
    bool skip_digits() {
        constexpr std::uint64_t ones = 0x0101010101010101U;
        char const* const first = p_;
        while (end_ - p_ >= 8) {
            std::uint64_t word = 0;
            std::memcpy(&word, p_, sizeof word);
            // Every byte is 0x30 to 0x39: its high half is 3, and adding 6
            // carries into no high half.
            if ((word & (ones * 0xF0)) != ones * 0x30 || ((word + ones * 0x06) & (ones * 0xF0)) != ones * 0x30) {
                break;
            }
            p_ += 8;
        }
        while (p_ != end_ && is_digit(*p_)) {
            ++p_;
        }
        return p_ != first;
    }

    bool parse_number() {
        char const* const start = p_;
        if (at('-')) {
            ++p_;
        }
        if (at('0')) {
            ++p_;
        } else if (!skip_digits()) {
            return false;
        }
        if (at('.')) {
            ++p_;
            if (!skip_digits()) {
                return false;
            }
        }
        if (at('e') || at('E')) {
            ++p_;
            if (at('+') || at('-')) {
                ++p_;
            }
            if (!skip_digits()) {
                return false;
            }
        }
        return push_scalar(TreeKind::number, static_cast<std::size_t>(start - begin_),
                           static_cast<std::size_t>(p_ - start), false);
    }

    // Moves over the bytes of a string that need no look, eight at a time,
    // up to the first quote, backslash or control character, or to the last
    // few bytes of the text.
    void skip_plain_string_bytes() {
        if constexpr (!little_endian) {
            return;
        }
        constexpr std::uint64_t ones = 0x0101010101010101U;
        constexpr std::uint64_t highs = 0x8080808080808080U;
        while (end_ - p_ >= 8) {
            std::uint64_t word = 0;
            std::memcpy(&word, p_, sizeof word);
            std::uint64_t const quote = word ^ (ones * '"');
            std::uint64_t const backslash = word ^ (ones * '\\');
            // The high bit of each byte that is zero, or below 0x20; a byte
            // after the first one found may be marked wrongly, never one
            // before it.
            std::uint64_t const found = ((quote - ones) & ~quote) | ((backslash - ones) & ~backslash) |
                                        ((word - ones * 0x20) & ~word);
            std::uint64_t const marks = found & highs;
            if (marks != 0) {
                p_ += __builtin_ctzll(marks) / 8;
                return;
            }
            p_ += 8;
        }
    }

    // Most strings hold no escape and stay views into the source.
    bool parse_string() {
        char const* const start = ++p_;
        while (p_ != end_) {
            skip_plain_string_bytes();
            if (p_ == end_) {
                break;
            }
            auto const c = static_cast<unsigned char>(*p_);
            if (c == '"') {
                std::size_t const size = static_cast<std::size_t>(p_ - start);
                ++p_;
                return push_scalar(TreeKind::quoted, static_cast<std::size_t>(start - begin_), size, false);
            }
            if (c == '\\') {
                return parse_escaped_string(start);
            }
            // yaml-cpp folds or refuses raw control characters and tabs.
            if (c < 0x20) {
                return false;
            }
            ++p_;
        }
        return false;
    }

    bool parse_escaped_string(char const* start) {
        std::string& out = tree_.decoded_;
        std::size_t const offset = out.size();
        out.append(start, p_);
        while (p_ != end_) {
            auto const c = static_cast<unsigned char>(*p_);
            if (c == '"') {
                ++p_;
                return push_scalar(TreeKind::quoted, offset, out.size() - offset, true);
            }
            if (c < 0x20) {
                return false;
            }
            if (c != '\\') {
                out.push_back(static_cast<char>(c));
                ++p_;
            } else if (!decode_escape(out)) {
                return false;
            }
        }
        return false;
    }

    bool decode_escape(std::string& out) {
        if (end_ - p_ < 2) {
            return false;
        }
        char const letter = p_[1];
        p_ += 2;
        switch (letter) {
            case '"': out.push_back('"'); return true;
            case '\\': out.push_back('\\'); return true;
            case '/': out.push_back('/'); return true;
            case 'b': out.push_back('\b'); return true;
            case 'f': out.push_back('\f'); return true;
            case 'n': out.push_back('\n'); return true;
            case 'r': out.push_back('\r'); return true;
            case 't': out.push_back('\t'); return true;
            case 'u': return decode_unicode_escape(out);
            default: return false;
        }
    }

    // yaml-cpp refuses every escape of a UTF-16 surrogate, even a valid pair.
    bool decode_unicode_escape(std::string& out) {
        if (end_ - p_ < 4) {
            return false;
        }
        unsigned code_point = 0;
        for (int i = 0; i < 4; ++i) {
            int const digit = hex_value(p_[i]);
            if (digit < 0) {
                return false;
            }
            code_point = code_point * 16 + static_cast<unsigned>(digit);
        }
        if (code_point >= 0xD800 && code_point <= 0xDFFF) {
            return false;
        }
        append_utf8(out, code_point);
        p_ += 4;
        return true;
    }

    char const* begin_;
    char const* p_;
    char const* end_;
    JsonTree tree_;
};

std::optional<JsonTree> load_strict_json(std::string_view text) { return StrictJsonLoader(text).load(); }

}  // namespace morv::qc::json
