#pragma once

#include <morv/model/parse_result.hpp>
#include <morv/qc/document.hpp>

#include <fuzzer/FuzzedDataProvider.h>

namespace morv::fuzz {

struct FuzzedResult {
    model::ParseResult<qc::Document> result;
    // True when every string of the document, keys and diagnostics included,
    // is valid UTF-8, so that its text must be strict JSON.
    bool all_text_is_utf8 = true;
};

// A result with records in every section and every kind of analysis, as the
// provider's bytes decide: strings of any bytes, any double bit pattern,
// enumerators and a status outside their tables, extensions nested a few
// levels deep. Once the bytes run out every further choice is the smallest.
FuzzedResult build_result(FuzzedDataProvider& provider);

}  // namespace morv::fuzz
