#include "analyses/vibrations.hpp"

#include "analyses/number_fields.hpp"
#include "core/field_readers.hpp"
#include "core/optional_keys.hpp"
#include "core/sequences.hpp"
#include "core/vec3_fields.hpp"

#include <array>

namespace morv::qc::json {
namespace {

constexpr std::array<NumberField<VibrationalMode>, 4> mode_numbers = {{
    {"reduced_mass_amu", &VibrationalMode::reduced_mass_amu},
    {"force_constant_mdyne_per_angstrom", &VibrationalMode::force_constant_mdyne_per_angstrom},
    {"ir_intensity_km_per_mol", &VibrationalMode::ir_intensity_km_per_mol},
    {"raman_activity", &VibrationalMode::raman_activity},
}};
constexpr auto mode_number_order = byte_order(mode_numbers);

void write_vibrational_mode(JsonPrinter& printer, VibrationalMode const& mode) {
    NumberMembers<VibrationalMode, mode_numbers.size()> numbers(mode, mode_numbers, mode_number_order);
    printer.begin_object(numbers);
    if (!mode.displacements.empty()) {
        printer.key("displacements");
        write_elements(printer, mode.displacements, write_vec3);
    }
    printer.member("frequency_cm1", mode.frequency_cm1);
    // Worked out on every write: false for 0, -0 and NaN.
    printer.member("imaginary", 0.0 > mode.frequency_cm1);
    member_if_present(printer, "index", mode.index);
    member_unless_empty(printer, "symmetry", mode.symmetry);
    printer.end_object();
}

}  // namespace

VibrationalMode read_vibrational_mode(DocumentResult& result, Node const& node) {
    VibrationalMode mode;
    mode.index = read_int_field(result, node, "index", Presence::optional);
    mode.frequency_cm1 = read_double_field(result, node, "frequency_cm1", Presence::required).value_or(0.0);
    mode.symmetry = read_string_field(result, node, "symmetry", Presence::optional).value_or("");
    read_number_fields(result, node, mode, mode_numbers);
    read_elements(result, node["displacements"], mode.displacements, read_vec3);
    return mode;
}

VibrationalBlock read_vibrational_block(DocumentResult& result, Node const& node) {
    VibrationalBlock block;
    read_elements(result, node["modes"], block.modes, read_vibrational_mode);
    return block;
}

void write_vibrational_block(JsonPrinter& printer, VibrationalBlock const& block) {
    printer.key("modes");
    write_elements(printer, block.modes, write_vibrational_mode);
}

}  // namespace morv::qc::json
