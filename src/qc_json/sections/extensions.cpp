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

struct PrintExtension {
    JsonPrinter& printer;
    void operator()(std::nullptr_t) const { printer.null(); }
    void operator()(bool value) const { printer.value(value); }
    void operator()(long long value) const { printer.value(value); }
    void operator()(unsigned long long value) const { printer.value(value); }
    void operator()(double value) const { printer.value(value); }
    void operator()(std::string const& value) const { printer.value(value); }
    void operator()(std::vector<ExtensionValue> const& items) const {
        printer.begin_array();
        for (auto const& item : items) {
            write_extension_value(printer, item);
        }
        printer.end_array();
    }
    void operator()(std::map<std::string, ExtensionValue> const& members) const {
        printer.begin_object();
        for (auto const& [key, member] : members) {
            printer.key(key);
            write_extension_value(printer, member);
        }
        printer.end_object();
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

void write_extension_value(JsonPrinter& printer, ExtensionValue const& value) {
    std::visit(PrintExtension{printer}, value.value);
}

}  // namespace morv::qc::json
