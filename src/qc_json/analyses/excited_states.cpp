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

constexpr std::array<NumberField<ExcitedState>, 2> state_energies = {{
    {"total_energy", &ExcitedState::total_energy},
    {"excitation_energy", &ExcitedState::excitation_energy},
}};

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

JsonValue write_excited_state(ExcitedState const& state) {
    JsonValue object = make_json_object();
    set_if_present(object, "index", state.index);
    for (auto const& text : state_strings) {
        set_unless_empty(object, text.key, state.*text.field);
    }
    set_if_present(object, "multiplicity", state.multiplicity);
    write_energy_fields(object, state, state_energies);
    write_number_fields(object, state, state_numbers);
    if (!state.contributions.empty()) {
        object["contributions"] = write_elements(state.contributions, write_excitation_contribution);
    }
    write_source_key(object, state.source);
    return object;
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

void write_excited_state_block(JsonValue& object, ExcitedStateBlock const& block) {
    set_if_present(object, "block_index", block.block_index);
    set_unless_empty(object, "method", block.method);
    set_unless_empty(object, "section", block.section);
    set_unless_empty(object, "comment", block.comment);
    object["states"] = write_elements(block.states, write_excited_state);
    object["total_energies"] = write_elements(block.total_energies, write_energy_record);
    set_if_present(object, "preferred_total_energy_id", block.preferred_total_energy_id);
    if (!block.absorption_peaks.empty()) {
        object["absorption_peaks"] = write_elements(block.absorption_peaks, write_absorption_peak);
    }
}

}  // namespace morv::qc::json
