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
            case '{': return parse_container(depth + 1, TreeKind::map, '}', &StrictJsonLoader::parse_pair);
            case '[': return parse_container(depth + 1, TreeKind::sequence, ']', &StrictJsonLoader::parse_value);
            case '"': return parse_string();
            case 't': return parse_literal("true", TreeKind::plain);
            case 'f': return parse_literal("false", TreeKind::plain);
            case 'n': return parse_literal("null", TreeKind::null);
            default: return parse_number();
        }
    }

    std::uint32_t open(TreeKind kind) { return tree_.push_back(TreeValue{0, 0, 0, kind, false}); }

    void close(std::uint32_t index, std::uint32_t count) {
        TreeValue& container = tree_[index];
        container.size = count;
        container.next = tree_.end();
    }

    void push_scalar(TreeKind kind, std::size_t offset, std::size_t size, bool decoded) {
        tree_.push_back(TreeValue{static_cast<std::uint32_t>(offset), static_cast<std::uint32_t>(size), tree_.end() + 1,
                                  kind, decoded});
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

    // The entries of a sequence or a map up to its closing bracket; `entry`
    // reads one element or one pair.
    bool parse_container(int depth, TreeKind kind, char close_bracket, bool (StrictJsonLoader::*entry)(int)) {
        if (depth > max_depth) {
            return false;
        }
        std::uint32_t const index = open(kind);
        ++p_;
        if (!skip_blanks() || p_ == end_) {
            return false;
        }
        std::uint32_t count = 0;
        bool closed = at(close_bracket);
        if (closed) {
            ++p_;
        }
        while (!closed) {
            if (!(this->*entry)(depth)) {
                return false;
            }
            ++count;
            if (!next_entry(close_bracket, closed)) {
                return false;
            }
        }
        close(index, count);
        return true;
    }

    bool parse_pair(int depth) {
        char const* const key = p_;
        if (*p_ != '"' || !parse_string()) {
            return false;
        }
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
        push_scalar(kind, static_cast<std::size_t>(p_ - begin_), kind == TreeKind::null ? 0 : length, false);
        p_ += length;
        return true;
    }

    bool skip_digits() {
        char const* const first = p_;
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
        push_scalar(TreeKind::number, static_cast<std::size_t>(start - begin_), static_cast<std::size_t>(p_ - start),
                    false);
        return true;
    }

    // Most strings hold no escape and stay views into the source.
    bool parse_string() {
        char const* const start = ++p_;
        while (p_ != end_) {
            auto const c = static_cast<unsigned char>(*p_);
            if (c == '"') {
                push_scalar(TreeKind::quoted, static_cast<std::size_t>(start - begin_),
                            static_cast<std::size_t>(p_ - start), false);
                ++p_;
                return true;
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
                push_scalar(TreeKind::quoted, offset, out.size() - offset, true);
                ++p_;
                return true;
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
