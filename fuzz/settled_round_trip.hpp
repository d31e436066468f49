#pragma once

#include <morv/model/parse_result.hpp>
#include <morv/qc/document.hpp>

namespace morv::fuzz {

// `decoded` is the decode of a text that the codec wrote itself. Writes it
// with its status and diagnostics, reads that text back, and aborts with a
// report unless the read gives the same document, the same status and the
// same diagnostics, followed only by what the validator finds again. The one
// allowance is for the two known re-typings that settle only on this read: a
// metadata array of texts like ".inf", and an extension that was -0.0.
// Pretty text must read exactly as the compact text does.
void require_settled(model::ParseResult<qc::Document> const& decoded);

}  // namespace morv::fuzz
