#pragma once

// The one door through which the readers reach the parsed text. It keeps the
// lookup and conversion rules of a yaml-cpp node: looking a key up in a
// scalar, or in a node that a missing key gave, throws YAML::Exception, and
// that exception ends the whole decode. Nothing outside this layer and the
// entry points includes yaml-cpp.

#include <yaml-cpp/yaml.h>

#include <cstddef>
#include <optional>
#include <string>

namespace morv::qc::json {

class Node {
public:
    Node() = default;
    explicit Node(YAML::Node node) : node_(std::move(node)) {}

    // The child at `key`. A sequence or null parent yields an undefined node;
    // a scalar parent or an undefined parent throws.
    Node operator[](char const* key) const;

    bool defined() const;
    // These four are false for an undefined node.
    bool is_null() const;
    bool is_scalar() const;
    bool is_sequence() const;
    bool is_map() const;

    // "!" for a quoted scalar.
    std::string const& tag() const;
    // Empty for anything but a scalar.
    std::string const& scalar() const;
    std::size_t size() const;

    // yaml-cpp's conversion; throws YAML::Exception when it refuses.
    template <typename T>
    T as() const;

    // The same conversion, with a refusal turned into an empty optional.
    template <typename T>
    std::optional<T> try_as() const;

    class ElementIterator;
    class MemberIterator;
    struct Member;

    // Children of a sequence, in text order.
    class Elements;
    Elements elements() const;
    // Key and value pairs of a map, in text order.
    class Members;
    Members members() const;

private:
    YAML::Node node_;
};

struct Node::Member {
    Node key;
    Node value;
};

class Node::ElementIterator {
public:
    explicit ElementIterator(YAML::const_iterator it) : it_(std::move(it)) {}
    Node operator*() const { return Node(*it_); }
    ElementIterator& operator++() {
        ++it_;
        return *this;
    }
    bool operator!=(ElementIterator const& other) const { return it_ != other.it_; }

private:
    YAML::const_iterator it_;
};

class Node::MemberIterator {
public:
    explicit MemberIterator(YAML::const_iterator it) : it_(std::move(it)) {}
    Member operator*() const { return Member{Node(it_->first), Node(it_->second)}; }
    MemberIterator& operator++() {
        ++it_;
        return *this;
    }
    bool operator!=(MemberIterator const& other) const { return it_ != other.it_; }

private:
    YAML::const_iterator it_;
};

class Node::Elements {
public:
    explicit Elements(YAML::Node node) : node_(std::move(node)) {}
    ElementIterator begin() const { return ElementIterator(node_.begin()); }
    ElementIterator end() const { return ElementIterator(node_.end()); }

private:
    // Held by value so that a range taken from a temporary node stays valid.
    YAML::Node node_;
};

class Node::Members {
public:
    explicit Members(YAML::Node node) : node_(std::move(node)) {}
    MemberIterator begin() const { return MemberIterator(node_.begin()); }
    MemberIterator end() const { return MemberIterator(node_.end()); }

private:
    YAML::Node node_;
};

// Parses a whole text; throws YAML::Exception when yaml-cpp refuses it.
Node load_text(std::string const& text);

}  // namespace morv::qc::json
