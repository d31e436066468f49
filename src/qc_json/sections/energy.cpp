#include "sections/energy.hpp"

#include "core/field_readers.hpp"
#include "core/optional_keys.hpp"
#include "core/source_spans.hpp"

#include <morv/qc/model.hpp>


namespace morv::qc::json {
namespace {

// Conversion factors of the format, taken as written.
constexpr double electron_volt_per_hartree = 27.211386245988;
constexpr double wavenumber_per_hartree = 219474.6313632;
constexpr double nanometre_electron_volt = 1239.8419843320025;

}  // namespace

void write_energy_value(JsonPrinter& printer, double hartree) {
    double const electron_volt = hartree * electron_volt_per_hartree;
    printer.begin_object();
    printer.member("electron_volt", electron_volt);
    printer.member("hartree", hartree);
    // Only a positive energy has a wavelength; NaN passes the test and gets one.
    if (!(electron_volt <= 0.0)) {
        printer.member("wavelength_nm", nanometre_electron_volt / electron_volt);
    }
    printer.member("wavenumber_cm1", hartree * wavenumber_per_hartree);
    printer.end_object();
}

std::optional<double> read_energy_value(DocumentResult& result, Node const& node) {
    if (!node.is_map()) {
        add_error(result, "qc.json.invalid_energy", "Expected an energy object.");
        return std::nullopt;
    }
    return read_double_field(result, node, "hartree", Presence::required);
}

void write_energy_record(JsonPrinter& printer, EnergyRecord const& record) {
    printer.begin_object();
    printer.member("id", record.id.value);
    printer.member("kind", to_string(record.kind));
    member_unless_empty(printer, "label", record.label);
    member_unless_empty(printer, "method", record.method);
    write_source_key(printer, record.source);
    printer.key("value");
    write_energy_value(printer, record.value);
    printer.end_object();
}

std::optional<EnergyRecord> read_energy_record(DocumentResult& result, Node const& node) {
    if (!node.is_map()) {
        add_error(result, "qc.json.invalid_energy_record", "Expected an energy-record object.");
        return std::nullopt;
    }
    auto const id = read_entity_id_field<EnergyIdTag>(result, node, "id", Presence::required);
    auto const value = read_energy_value(result, node["value"]);
    if (!id || !value) {
        return std::nullopt;
    }
    EnergyRecord record;
    record.id = *id;
    record.value = *value;
    record.kind = read_word_field<EnergyKind>(result, node, "kind");
    record.label = read_string_field(result, node, "label", Presence::optional).value_or("");
    record.method = read_string_field(result, node, "method", Presence::optional).value_or("");
    record.source = read_source_key(result, node);
    return record;
}

}  // namespace morv::qc::json
