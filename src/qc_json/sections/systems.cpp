#include "sections/systems.hpp"

#include "core/field_readers.hpp"
#include "core/optional_keys.hpp"
#include "core/sequences.hpp"
#include "core/source_spans.hpp"

namespace morv::qc::json {
namespace {

std::optional<chem::AtomSite> read_atom(DocumentResult& result, Node const& node) {
    auto const id = read_id_field(result, node, "id", Presence::required);
    if (!id) {
        return std::nullopt;
    }
    chem::AtomSite atom;
    atom.id = chem::AtomId(*id);
    atom.symbol = read_string_field(result, node, "symbol", Presence::required).value_or("");
    // Without a label of its own the atom is labelled by its symbol; an empty
    // label that the text gives stays empty.
    atom.raw_label = read_string_field(result, node, "raw_label", Presence::optional).value_or(atom.symbol);
    atom.atomic_number = read_uint16_field(result, node, "atomic_number");
    atom.isotope = read_uint16_field(result, node, "isotope");
    atom.formal_charge = read_int_field(result, node, "formal_charge", Presence::optional);
    return atom;
}

// Both keys are read so that both faults are reported; the state is kept
// only when both hold a value.
std::optional<chem::ElectronicState> read_electronic_state(DocumentResult& result, Node const& node) {
    if (!node.is_map()) {
        return std::nullopt;
    }
    auto const charge = read_int_field(result, node, "charge", Presence::required);
    auto const multiplicity = read_uint32_field(result, node, "multiplicity", Presence::required);
    if (!charge || !multiplicity) {
        return std::nullopt;
    }
    return chem::ElectronicState{*charge, *multiplicity};
}

JsonValue write_atom(chem::AtomSite const& atom) {
    JsonValue object = make_json_object();
    object["id"] = atom.id.value;
    object["symbol"] = atom.symbol;
    if (!atom.raw_label.empty() && atom.raw_label != atom.symbol) {
        object["raw_label"] = atom.raw_label;
    }
    set_if_present(object, "atomic_number", atom.atomic_number);
    set_if_present(object, "isotope", atom.isotope);
    set_if_present(object, "formal_charge", atom.formal_charge);
    return object;
}

}  // namespace

std::optional<chem::ChemicalSystem> read_system(DocumentResult& result, Node const& node) {
    auto const id = read_entity_id_field<chem::SystemIdTag>(result, node, "id", Presence::required);
    if (!id) {
        return std::nullopt;
    }
    chem::ChemicalSystem system;
    system.id = *id;
    system.label = read_string_field(result, node, "label", Presence::optional).value_or("");
    system.electronic_state = read_electronic_state(result, node["electronic_state"]);
    read_elements(result, node["topology"]["atoms"], system.topology.atoms, read_atom);
    system.source = read_source_key(result, node);
    return system;
}

JsonValue write_system(chem::ChemicalSystem const& system) {
    JsonValue object = make_json_object();
    object["id"] = system.id.value;
    set_unless_empty(object, "label", system.label);
    if (system.electronic_state) {
        JsonValue state = make_json_object();
        state["charge"] = system.electronic_state->charge;
        state["multiplicity"] = system.electronic_state->multiplicity;
        object["electronic_state"] = std::move(state);
    }
    object["topology"]["atoms"] = write_elements(system.topology.atoms, write_atom);
    write_source_key(object, system.source);
    return object;
}

}  // namespace morv::qc::json
