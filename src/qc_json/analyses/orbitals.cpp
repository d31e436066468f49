#include "analyses/orbitals.hpp"

#include "core/field_readers.hpp"
#include "core/optional_keys.hpp"
#include "core/sequences.hpp"
#include "sections/energy.hpp"

#include <morv/qc/model.hpp>

namespace morv::qc::json {
namespace {

JsonValue write_orbital(Orbital const& orbital) {
    JsonValue object = make_json_object();
    set_if_present(object, "index", orbital.index);
    object["spin"] = to_string(orbital.spin);
    set_if_present(object, "occupation", orbital.occupation);
    object["energy"] = write_energy_value(orbital.energy);
    set_unless_empty(object, "symmetry", orbital.symmetry);
    set_unless_empty(object, "kind", orbital.kind);
    return object;
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

void write_orbital_set_block(JsonValue& object, OrbitalSetBlock const& block) {
    object["spin"] = to_string(block.spin);
    // Written even when empty, unlike the `kind` of an orbital.
    object["kind"] = block.kind;
    object["orbitals"] = write_elements(block.orbitals, write_orbital);
}

}  // namespace morv::qc::json
