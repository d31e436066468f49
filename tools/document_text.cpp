#include "document_text.hpp"

#include <morv/qc/json/codec.hpp>

namespace morv::cli {

std::string document_text(model::ParseResult<qc::Document> const& result, DocumentTextOptions const& options) {
    qc::json::SerializeOptions serialize_options;
    serialize_options.pretty = options.pretty;
    serialize_options.indent = options.indent;
    std::string text = options.with_diagnostics ? qc::json::serialize(result, serialize_options)
                                                : qc::json::serialize(result.value, serialize_options);
    // Pretty text ends with a line feed; compact text gets one too, so that
    // the output is a well-formed text file and a shell prompt starts on a
    // line of its own.
    if (!options.pretty) {
        text += '\n';
    }
    return text;
}

}  // namespace morv::cli
