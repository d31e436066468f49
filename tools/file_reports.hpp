#pragma once

#include <morv/model/parse_result.hpp>
#include <morv/qc/document.hpp>

#include <nlohmann/json.hpp>

#include <string>

namespace morv::cli {

using Json = nlohmann::ordered_json;

// One line with the status, the counts of diagnostics by severity and the
// records read per section, then one indented line per diagnostic.
std::string check_report_text(std::string const& name, model::ParseResult<qc::Document> const& result,
                              bool color);

// The same as one JSON object.
Json check_report_json(std::string const& name, model::ParseResult<qc::Document> const& result);

// One line of JSON Lines. Strings of the document may hold bytes that are not
// UTF-8, which JSON text cannot carry: they become U+FFFD.
std::string json_line(Json const& value);

}  // namespace morv::cli
