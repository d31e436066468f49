#include "analyses/transitions.hpp"

#include "analyses/number_fields.hpp"
#include "core/field_readers.hpp"
#include "core/optional_keys.hpp"
#include "core/source_spans.hpp"
#include "core/vec3_fields.hpp"
#include "sections/energy.hpp"

#include <array>
#include <string>

namespace morv::qc::json {
namespace {

constexpr std::array<NumberField<AbsorptionPeak>, 3> reported_peak_numbers = {{
    {"reported_wavenumber_cm1", &AbsorptionPeak::reported_wavenumber_cm1},
    {"reported_wavelength_nm", &AbsorptionPeak::reported_wavelength_nm},
    {"oscillator_strength", &AbsorptionPeak::oscillator_strength},
}};
constexpr auto reported_peak_order = byte_order(reported_peak_numbers);

// A spin label keeps its first byte only: "alpha" becomes 'a' for good.
std::optional<char> read_spin_byte(DocumentResult& result, Node const& node, char const* key) {
    auto const text = read_string_field(result, node, key, Presence::optional);
    if (!text || text->empty()) {
        return std::nullopt;
    }
    return text->front();
}

void write_spin_byte(JsonPrinter& printer, char const* key, std::optional<char> spin) {
    if (spin) {
        printer.member(key, std::string_view(&*spin, 1));
    }
}

}  // namespace

ExcitationContribution read_excitation_contribution(DocumentResult& result, Node const& node) {
    ExcitationContribution contribution;
    contribution.label = read_string_field(result, node, "label", Presence::optional).value_or("");
    contribution.from_orbital = read_int_field(result, node, "from_orbital", Presence::optional);
    contribution.to_orbital = read_int_field(result, node, "to_orbital", Presence::optional);
    contribution.from_type = read_string_field(result, node, "from_type", Presence::optional).value_or("");
    contribution.to_type = read_string_field(result, node, "to_type", Presence::optional).value_or("");
    contribution.from_spin = read_spin_byte(result, node, "from_spin");
    contribution.to_spin = read_spin_byte(result, node, "to_spin");
    contribution.coefficient = read_double_field(result, node, "coefficient", Presence::optional);
    contribution.weight = read_double_field(result, node, "weight", Presence::optional);
    contribution.reverse = read_bool_field(result, node, "reverse").value_or(false);
    return contribution;
}

AbsorptionPeak read_absorption_peak(DocumentResult& result, Node const& node) {
    AbsorptionPeak peak;
    peak.spectrum_kind = read_string_field(result, node, "spectrum_kind", Presence::optional).value_or("");
    peak.transition = read_string_field(result, node, "transition", Presence::optional).value_or("");
    peak.target_state_index = read_int_field(result, node, "target_state_index", Presence::optional);
    // The one expected member: read whether or not the key is there.
    peak.excitation_energy = read_energy_value(result, node["excitation_energy"]).value_or(0.0);
    read_number_fields(result, node, peak, reported_peak_numbers);
    peak.strength_label = read_string_field(result, node, "strength_label", Presence::optional).value_or("");
    peak.strength = read_double_field(result, node, "strength", Presence::optional);
    if (Node const moment = node["transition_moment_au"]; moment.defined()) {
        peak.transition_moment_au = read_vec3(result, moment);
    }
    peak.rotatory_strength = read_double_field(result, node, "rotatory_strength", Presence::optional);
    peak.source = read_source_key(result, node);
    return peak;
}

void write_excitation_contribution(JsonPrinter& printer, ExcitationContribution const& contribution) {
    printer.begin_object();
    member_if_present(printer, "coefficient", contribution.coefficient);
    member_if_present(printer, "from_orbital", contribution.from_orbital);
    write_spin_byte(printer, "from_spin", contribution.from_spin);
    member_unless_empty(printer, "from_type", contribution.from_type);
    member_unless_empty(printer, "label", contribution.label);
    printer.member("reverse", contribution.reverse);
    member_if_present(printer, "to_orbital", contribution.to_orbital);
    write_spin_byte(printer, "to_spin", contribution.to_spin);
    member_unless_empty(printer, "to_type", contribution.to_type);
    member_if_present(printer, "weight", contribution.weight);
    printer.end_object();
}

void write_absorption_peak(JsonPrinter& printer, AbsorptionPeak const& peak) {
    NumberMembers<AbsorptionPeak, reported_peak_numbers.size()> numbers(peak, reported_peak_numbers,
                                                                        reported_peak_order);
    printer.begin_object(numbers);
    printer.key("excitation_energy");
    write_energy_value(printer, peak.excitation_energy);
    member_if_present(printer, "rotatory_strength", peak.rotatory_strength);
    write_source_key(printer, peak.source);
    member_unless_empty(printer, "spectrum_kind", peak.spectrum_kind);
    member_if_present(printer, "strength", peak.strength);
    member_unless_empty(printer, "strength_label", peak.strength_label);
    member_if_present(printer, "target_state_index", peak.target_state_index);
    member_unless_empty(printer, "transition", peak.transition);
    if (peak.transition_moment_au) {
        printer.key("transition_moment_au");
        write_vec3(printer, *peak.transition_moment_au);
    }
    printer.end_object();
}

}  // namespace morv::qc::json
