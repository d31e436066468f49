#pragma once

// Runs of optional numbers that a record reads and writes under the same keys
// in the same order. One table per record keeps the two directions in step.

#include "core/diagnostics.hpp"
#include "core/field_readers.hpp"
#include "core/json_value.hpp"
#include "core/node.hpp"
#include "core/optional_keys.hpp"

#include <optional>

namespace morv::qc::json {

template <typename Record>
struct NumberField {
    char const* key;
    std::optional<double> Record::*field;
};

template <typename Record, typename Fields>
void read_number_fields(DocumentResult& result, Node const& node, Record& record, Fields const& fields) {
    for (NumberField<Record> const& number : fields) {
        record.*number.field = read_double_field(result, node, number.key, false);
    }
}

template <typename Record, typename Fields>
void write_number_fields(JsonValue& object, Record const& record, Fields const& fields) {
    for (NumberField<Record> const& number : fields) {
        set_if_present(object, number.key, record.*number.field);
    }
}

}  // namespace morv::qc::json
