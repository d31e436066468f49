#pragma once

#include <morv/model/parse_result.hpp>
#include <morv/qc/document.hpp>

#include <string>

namespace morv::qc::json {

// The result that a decode builds up; every reader appends to its list.
using DocumentResult = model::ParseResult<Document>;

// Appends an error with no source span.
void add_error(DocumentResult& result, std::string code, std::string message);

// Appends a warning with no source span.
void add_warning(DocumentResult& result, std::string code, std::string message);

}  // namespace morv::qc::json
