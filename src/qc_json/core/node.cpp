#include "core/node.hpp"

#include "core/scalar_conversion.hpp"

#include <yaml-cpp/yaml.h>

#include <string>

namespace morv::qc::json {
namespace {

// The exceptions that yaml-cpp throws in the same places. Their texts never
// reach a diagnostic: a decode of the tree that ends in one is run again
// through yaml-cpp, which words the failure itself.
[[noreturn]] void throw_invalid_node() { throw YAML::InvalidNode(""); }

template <typename T>
[[noreturn]] void throw_bad_conversion() {
    throw YAML::TypedBadConversion<T>(YAML::Mark::null_mark());
}

bool is_scalar_kind(TreeKind kind) {
    return kind == TreeKind::plain || kind == TreeKind::number || kind == TreeKind::quoted;
}

}  // namespace

Node Node::operator[](std::string_view key) const {
    TreeRef const* ref = tree_ref();
    if (!ref) {
        YAML::Node const& parent = yaml();
        return Node(parent[std::string(key)]);
    }
    if (!ref->defined()) {
        throw_invalid_node();
    }
    TreeValue const& parent = ref->value();
    JsonTree const& tree = *ref->tree;
    if (is_scalar_kind(parent.kind())) {
        throw YAML::BadSubscript(YAML::Mark::null_mark(), std::string(key));
    }
    if (parent.kind() == TreeKind::map) {
        return Node(tree, tree.find(ref->index, key, ref->hint));
    }
    return Node(tree, tree.end());
}

bool Node::defined() const {
    if (TreeRef const* ref = tree_ref()) {
        return ref->defined();
    }
    return yaml().IsDefined();
}

bool Node::has_kind(TreeKind kind, YAML::NodeType::value type) const {
    if (TreeRef const* ref = tree_ref()) {
        return ref->defined() && ref->value().kind() == kind;
    }
    return yaml().IsDefined() && yaml().Type() == type;
}

bool Node::is_null() const { return has_kind(TreeKind::null, YAML::NodeType::Null); }

bool Node::is_scalar() const {
    if (TreeRef const* ref = tree_ref()) {
        return ref->defined() && is_scalar_kind(ref->value().kind());
    }
    return yaml().IsDefined() && yaml().IsScalar();
}

bool Node::is_sequence() const { return has_kind(TreeKind::sequence, YAML::NodeType::Sequence); }

bool Node::is_map() const { return has_kind(TreeKind::map, YAML::NodeType::Map); }

std::string_view Node::tag() const {
    TreeRef const* ref = tree_ref();
    if (!ref) {
        return yaml().Tag();
    }
    if (!ref->defined()) {
        throw_invalid_node();
    }
    switch (ref->value().kind()) {
        case TreeKind::null: return "";
        case TreeKind::quoted: return "!";
        case TreeKind::plain:
        case TreeKind::number:
        case TreeKind::sequence:
        case TreeKind::map: break;
    }
    return "?";
}

std::string_view Node::scalar() const {
    TreeRef const* ref = tree_ref();
    if (!ref) {
        return yaml().Scalar();
    }
    if (!ref->defined()) {
        throw_invalid_node();
    }
    TreeValue const& value = ref->value();
    if (is_scalar_kind(value.kind())) {
        return ref->tree->text(value);
    }
    return {};
}

std::size_t Node::size() const {
    TreeRef const* ref = tree_ref();
    if (!ref) {
        return yaml().size();
    }
    if (!ref->defined()) {
        throw_invalid_node();
    }
    TreeValue const& value = ref->value();
    return value.kind() == TreeKind::sequence || value.kind() == TreeKind::map ? value.size : 0;
}

template <typename T>
std::optional<T> Node::try_as() const {
    TreeRef const* ref = tree_ref();
    if (!ref) {
        try {
            return yaml().as<T>();
        } catch (YAML::Exception const&) {
            return std::nullopt;
        }
    }
    if (!ref->defined()) {
        return std::nullopt;
    }
    TreeValue const& value = ref->value();
    if constexpr (std::is_same_v<T, std::string>) {
        if (value.kind() == TreeKind::null) {
            return std::string("null");
        }
    }
    if (!is_scalar_kind(value.kind())) {
        return std::nullopt;
    }
    return convert_scalar<T>(ref->tree->text(value), value.kind() == TreeKind::number);
}

template <typename T>
T Node::as() const {
    TreeRef const* ref = tree_ref();
    if (!ref) {
        return yaml().as<T>();
    }
    if (!ref->defined()) {
        throw_invalid_node();
    }
    if (std::optional<T> value = try_as<T>()) {
        return std::move(*value);
    }
    throw_bad_conversion<T>();
}

// Everything but a map of the tree takes the long way, which throws where
// yaml-cpp throws.
template <typename T>
FieldValue<T> Node::field_elsewhere(std::string_view key) const {
    Node const child = (*this)[key];
    if (!child.defined() || child.is_null()) {
        return {FieldState::missing, T{}};
    }
    std::optional<T> converted = child.try_as<T>();
    if (!converted) {
        return {FieldState::refused, T{}};
    }
    return {FieldState::read, std::move(*converted)};
}

// The text of a scalar, as the conversion to std::string finds it, without
// the copy: a yaml-cpp scalar lives as long as its document.
template <>
FieldValue<std::string_view> Node::field_elsewhere<std::string_view>(std::string_view key) const {
    Node const child = (*this)[key];
    if (!child.defined() || child.is_null()) {
        return {FieldState::missing, {}};
    }
    if (!child.is_scalar()) {
        return {FieldState::refused, {}};
    }
    return {FieldState::read, child.scalar()};
}

void Node::release() const {
    if (TreeRef const* ref = tree_ref(); ref && ref->defined()) {
        ref->tree->release_inside(ref->index);
    }
}

// The indices of the first child and just past the last one; an empty range
// for anything but a container of `kind`.
std::pair<std::uint32_t, std::uint32_t> Node::children(TreeRef const& ref, TreeKind kind) {
    if (ref.defined() && ref.value().kind() == kind) {
        return {ref.index + 1, ref.value().offset_or_next};
    }
    return {ref.index, ref.index};
}

Node::Elements Node::elements() const {
    TreeRef const* ref = tree_ref();
    if (!ref) {
        return Elements(ElementIterator(yaml().begin()), ElementIterator(yaml().end()));
    }
    auto const [first, end] = children(*ref, TreeKind::sequence);
    return Elements(ElementIterator(*ref->tree, first), ElementIterator(*ref->tree, end));
}

Node::Members Node::members() const {
    TreeRef const* ref = tree_ref();
    if (!ref) {
        return Members(MemberIterator(yaml().begin()), MemberIterator(yaml().end()));
    }
    auto const [first, end] = children(*ref, TreeKind::map);
    return Members(MemberIterator(*ref->tree, first), MemberIterator(*ref->tree, end));
}

Node load_text(std::string const& text) { return Node(YAML::Load(text)); }

template std::string Node::as<std::string>() const;
template bool Node::as<bool>() const;
template double Node::as<double>() const;
template int Node::as<int>() const;
template unsigned short Node::as<unsigned short>() const;
template unsigned int Node::as<unsigned int>() const;
template unsigned long long Node::as<unsigned long long>() const;

template std::optional<std::string> Node::try_as<std::string>() const;
template FieldValue<bool> Node::field_elsewhere<bool>(std::string_view) const;
template FieldValue<double> Node::field_elsewhere<double>(std::string_view) const;
template FieldValue<int> Node::field_elsewhere<int>(std::string_view) const;
template FieldValue<unsigned short> Node::field_elsewhere<unsigned short>(std::string_view) const;
template FieldValue<unsigned int> Node::field_elsewhere<unsigned int>(std::string_view) const;
template FieldValue<unsigned long long> Node::field_elsewhere<unsigned long long>(std::string_view) const;

template std::optional<bool> Node::try_as<bool>() const;
template std::optional<double> Node::try_as<double>() const;
template std::optional<int> Node::try_as<int>() const;
template std::optional<unsigned short> Node::try_as<unsigned short>() const;
template std::optional<unsigned int> Node::try_as<unsigned int>() const;
template std::optional<unsigned long long> Node::try_as<unsigned long long>() const;

}  // namespace morv::qc::json
