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

void write_atom(JsonPrinter& printer, chem::AtomSite const& atom) {
    printer.begin_object();
    member_if_present(printer, "atomic_number", atom.atomic_number);
    member_if_present(printer, "formal_charge", atom.formal_charge);
    printer.member("id", atom.id.value);
    member_if_present(printer, "isotope", atom.isotope);
    if (!atom.raw_label.empty() && atom.raw_label != atom.symbol) {
        printer.member("raw_label", atom.raw_label);
    }
    printer.member("symbol", atom.symbol);
    printer.end_object();
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

void write_system(JsonPrinter& printer, chem::ChemicalSystem const& system) {
    printer.begin_object();
    if (system.electronic_state) {
        printer.key("electronic_state");
        printer.begin_object();
        printer.member("charge", system.electronic_state->charge);
        printer.member("multiplicity", system.electronic_state->multiplicity);
        printer.end_object();
    }
    printer.member("id", system.id.value);
    member_unless_empty(printer, "label", system.label);
    write_source_key(printer, system.source);
    printer.key("topology");
    printer.begin_object();
    printer.key("atoms");
    write_elements(printer, system.topology.atoms, write_atom);
    printer.end_object();
    printer.end_object();
}

}  // namespace morv::qc::json
