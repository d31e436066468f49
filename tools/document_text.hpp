#pragma once

#include <morv/model/parse_result.hpp>
#include <morv/qc/document.hpp>

#include <cstdint>
#include <string>

namespace morv::cli {

struct DocumentTextOptions {
    bool pretty = false;
    std::uint32_t indent = 2;
    bool with_diagnostics = false;
};

// The text that the tool writes for a document: the library's JSON, ending
// with a line feed either way.
std::string document_text(model::ParseResult<qc::Document> const& result, DocumentTextOptions const& options);

}  // namespace morv::cli
