#include "analyses/excited_states.hpp"

#include "analyses/number_fields.hpp"
#include "analyses/transitions.hpp"
#include "core/field_readers.hpp"
#include "core/optional_keys.hpp"
#include "core/sequences.hpp"
#include "core/source_spans.hpp"
#include "sections/energy.hpp"

#include <array>

namespace morv::qc::json {
namespace {

constexpr std::array<MemberField<ExcitedState, std::string>, 5> state_strings = {{
    {"root_label", &ExcitedState::root_label},
    {"method", &ExcitedState::method},
    {"section", &ExcitedState::section},
    {"multiplicity_label", &ExcitedState::multiplicity_label},
    {"symmetry", &ExcitedState::symmetry},
}};
constexpr auto state_string_order = byte_order(state_strings);

constexpr std::array<NumberField<ExcitedState>, 2> state_energies = {{
    {"total_energy", &ExcitedState::total_energy},
    {"excitation_energy", &ExcitedState::excitation_energy},
}};
constexpr auto state_energy_order = byte_order(state_energies);

constexpr std::array<NumberField<ExcitedState>, 8> state_numbers = {{
    {"reported_millihartree", &ExcitedState::reported_millihartree},
    {"reported_wavenumber_cm1", &ExcitedState::reported_wavenumber_cm1},
    {"reported_wavelength_nm", &ExcitedState::reported_wavelength_nm},
    {"oscillator_strength", &ExcitedState::oscillator_strength},
    {"spin_squared", &ExcitedState::spin_squared},
    {"spin_contamination", &ExcitedState::spin_contamination},
    {"ground_state_amplitude", &ExcitedState::ground_state_amplitude},
    {"singles_character_percent", &ExcitedState::singles_character_percent},
}};
constexpr auto state_number_order = byte_order(state_numbers);

void write_excited_state(JsonPrinter& printer, ExcitedState const& state) {
    TextMembers<ExcitedState, state_strings.size()> texts(state, state_strings, state_string_order);
    EnergyMembers<ExcitedState, state_energies.size()> energies(state, state_energies, state_energy_order);
    NumberMembers<ExcitedState, state_numbers.size()> numbers(state, state_numbers, state_number_order);
    MergedSources<3> fields({&texts, &energies, &numbers});
    printer.begin_object(fields);
    if (!state.contributions.empty()) {
        printer.key("contributions");
        write_elements(printer, state.contributions, write_excitation_contribution);
    }
    member_if_present(printer, "index", state.index);
    member_if_present(printer, "multiplicity", state.multiplicity);
    write_source_key(printer, state.source);
    printer.end_object();
}

}  // namespace

ExcitedState read_excited_state(DocumentResult& result, Node const& node) {
    ExcitedState state;
    state.index = read_int_field(result, node, "index", Presence::optional);
    for (auto const& text : state_strings) {
        state.*text.field = read_string_field(result, node, text.key, Presence::optional).value_or("");
    }
    state.multiplicity = read_int_field(result, node, "multiplicity", Presence::optional);
    read_energy_fields(result, node, state, state_energies);
    read_number_fields(result, node, state, state_numbers);
    read_elements(result, node["contributions"], state.contributions, read_excitation_contribution);
    state.source = read_source_key(result, node);
    return state;
}

ExcitedStateBlock read_excited_state_block(DocumentResult& result, Node const& node) {
    ExcitedStateBlock block;
    block.block_index = read_int_field(result, node, "block_index", Presence::optional);
    block.method = read_string_field(result, node, "method", Presence::optional).value_or("");
    block.section = read_string_field(result, node, "section", Presence::optional).value_or("");
    block.comment = read_string_field(result, node, "comment", Presence::optional).value_or("");
    read_elements(result, node["states"], block.states, read_excited_state);
    read_elements(result, node["total_energies"], block.total_energies, read_energy_record);
    block.preferred_total_energy_id =
        read_entity_id_field<EnergyIdTag>(result, node, "preferred_total_energy_id", Presence::optional);
    read_elements(result, node["absorption_peaks"], block.absorption_peaks, read_absorption_peak);
    return block;
}

void write_excited_state_block(JsonPrinter& printer, ExcitedStateBlock const& block) {
    if (!block.absorption_peaks.empty()) {
        printer.key("absorption_peaks");
        write_elements(printer, block.absorption_peaks, write_absorption_peak);
    }
    member_if_present(printer, "block_index", block.block_index);
    member_unless_empty(printer, "comment", block.comment);
    member_unless_empty(printer, "method", block.method);
    member_if_present(printer, "preferred_total_energy_id", block.preferred_total_energy_id);
    member_unless_empty(printer, "section", block.section);
    printer.key("states");
    write_elements(printer, block.states, write_excited_state);
    printer.key("total_energies");
    write_elements(printer, block.total_energies, write_energy_record);
}

}  // namespace morv::qc::json
