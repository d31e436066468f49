#pragma once

// The energy value object and the energy record, shared by the steps and by
// the analyses.

#include "core/diagnostics.hpp"
#include "core/json_writer.hpp"
#include "core/node.hpp"

#include <morv/qc/energy.hpp>

#include <optional>

namespace morv::qc::json {

// Writes the hartree value with its derived units.
void write_energy_value(JsonPrinter& printer, double hartree);

// Only `hartree` is read back; `node` is the object itself, defined or not.
std::optional<double> read_energy_value(DocumentResult& result, Node const& node);

void write_energy_record(JsonPrinter& printer, EnergyRecord const& record);

// Gives nothing when the node is not a map, or `id` or `value` is unusable.
std::optional<EnergyRecord> read_energy_record(DocumentResult& result, Node const& node);

}  // namespace morv::qc::json
