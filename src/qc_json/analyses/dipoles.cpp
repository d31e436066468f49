#include "analyses/dipoles.hpp"

#include "analyses/number_fields.hpp"
#include "core/field_readers.hpp"
#include "core/optional_keys.hpp"
#include "core/sequences.hpp"
#include "core/source_spans.hpp"
#include "core/vec3_fields.hpp"

#include <array>

namespace morv::qc::json {
namespace {

constexpr std::array<NumberField<PermanentDipole>, 2> magnitudes = {{
    {"magnitude_atomic_units", &PermanentDipole::magnitude_atomic_units},
    {"magnitude_debye", &PermanentDipole::magnitude_debye},
}};
constexpr auto magnitude_order = byte_order(magnitudes);

void write_permanent_dipole(JsonPrinter& printer, PermanentDipole const& dipole) {
    NumberMembers<PermanentDipole, magnitudes.size()> numbers(dipole, magnitudes, magnitude_order);
    printer.begin_object(numbers);
    printer.key("atomic_units");
    write_vec3(printer, dipole.atomic_units);
    member_unless_empty(printer, "density_type", dipole.density_type);
    member_unless_empty(printer, "method", dipole.method);
    write_source_key(printer, dipole.source);
    printer.end_object();
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

void write_dipole_block(JsonPrinter& printer, DipoleBlock const& block) {
    printer.key("moments");
    write_elements(printer, block.moments, write_permanent_dipole);
}

}  // namespace morv::qc::json
