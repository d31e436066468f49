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

// Without default values, so that a chunk is not filled before the loader
// writes each value it holds.
struct TreeValue {
    // Where the text of a scalar starts, in the source or in the buffer of
    // decoded strings.
    std::uint32_t offset;
    // Bytes of a scalar's text, elements of a sequence, pairs of a map.
    std::uint32_t size;
    // The index just past this value and everything it holds.
    std::uint32_t next;
    TreeKind kind;
    bool decoded;
};

class JsonTree {
public:
    TreeValue const& operator[](std::uint32_t index) const { return chunks_[index / chunk_size][index % chunk_size]; }
    TreeValue& operator[](std::uint32_t index) { return chunks_[index / chunk_size][index % chunk_size]; }
    std::uint32_t end() const { return size_; }

    std::string_view text(TreeValue const& value) const {
        char const* const base = value.decoded ? decoded_.data() : source_.data();
        return std::string_view(base + value.offset, value.size);
    }

private:
    friend class StrictJsonLoader;

    // 64 K values, 1 MiB.
    static constexpr std::uint32_t chunk_size = 1U << 16;

    void reserve_for(std::size_t text_bytes);

    std::uint32_t push_back(TreeValue const& value) {
        if (size_ == capacity_) {
            grow();
        }
        (*this)[size_] = value;
        return size_++;
    }

    void grow();

    std::string_view source_;
    std::string decoded_;
    std::vector<std::unique_ptr<TreeValue[]>> chunks_;
    std::uint32_t size_ = 0;
    std::uint32_t capacity_ = 0;
};

// The tree of `text`, its root at index 0; nothing when the text is not
// strict JSON with an object or array at its root, or when yaml-cpp would
// read it differently or refuse it. The tree views `text`, which must
// outlive it.
std::optional<JsonTree> load_strict_json(std::string_view text);

}  // namespace morv::qc::json
