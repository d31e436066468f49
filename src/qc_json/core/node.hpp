#pragma once

// The one door through which the readers reach the parsed text. A node is
// either a value of the tree of a strict JSON text or a yaml-cpp node, and it
// keeps the lookup and conversion rules of a yaml-cpp node in both cases:
// looking a key up in a scalar, or in a node that a missing key gave, throws
// YAML::Exception, and that exception ends the whole decode. Nothing outside
// this layer and the entry points includes yaml-cpp.

#include "core/json_tree.hpp"
#include "core/scalar_conversion.hpp"

#include <yaml-cpp/yaml.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace morv::qc::json {

// What a field reader finds under a key: nothing (no such key, or a null),
// a value that the conversion refuses, or the value, converted.
enum class FieldState : std::uint8_t { missing, refused, read };

template <typename T>
struct FieldValue {
    FieldState state;
    T value;
};

class Node {
public:
    explicit Node(YAML::Node node) : node_(std::move(node)) {}
    // The value at `index` of `tree`.
    Node(JsonTree const& tree, std::uint32_t index) : node_(TreeRef{&tree, index, 0}) {}

    // The child at `key`. A sequence or null parent yields an undefined node;
    // a scalar parent or an undefined parent throws. A map yields the value
    // of the first pair with that key.
    Node operator[](std::string_view key) const;

    bool defined() const;
    // These four are false for an undefined node.
    bool is_null() const;
    bool is_scalar() const;
    bool is_sequence() const;
    bool is_map() const;

    // "!" for a quoted scalar.
    std::string_view tag() const;
    // Empty for anything but a scalar.
    std::string_view scalar() const;
    std::size_t size() const;

    // yaml-cpp's conversion; throws YAML::Exception when it refuses.
    template <typename T>
    T as() const;

    // The same conversion, with a refusal turned into an empty optional.
    template <typename T>
    std::optional<T> try_as() const;

    // (*this)[key] tested for a null and converted with try_as, in one
    // step on the tree, where the field readers spend most of a decode.
    template <typename T>
    FieldValue<T> field(std::string_view key) const;

    // On the tree, when this is a map of exactly the pairs of `keys`, in that
    // order, each value a number that converts: true, with the values in
    // `values`. False otherwise, with nothing read, and the caller reads field
    // by field, which finds the same values in such a map. The small records
    // that fill most of a large document (vectors, source positions) are read
    // in one step this way.
    template <typename T, std::size_t N>
    bool numbers_in_order(std::array<std::string_view, N> const& keys, std::array<T, N>& values) const;

    // Done with: on the tree, the memory of what this value holds may go, and
    // nothing inside it may be read afterwards. Nothing on yaml-cpp.
    void release() const;

    class ElementIterator;
    class MemberIterator;
    struct Member;

    // Children of a sequence, in text order. The readers test the kind of a
    // node before they walk it; on the tree, anything but a sequence has no
    // elements and anything but a map no members.
    class Elements;
    Elements elements() const;
    // Key and value pairs of a map, in text order.
    class Members;
    Members members() const;

private:
    struct TreeRef {
        // An index past the end of the tree marks an undefined node.
        JsonTree const* tree;
        std::uint32_t index;
        // Where the next lookup in this map starts.
        mutable std::uint32_t hint;

        bool defined() const { return index < tree->end(); }
        TreeValue const& value() const { return (*tree)[index]; }
    };

    TreeRef const* tree_ref() const { return std::get_if<TreeRef>(&node_); }
    YAML::Node const& yaml() const { return std::get<YAML::Node>(node_); }
    bool has_kind(TreeKind kind, YAML::NodeType::value type) const;
    static std::pair<std::uint32_t, std::uint32_t> children(TreeRef const& ref, TreeKind kind);
    template <typename T>
    FieldValue<T> field_elsewhere(std::string_view key) const;

    std::variant<TreeRef, YAML::Node> node_;
};

struct Node::Member {
    Node key;
    Node value;
};

// On the tree an iterator is an index; on yaml-cpp it is yaml-cpp's own.
class Node::ElementIterator {
public:
    ElementIterator(JsonTree const& tree, std::uint32_t index) : tree_(&tree), index_(index) {}
    explicit ElementIterator(YAML::const_iterator it) : it_(std::move(it)) {}

    Node operator*() const { return tree_ ? Node(*tree_, index_) : Node(*it_); }
    ElementIterator& operator++() {
        if (tree_) {
            index_ = tree_->next(index_);
        } else {
            ++it_;
        }
        return *this;
    }
    bool operator!=(ElementIterator const& other) const { return tree_ ? index_ != other.index_ : it_ != other.it_; }

private:
    JsonTree const* tree_ = nullptr;
    std::uint32_t index_ = 0;
    YAML::const_iterator it_;
};

// On the tree a pair is a key at `index_` followed by its value.
class Node::MemberIterator {
public:
    MemberIterator(JsonTree const& tree, std::uint32_t index) : tree_(&tree), index_(index) {}
    explicit MemberIterator(YAML::const_iterator it) : it_(std::move(it)) {}

    Member operator*() const {
        return tree_ ? Member{Node(*tree_, index_), Node(*tree_, index_ + 1)} : Member{Node(it_->first), Node(it_->second)};
    }
    MemberIterator& operator++() {
        if (tree_) {
            index_ = tree_->next(index_ + 1);
        } else {
            ++it_;
        }
        return *this;
    }
    bool operator!=(MemberIterator const& other) const { return tree_ ? index_ != other.index_ : it_ != other.it_; }

private:
    JsonTree const* tree_ = nullptr;
    std::uint32_t index_ = 0;
    YAML::const_iterator it_;
};

template <typename Iterator>
class NodeRange {
public:
    NodeRange(Iterator begin, Iterator end) : begin_(std::move(begin)), end_(std::move(end)) {}
    Iterator begin() const { return begin_; }
    Iterator end() const { return end_; }

private:
    // A yaml-cpp iterator keeps its node alive, so a range taken from a
    // temporary node stays valid.
    Iterator begin_;
    Iterator end_;
};

class Node::Elements : public NodeRange<ElementIterator> {
    using NodeRange::NodeRange;
};

class Node::Members : public NodeRange<MemberIterator> {
    using NodeRange::NodeRange;
};

// Inline, so that the value goes back to the field reader in registers.
template <typename T>
FieldValue<T> Node::field(std::string_view key) const {
    TreeRef const* ref = tree_ref();
    if (!ref || !ref->defined() || ref->value().kind() != TreeKind::map) {
        return field_elsewhere<T>(key);
    }
    JsonTree const& tree = *ref->tree;
    std::uint32_t const index = tree.find(ref->index, key, ref->hint);
    if (index == tree.end()) {
        return {FieldState::missing, T{}};
    }
    TreeValue const& value = tree[index];
    switch (value.kind()) {
        case TreeKind::null: return {FieldState::missing, T{}};
        case TreeKind::sequence:
        case TreeKind::map: return {FieldState::refused, T{}};
        case TreeKind::plain:
        case TreeKind::number:
        case TreeKind::quoted: break;
    }
    std::optional<T> converted = convert_scalar<T>(tree.text(value), value.kind() == TreeKind::number);
    if (!converted) {
        return {FieldState::refused, T{}};
    }
    return {FieldState::read, std::move(*converted)};
}

template <typename T, std::size_t N>
bool Node::numbers_in_order(std::array<std::string_view, N> const& keys, std::array<T, N>& values) const {
    TreeRef const* ref = tree_ref();
    if (!ref || !ref->defined() || ref->value().kind() != TreeKind::map || ref->value().size != N) {
        return false;
    }
    JsonTree const& tree = *ref->tree;
    // Each value is a scalar, so the pairs are two apart.
    for (std::size_t at = 0; at < N; ++at) {
        std::uint32_t const key = ref->index + 1 + 2 * static_cast<std::uint32_t>(at);
        TreeValue const& value = tree[key + 1];
        if (value.kind() != TreeKind::number || !tree.key_is(key, keys[at])) {
            return false;
        }
        std::optional<T> const converted = convert_scalar<T>(tree.text(value), true);
        if (!converted) {
            return false;
        }
        values[at] = *converted;
    }
    return true;
}

// Parses a whole text with yaml-cpp; throws YAML::Exception when yaml-cpp
// refuses it.
Node load_text(std::string const& text);

}  // namespace morv::qc::json
