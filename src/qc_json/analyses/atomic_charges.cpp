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
constexpr auto charge_order = byte_order(charge_numbers);

void write_atomic_charge_record(JsonPrinter& printer, AtomicChargeRecord const& record) {
    NumberMembers<AtomicChargeRecord, charge_numbers.size()> numbers(record, charge_numbers, charge_order);
    printer.begin_object(numbers);
    member_if_present(printer, "atom_index", record.atom_index);
    member_unless_empty(printer, "element", record.element);
    printer.end_object();
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

void write_atomic_charge_block(JsonPrinter& printer, AtomicChargeBlock const& block) {
    printer.key("records");
    write_elements(printer, block.records, write_atomic_charge_record);
    printer.member("scheme", block.scheme);
}

}  // namespace morv::qc::json
