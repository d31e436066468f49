#include "core/node.hpp"

#include <yaml-cpp/yaml.h>

#include <string>

namespace morv::qc::json {

Node Node::operator[](char const* key) const {
    YAML::Node const& parent = node_;
    return Node(parent[key]);
}

bool Node::defined() const { return node_.IsDefined(); }

bool Node::is_null() const { return defined() && node_.IsNull(); }

bool Node::is_scalar() const { return defined() && node_.IsScalar(); }

bool Node::is_sequence() const { return defined() && node_.IsSequence(); }

bool Node::is_map() const { return defined() && node_.IsMap(); }

std::string const& Node::tag() const { return node_.Tag(); }

std::string const& Node::scalar() const { return node_.Scalar(); }

std::size_t Node::size() const { return node_.size(); }

template <typename T>
T Node::as() const {
    return node_.as<T>();
}

template <typename T>
std::optional<T> Node::try_as() const {
    try {
        return node_.as<T>();
    } catch (YAML::Exception const&) {
        return std::nullopt;
    }
}

Node::Elements Node::elements() const { return Elements(node_); }

Node::Members Node::members() const { return Members(node_); }

Node load_text(std::string const& text) { return Node(YAML::Load(text)); }

template std::string Node::as<std::string>() const;
template bool Node::as<bool>() const;
template double Node::as<double>() const;
template int Node::as<int>() const;
template unsigned short Node::as<unsigned short>() const;
template unsigned int Node::as<unsigned int>() const;
template unsigned long long Node::as<unsigned long long>() const;

template std::optional<std::string> Node::try_as<std::string>() const;
template std::optional<bool> Node::try_as<bool>() const;
template std::optional<double> Node::try_as<double>() const;
template std::optional<int> Node::try_as<int>() const;
template std::optional<unsigned short> Node::try_as<unsigned short>() const;
template std::optional<unsigned int> Node::try_as<unsigned int>() const;
template std::optional<unsigned long long> Node::try_as<unsigned long long>() const;

}  // namespace morv::qc::json
