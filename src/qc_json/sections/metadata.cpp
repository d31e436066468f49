#include "sections/metadata.hpp"

#include "core/sequences.hpp"
#include "sections/scalar_text.hpp"

#include <utility>
#include <vector>

namespace morv::qc::json {
namespace {

MetadataValue read_metadata_scalar(Node const& node) {
    std::string text(node.scalar());
    // A quoted scalar is text whatever it looks like.
    if (node.tag() == "!") {
        return text;
    }
    if (text == "true" || text == "false") {
        return text == "true";
    }
    if (auto const value = whole_signed(text)) {
        return *value;
    }
    if (auto const value = whole_double(text)) {
        return *value;
    }
    return text;
}

// An array is numeric when every element converts to a double; otherwise it
// is kept as the elements' texts, with "" for anything that is not a scalar.
MetadataValue read_metadata_array(Node const& node) {
    std::vector<std::string> texts;
    std::vector<double> numbers;
    bool all_numeric = true;
    for (Node const element : node.elements()) {
        texts.emplace_back(element.scalar());
        if (auto const number = element.try_as<double>()) {
            numbers.push_back(*number);
        } else {
            all_numeric = false;
        }
    }
    if (all_numeric) {
        return numbers;
    }
    return texts;
}

struct PrintMetadata {
    JsonPrinter& printer;
    template <typename Scalar>
    void operator()(Scalar const& value) const {
        printer.value(value);
    }
    template <typename Element>
    void operator()(std::vector<Element> const& values) const {
        write_elements(printer, values, [](JsonPrinter& out, Element const& value) { out.value(value); });
    }
};

}  // namespace

std::optional<MetadataValue> read_metadata_value(DocumentResult& result, std::string const& key, Node const& node) {
    if (!node.defined() || node.is_null()) {
        return std::nullopt;
    }
    if (node.is_sequence()) {
        return read_metadata_array(node);
    }
    if (node.is_scalar()) {
        return read_metadata_scalar(node);
    }
    add_warning(result, "qc.json.unsupported_metadata", "Ignoring non-scalar metadata field: " + key);
    return std::nullopt;
}

void read_metadata(DocumentResult& result, Node const& node) {
    for (auto const& member : node.members()) {
        std::string key = member.key.as<std::string>();
        // Later duplicates are still read, so that their warnings appear.
        if (auto value = read_metadata_value(result, key, member.value)) {
            result.value.metadata.emplace(std::move(key), std::move(*value));
        }
    }
}

void write_metadata(JsonPrinter& printer, std::map<std::string, MetadataValue> const& metadata) {
    printer.begin_object();
    for (auto const& [key, value] : metadata) {
        printer.key(key);
        std::visit(PrintMetadata{printer}, value);
    }
    printer.end_object();
}

}  // namespace morv::qc::json
