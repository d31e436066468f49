#include "sections/extensions.hpp"

#include "sections/scalar_text.hpp"

#include <cmath>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace morv::qc::json {
namespace {

using model::ExtensionValue;

ExtensionValue read_extension_scalar(Node const& node) {
    std::string text(node.scalar());
    if (node.tag() == "!") {
        return {std::move(text)};
    }
    if (text == "null") {
        return {nullptr};
    }
    if (text == "true" || text == "false") {
        return {text == "true"};
    }
    if (!text.empty() && text.front() == '-') {
        if (auto const value = whole_signed(text)) {
            return {*value};
        }
    } else if (auto const value = whole_unsigned(text)) {
        return {*value};
    }
    // Infinities and NaN stay text, so that they survive a write.
    if (auto const value = whole_double(text); value && std::fabs(*value) <= std::numeric_limits<double>::max()) {
        return {*value};
    }
    return {std::move(text)};
}

struct ToJson {
    JsonValue operator()(std::nullptr_t) const { return JsonValue(); }
    JsonValue operator()(bool value) const { return value; }
    JsonValue operator()(long long value) const { return value; }
    JsonValue operator()(unsigned long long value) const { return value; }
    JsonValue operator()(double value) const { return value; }
    JsonValue operator()(std::string const& value) const { return value; }
    JsonValue operator()(std::vector<ExtensionValue> const& items) const {
        JsonValue array = make_json_array();
        for (auto const& item : items) {
            array.push_back(extension_to_json(item));
        }
        return array;
    }
    JsonValue operator()(std::map<std::string, ExtensionValue> const& members) const {
        JsonValue object = make_json_object();
        for (auto const& [key, member] : members) {
            object[key] = extension_to_json(member);
        }
        return object;
    }
};

}  // namespace

ExtensionValue read_extension_value(Node const& node) {
    if (!node.defined() || node.is_null()) {
        return {nullptr};
    }
    if (node.is_sequence()) {
        std::vector<ExtensionValue> items;
        items.reserve(node.size());
        for (Node const element : node.elements()) {
            items.push_back(read_extension_value(element));
        }
        return {std::move(items)};
    }
    if (node.is_map()) {
        std::map<std::string, ExtensionValue> members;
        for (auto const& member : node.members()) {
            ExtensionValue value = read_extension_value(member.value);
            // The first occurrence of a key is the one kept.
            members.emplace(member.key.as<std::string>(), std::move(value));
        }
        return {std::move(members)};
    }
    return read_extension_scalar(node);
}

JsonValue extension_to_json(ExtensionValue const& value) { return std::visit(ToJson{}, value.value); }

}  // namespace morv::qc::json
