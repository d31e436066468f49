#pragma once

// A read-only tree of a strict JSON text (RFC 8259), built in one pass and
// knowing nothing of the document format. It is built only for texts that
// yaml-cpp reads to the very same nodes; for any other text the loader
// declines, and the caller goes the long way through yaml-cpp.
//
// Values sit in one vector in text order, each container followed by all it
// holds, so a walk needs no pointers and the tree costs a few allocations in
// all. Scalar texts are views into the caller's text, or into the tree's own
// buffer for strings whose escapes had to be decoded.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morv::qc::json {

enum class TreeKind : std::uint8_t { null, plain, quoted, sequence, map };

struct TreeValue {
    // Where the text of a scalar starts, in the source or in the buffer of
    // decoded strings.
    std::uint32_t offset = 0;
    // Bytes of a scalar's text, elements of a sequence, pairs of a map.
    std::uint32_t size = 0;
    // The index just past this value and everything it holds.
    std::uint32_t next = 0;
    TreeKind kind = TreeKind::null;
    bool decoded = false;
};

class JsonTree {
public:
    TreeValue const& operator[](std::uint32_t index) const { return values_[index]; }
    std::uint32_t end() const { return static_cast<std::uint32_t>(values_.size()); }

    std::string_view text(TreeValue const& value) const {
        char const* const base = value.decoded ? decoded_.data() : source_.data();
        return std::string_view(base + value.offset, value.size);
    }

private:
    friend class StrictJsonLoader;

    std::string_view source_;
    std::string decoded_;
    std::vector<TreeValue> values_;
};

// The tree of `text`, its root at index 0; nothing when the text is not
// strict JSON with an object or array at its root, or when yaml-cpp would
// read it differently or refuse it. The tree views `text`, which must
// outlive it.
std::optional<JsonTree> load_strict_json(std::string_view text);

}  // namespace morv::qc::json
