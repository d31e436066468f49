#pragma once
// GAMESS-US outputs: the log that one run writes, from the banner to
// "EXECUTION OF GAMESS TERMINATED".
#include <morv/model/parse_result.hpp>
#include <morv/qc/document.hpp>

#include <string_view>

namespace morv::qc::import::gamess {

// From the first 16 KB of the text: the banner's "GAMESS VERSION" box, or
// the line with which the run begins.
bool recognises(std::string_view text);

model::ParseResult<Document> read(std::string_view text, std::string_view file_name);

}  // namespace morv::qc::import::gamess
