#pragma once

// The two small records below an excited-state block: orbital contributions
// to a state, and the peaks of a spectrum table.

#include "core/diagnostics.hpp"
#include "core/json_writer.hpp"
#include "core/node.hpp"

#include <morv/qc/excited_states.hpp>

namespace morv::qc::json {

// Both always give a record; an element that is a scalar throws and ends
// the decode.
ExcitationContribution read_excitation_contribution(DocumentResult& result, Node const& node);
AbsorptionPeak read_absorption_peak(DocumentResult& result, Node const& node);

void write_excitation_contribution(JsonPrinter& printer, ExcitationContribution const& contribution);
void write_absorption_peak(JsonPrinter& printer, AbsorptionPeak const& peak);

}  // namespace morv::qc::json
