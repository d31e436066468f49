#pragma once

// Documents from the text outputs of quantum-chemistry programs.

#include <morv/model/export.hpp>
#include <morv/model/parse_result.hpp>
#include <morv/qc/document.hpp>

#include <string_view>

namespace morv::qc {

// Reads what a program's output says into a document. The program is
// recognised from the text, never from `file_name`, which only names the
// output among the document's sources. Always returns: an output of no known
// program is `failed` with the error "not an output of a known program"; an
// output that stops early is `partial`, with everything before the cut kept
// and a diagnostic saying where it stopped.
//
// Known programs, each with its diagnostics coded "<program>.<word>":
// - Gaussian 09 and 16: one job, or the jobs of a Link1 run one after another.
//   Frames are in the standard orientation (the input orientation when
//   symmetry is off), and gradients are turned into the same axes.
// - ORCA 5 and 6: one job per `$new_job` part; an optimisation followed by
//   frequencies is two jobs.
// - GAMESS-US: one job; geometries printed in bohr are turned into angstrom.
// Frames are in angstrom, energies in hartree (CODATA 2018 conversions).
MORV_API model::ParseResult<Document> import_output(std::string_view text, std::string_view file_name);

}  // namespace morv::qc
