#pragma once

#include <morv/model/parse_result.hpp>
#include <morv/qc/document.hpp>
#include <morv/testing/choices.hpp>

#include <cstddef>
#include <cstdint>

namespace morv::testing {

// What may take the place of a run's own values where the choices depart:
// anything its types hold, or only what JSON text carries unchanged.
enum class Departures { any_value, within_format };

struct BuiltResult {
    model::ParseResult<qc::Document> result;
    // True when every string of the document, keys and diagnostics included,
    // is valid UTF-8, so that its text must be strict JSON.
    bool all_text_is_utf8 = true;
};

// The result of an ORCA run on an organic molecule: an RI-MP2 optimisation,
// a frequency job and a TD-DFT job, with every kind of analysis, the sources,
// spans and metadata that such a run yields, and a few notes and warnings
// that the producer stored with it, each pointing into the output file. The
// molecule and the number of steps grow together until the compact text of
// the document is close to `target_bytes` (within a few per cent from about
// 20 KB up; 0 gives the smallest, about 25 KB).
//
// Then, wherever `choices` depart, an odd value takes the place of the run's
// own (see odd_values.hpp): with plain Choices none does, and the document
// decodes complete and writes back byte for byte.
BuiltResult build_result(Choices& choices, std::size_t target_bytes,
                         Departures departures = Departures::any_value);

// The plain run of `seed`: the same seed and size give the same document on
// every platform.
model::ParseResult<qc::Document> generate_result(std::uint64_t seed, std::size_t target_bytes);

// The smallest run with departures wherever bytes drawn from `seed` say,
// enough for one at every field: over a few seeds, every optional field set,
// every alternative and every enumerator.
model::ParseResult<qc::Document> odd_result(std::uint64_t seed, Departures departures);

}  // namespace morv::testing
