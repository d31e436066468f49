#pragma once

#include <morv/model/export.hpp>
#include <morv/model/parse_result.hpp>
#include <morv/qc/document.hpp>

#include <cstdint>
#include <string>
#include <string_view>

namespace morv::qc::json {

// The schema identifier that every document of this format carries.
inline constexpr char const schema_id[] = "morv.qc.document.v2";

struct SerializeOptions {
    // Line breaks and indentation, ": " after keys and a final line feed.
    bool pretty = false;
    // Blanks for each level of nesting when `pretty` is set.
    std::uint32_t indent = 2;
    // When false the `diagnostics` key is written as an empty array.
    bool include_diagnostics = true;
};

// Writes a document as "morv.qc.document.v2" text with the status `complete`
// and no diagnostics.
MORV_API std::string serialize(Document const& document, SerializeOptions const& options = {});

// Writes the document of a decode together with its status and diagnostics.
MORV_API std::string serialize(model::ParseResult<Document> const& result, SerializeOptions const& options = {});

// Reads "morv.qc.document.v2" text. Never throws for bad content: the result
// holds what could be read, a status and the diagnostics.
MORV_API model::ParseResult<Document> deserialize(std::string_view text);

}  // namespace morv::qc::json
