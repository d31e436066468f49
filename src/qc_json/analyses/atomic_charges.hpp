#pragma once

#include "core/diagnostics.hpp"
#include "core/json_writer.hpp"
#include "core/node.hpp"

#include <morv/qc/atomic_charges.hpp>

namespace morv::qc::json {

AtomicChargeBlock read_atomic_charge_block(DocumentResult& result, Node const& node);
// A record is never dropped; one that is a scalar throws and ends the decode.
AtomicChargeRecord read_atomic_charge_record(DocumentResult& result, Node const& node);
void write_atomic_charge_block(JsonPrinter& printer, AtomicChargeBlock const& block);

}  // namespace morv::qc::json
