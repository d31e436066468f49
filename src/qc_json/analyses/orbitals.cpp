#include "analyses/orbitals.hpp"

#include "core/field_readers.hpp"
#include "core/optional_keys.hpp"
#include "core/sequences.hpp"
#include "sections/energy.hpp"

#include <morv/qc/model.hpp>

namespace morv::qc::json {
namespace {

void write_orbital(JsonPrinter& printer, Orbital const& orbital) {
    printer.begin_object();
    printer.key("energy");
    write_energy_value(printer, orbital.energy);
    member_if_present(printer, "index", orbital.index);
    member_unless_empty(printer, "kind", orbital.kind);
    member_if_present(printer, "occupation", orbital.occupation);
    printer.member("spin", to_string(orbital.spin));
    member_unless_empty(printer, "symmetry", orbital.symmetry);
    printer.end_object();
}

}  // namespace

Orbital read_orbital(DocumentResult& result, Node const& node) {
    Orbital orbital;
    orbital.index = read_int_field(result, node, "index", Presence::optional);
    // An orbital inherits nothing from its set, its spin included.
    orbital.spin = read_word_field<SpinChannel>(result, node, "spin");
    orbital.occupation = read_double_field(result, node, "occupation", Presence::optional);
    orbital.energy = read_energy_value(result, node["energy"]).value_or(0.0);
    orbital.symmetry = read_string_field(result, node, "symmetry", Presence::optional).value_or("");
    orbital.kind = read_string_field(result, node, "kind", Presence::optional).value_or("");
    return orbital;
}

OrbitalSetBlock read_orbital_set_block(DocumentResult& result, Node const& node) {
    OrbitalSetBlock block;
    block.spin = read_word_field<SpinChannel>(result, node, "spin");
    block.kind = read_string_field(result, node, "kind", Presence::optional).value_or("canonical");
    read_elements(result, node["orbitals"], block.orbitals, read_orbital);
    return block;
}

void write_orbital_set_block(JsonPrinter& printer, OrbitalSetBlock const& block) {
    // Written even when empty, unlike the `kind` of an orbital.
    printer.member("kind", block.kind);
    printer.key("orbitals");
    write_elements(printer, block.orbitals, write_orbital);
    printer.member("spin", to_string(block.spin));
}

}  // namespace morv::qc::json
