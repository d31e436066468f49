#include "core/document.hpp"
#include "core/json_tree.hpp"
#include "core/node.hpp"

#include <morv/qc/json/codec.hpp>

#include <yaml-cpp/exceptions.h>

#include <optional>
#include <string>

namespace morv::qc::json {

std::string serialize(Document const& document, SerializeOptions const& options) {
    return write_document(document, model::ParseStatus::complete, {}, options);
}

std::string serialize(model::ParseResult<Document> const& result, SerializeOptions const& options) {
    return write_document(result.value, result.status, result.diagnostics, options);
}

DocumentResult decode_through_yaml(std::string_view text) {
    std::string const copy(text);
    try {
        return read_document(load_text(copy));
    } catch (YAML::Exception const& e) {
        // Whatever the decode had built is dropped with the exception.
        model::ParseResult<Document> failed;
        failed.diagnostics.push_back(model::Diagnostic{model::Severity::error, "qc.json.parse_failed",
                                                       std::string("Failed to parse QC JSON: ") + e.what(),
                                                       std::nullopt});
        return failed;
    }
}

model::ParseResult<Document> deserialize(std::string_view text) {
    if (std::optional<JsonTree> const tree = load_strict_json(text)) {
        try {
            return read_document(Node(*tree, 0));
        } catch (YAML::Exception const&) {
            // The decode fails, and yaml-cpp is left to say why in its own words.
        }
    }
    return decode_through_yaml(text);
}

}  // namespace morv::qc::json
