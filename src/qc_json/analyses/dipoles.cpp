#include "analyses/dipoles.hpp"

#include "analyses/number_fields.hpp"
#include "core/field_readers.hpp"
#include "core/optional_keys.hpp"
#include "core/sequences.hpp"
#include "core/source_spans.hpp"

#include <array>

namespace morv::qc::json {
namespace {

constexpr std::array<NumberField<PermanentDipole>, 2> magnitudes = {{
    {"magnitude_atomic_units", &PermanentDipole::magnitude_atomic_units},
    {"magnitude_debye", &PermanentDipole::magnitude_debye},
}};

JsonValue write_permanent_dipole(PermanentDipole const& dipole) {
    JsonValue object = make_json_object();
    object["atomic_units"] = write_vec3(dipole.atomic_units);
    write_number_fields(object, dipole, magnitudes);
    set_unless_empty(object, "method", dipole.method);
    set_unless_empty(object, "density_type", dipole.density_type);
    write_source_key(object, dipole.source);
    return object;
}

}  // namespace

PermanentDipole read_permanent_dipole(DocumentResult& result, Node const& node) {
    PermanentDipole dipole;
    // All or nothing: a vector with a bad component stays zero.
    dipole.atomic_units = read_vec3(result, node["atomic_units"]).value_or(chem::Vec3{});
    read_number_fields(result, node, dipole, magnitudes);
    dipole.method = read_string_field(result, node, "method", Presence::optional).value_or("");
    dipole.density_type = read_string_field(result, node, "density_type", Presence::optional).value_or("");
    dipole.source = read_source_key(result, node);
    return dipole;
}

DipoleBlock read_dipole_block(DocumentResult& result, Node const& node) {
    DipoleBlock block;
    read_elements(result, node["moments"], block.moments, read_permanent_dipole);
    return block;
}

void write_dipole_block(JsonValue& object, DipoleBlock const& block) {
    object["moments"] = write_elements(block.moments, write_permanent_dipole);
}

}  // namespace morv::qc::json
