#pragma once
// ORCA 5 and 6 outputs.
#include <morv/model/parse_result.hpp>
#include <morv/qc/document.hpp>

#include <string_view>

namespace morv::qc::import::orca {

// From the text alone: the "O R C A" banner and the version line under it.
bool recognises(std::string_view text);

model::ParseResult<Document> read(std::string_view text, std::string_view file_name);

}  // namespace morv::qc::import::orca
