#pragma once

// Runs of optional numbers that a record reads and writes under the same keys.
// One table per record keeps the two directions in step: a read goes through
// it in the table's order, and a write in the byte order of its keys, merged
// among the record's other keys.

#include "core/diagnostics.hpp"
#include "core/field_readers.hpp"
#include "core/json_writer.hpp"
#include "core/node.hpp"
#include "core/optional_keys.hpp"
#include "sections/energy.hpp"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace morv::qc::json {

template <typename Record, typename Value>
struct MemberField {
    std::string_view key;
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

inline bool has_value(std::optional<double> const& number) { return number.has_value(); }
inline bool has_value(std::string const& text) { return !text.empty(); }

inline void print_number(JsonPrinter& printer, std::optional<double> const& number) { printer.value(*number); }
inline void print_text(JsonPrinter& printer, std::string const& text) { printer.value(text); }
inline void print_energy(JsonPrinter& printer, std::optional<double> const& hartree) {
    write_energy_value(printer, *hartree);
}

// The fields of one table that a record has (a number that is set, a text
// that is not empty), as members in the byte order of their keys.
template <typename Record, typename Value, std::size_t size, void (*print)(JsonPrinter&, Value const&)>
class FieldMembers final : public MergedMembers {
public:
    using Fields = std::array<MemberField<Record, Value>, size>;

    FieldMembers(Record const& record, Fields const& fields, std::array<std::size_t, size> const& order)
        : record_(record), fields_(fields), order_(order) {
        skip_absent();
    }

    std::optional<std::string_view> next_key() const override {
        if (next_ == size) {
            return std::nullopt;
        }
        return field().key;
    }
    void print_next(JsonPrinter& printer) override {
        print(printer, record_.*field().field);
        skip_next();
    }
    void skip_next() override {
        ++next_;
        skip_absent();
    }

private:
    MemberField<Record, Value> const& field() const { return fields_[order_[next_]]; }
    void skip_absent() {
        while (next_ != size && !has_value(record_.*field().field)) {
            ++next_;
        }
    }

    Record const& record_;
    Fields const& fields_;
    std::array<std::size_t, size> const& order_;
    std::size_t next_ = 0;
};

template <typename Record, std::size_t size>
using NumberMembers = FieldMembers<Record, std::optional<double>, size, print_number>;
// Energies are energy value objects.
template <typename Record, std::size_t size>
using EnergyMembers = FieldMembers<Record, std::optional<double>, size, print_energy>;
template <typename Record, std::size_t size>
using TextMembers = FieldMembers<Record, std::string, size, print_text>;

}  // namespace morv::qc::json
