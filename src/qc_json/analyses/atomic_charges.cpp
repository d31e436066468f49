#include "analyses/atomic_charges.hpp"

#include "analyses/number_fields.hpp"
#include "core/field_readers.hpp"
#include "core/optional_keys.hpp"
#include "core/sequences.hpp"

#include <array>

namespace morv::qc::json {
namespace {

constexpr std::array<NumberField<AtomicChargeRecord>, 5> charge_numbers = {{
    {"population", &AtomicChargeRecord::population},
    {"charge", &AtomicChargeRecord::charge},
    {"spin_population", &AtomicChargeRecord::spin_population},
    {"secondary_population", &AtomicChargeRecord::secondary_population},
    {"secondary_charge", &AtomicChargeRecord::secondary_charge},
}};

JsonValue write_atomic_charge_record(AtomicChargeRecord const& record) {
    JsonValue object = make_json_object();
    set_if_present(object, "atom_index", record.atom_index);
    set_unless_empty(object, "element", record.element);
    write_number_fields(object, record, charge_numbers);
    return object;
}

}  // namespace

AtomicChargeRecord read_atomic_charge_record(DocumentResult& result, Node const& node) {
    AtomicChargeRecord record;
    record.atom_index = read_int_field(result, node, "atom_index", Presence::optional);
    record.element = read_string_field(result, node, "element", Presence::optional).value_or("");
    read_number_fields(result, node, record, charge_numbers);
    return record;
}

AtomicChargeBlock read_atomic_charge_block(DocumentResult& result, Node const& node) {
    AtomicChargeBlock block;
    block.scheme = read_string_field(result, node, "scheme", Presence::optional).value_or("");
    read_elements(result, node["records"], block.records, read_atomic_charge_record);
    return block;
}

void write_atomic_charge_block(JsonValue& object, AtomicChargeBlock const& block) {
    object["scheme"] = block.scheme;
    object["records"] = write_elements(block.records, write_atomic_charge_record);
}

}  // namespace morv::qc::json
