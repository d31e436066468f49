#pragma once

// Runs of optional numbers that a record reads and writes under the same keys
// in the same order. One table per record keeps the two directions in step.

#include "core/diagnostics.hpp"
#include "core/field_readers.hpp"
#include "core/json_value.hpp"
#include "core/node.hpp"
#include "core/optional_keys.hpp"
#include "sections/energy.hpp"

#include <optional>

namespace morv::qc::json {

template <typename Record, typename Value>
struct MemberField {
    char const* key;
    Value Record::*field;
};

template <typename Record>
using NumberField = MemberField<Record, std::optional<double>>;

template <typename Record, typename Fields>
void read_number_fields(DocumentResult& result, Node const& node, Record& record, Fields const& fields) {
    for (NumberField<Record> const& number : fields) {
        record.*number.field = read_double_field(result, node, number.key, Presence::optional);
    }
}

template <typename Record, typename Fields>
void write_number_fields(JsonValue& object, Record const& record, Fields const& fields) {
    for (NumberField<Record> const& number : fields) {
        set_if_present(object, number.key, record.*number.field);
    }
}

// Energies are energy value objects. A defined key is read, so a null there
// is reported, unlike a null in a plain number field.
template <typename Record, typename Fields>
void read_energy_fields(DocumentResult& result, Node const& node, Record& record, Fields const& fields) {
    for (NumberField<Record> const& energy : fields) {
        if (Node const value = node[energy.key]; value.defined()) {
            record.*energy.field = read_energy_value(result, value);
        }
    }
}

template <typename Record, typename Fields>
void write_energy_fields(JsonValue& object, Record const& record, Fields const& fields) {
    for (NumberField<Record> const& energy : fields) {
        if (auto const& hartree = record.*energy.field) {
            object[energy.key] = write_energy_value(*hartree);
        }
    }
}

}  // namespace morv::qc::json
