#pragma once

#include <morv/model/parse_result.hpp>
#include <morv/qc/document.hpp>

#include <cstddef>
#include <cstdint>

namespace morv::bench {

// The result of an ORCA run on an organic molecule: an RI-MP2 optimisation,
// a frequency job and a TD-DFT job, with the analyses, sources, spans and
// metadata that such a run yields. The molecule and the number of steps grow
// together until the compact text of the document is close to `target_bytes`
// (within a few per cent from about 20 KB up). The same seed and size give
// the same document on every platform, and its text decodes complete and
// writes back byte for byte.
qc::Document generate_document(std::uint64_t seed, std::size_t target_bytes);

// The same document as a decode gives it back: status complete, together with
// a few notes and warnings that the producer stored with it, each pointing
// into the output file.
model::ParseResult<qc::Document> generate_result(std::uint64_t seed, std::size_t target_bytes);

}  // namespace morv::bench
