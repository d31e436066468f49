#pragma once

// A read-only tree of a strict JSON text (RFC 8259), built in one pass and
// knowing nothing of the document format. It is built only for texts that
// yaml-cpp reads to the very same nodes; for any other text the loader
// declines, and the caller goes the long way through yaml-cpp.
//
// Values sit in text order, each container followed by all it holds, so a
// walk needs no pointers. They are stored in chunks of fixed size, which
// never move: the tree grows without the copy, and the double footprint, of
// a vector that reallocates. Scalar texts are views into the caller's text,
// or into the tree's own buffer for strings whose escapes had to be decoded.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morv::qc::json {

// `number` is a number as strict JSON spells it, `plain` is true or false.
enum class TreeKind : std::uint8_t { null, plain, number, quoted, sequence, map };

// Eight bytes, so that the tree of a text of short numbers stays smaller
// than the text itself. Without default values, so that a chunk is not
// filled before the loader writes each value it holds.
struct TreeValue {
    // A scalar's text starts here, in the source or in the buffer of decoded
    // strings. A container ends just before this index, everything it holds
    // included; a scalar ends at its own index + 1.
    std::uint32_t offset_or_next;
    std::uint32_t kind_bits : 3;
    // A scalar: its text is in the buffer of decoded strings. A map: no two
    // of its keys are the same, so a lookup may take the first match it
    // comes upon wherever it starts.
    std::uint32_t flag : 1;
    // Bytes of a scalar's text, elements of a sequence, pairs of a map.
    std::uint32_t size : 28;

    TreeKind kind() const { return static_cast<TreeKind>(kind_bits); }
    bool is_container() const { return kind_bits >= static_cast<std::uint32_t>(TreeKind::sequence); }
};

class JsonTree {
public:
    // A scalar of more bytes, or a container of more entries, is left to yaml-cpp.
    static constexpr std::uint32_t max_size = (1U << 28) - 1;

    TreeValue const& operator[](std::uint32_t index) const { return chunks_[index / chunk_size][index % chunk_size]; }
    TreeValue& operator[](std::uint32_t index) { return chunks_[index / chunk_size][index % chunk_size]; }
    std::uint32_t end() const { return size_; }

    // The index just past the value at `index` and everything it holds.
    std::uint32_t next(std::uint32_t index) const {
        TreeValue const& value = (*this)[index];
        return value.is_container() ? value.offset_or_next : index + 1;
    }

    std::string_view text(TreeValue const& value) const {
        char const* const base = value.flag ? decoded_.data() : source_.data();
        return std::string_view(base + value.offset_or_next, value.size);
    }

    // The index of the value of the first pair of the map at `map` whose key
    // is `key`, or end(). The key at index `hint` is tried first, where no
    // key is twice in the map: the readers mostly ask for the keys in the
    // order of the text, and `hint` becomes the key after the match.
    std::uint32_t find(std::uint32_t map, std::string_view key, std::uint32_t& hint) const {
        TreeValue const& parent = (*this)[map];
        if (hint != 0 && hint < parent.offset_or_next && parent.flag && key_is(hint, key)) {
            std::uint32_t const value = hint + 1;
            hint = next(value);
            return value;
        }
        return find_from_start(map, key, hint);
    }

    // Whether the scalar at `index` is the text `key`.
    bool key_is(std::uint32_t index, std::string_view key) const { return text_is((*this)[index], key); }

    // Frees the chunks that hold nothing but what the container at `index`
    // holds, once it has been read and will not be looked at again. The
    // decode holds the tree and the document it builds at once; freeing each
    // section of the document as soon as it is read keeps that sum down.
    void release_inside(std::uint32_t index) const;

private:
    friend class StrictJsonLoader;

    // 64 K values, 512 KiB.
    static constexpr std::uint32_t chunk_size = 1U << 16;

    void reserve_for(std::size_t text_bytes);

    void grow();

    std::uint32_t find_from_start(std::uint32_t map, std::string_view key, std::uint32_t& hint) const;

    // Keys are short: a loop beats a call of memcmp.
    bool text_is(TreeValue const& value, std::string_view key) const {
        if (value.size != key.size()) {
            return false;
        }
        char const* const stored = text(value).data();
        for (std::size_t at = 0; at < key.size(); ++at) {
            if (stored[at] != key[at]) {
                return false;
            }
        }
        return true;
    }

    std::string_view source_;
    std::string decoded_;
    // Mutable for release_inside, which frees only what nobody reads again.
    mutable std::vector<std::unique_ptr<TreeValue[]>> chunks_;
    std::uint32_t size_ = 0;
    std::uint32_t capacity_ = 0;
};

// The tree of `text`, its root at index 0; nothing when the text is not
// strict JSON with an object or array at its root, or when yaml-cpp would
// read it differently or refuse it. The tree views `text`, which must
// outlive it.
std::optional<JsonTree> load_strict_json(std::string_view text);

}  // namespace morv::qc::json
