#pragma once
// Gaussian 09 and 16 log files.
#include <morv/model/parse_result.hpp>
#include <morv/qc/document.hpp>

#include <string_view>

namespace morv::qc::import::gaussian {

// From the text alone: the banner that every Gaussian job prints first.
bool recognises(std::string_view text);

model::ParseResult<Document> read(std::string_view text, std::string_view file_name);

}  // namespace morv::qc::import::gaussian
