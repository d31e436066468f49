#include "analyses/vibrations.hpp"

#include "analyses/number_fields.hpp"
#include "core/field_readers.hpp"
#include "core/optional_keys.hpp"
#include "core/sequences.hpp"

#include <array>

namespace morv::qc::json {
namespace {

constexpr std::array<NumberField<VibrationalMode>, 4> mode_numbers = {{
    {"reduced_mass_amu", &VibrationalMode::reduced_mass_amu},
    {"force_constant_mdyne_per_angstrom", &VibrationalMode::force_constant_mdyne_per_angstrom},
    {"ir_intensity_km_per_mol", &VibrationalMode::ir_intensity_km_per_mol},
    {"raman_activity", &VibrationalMode::raman_activity},
}};

JsonValue write_vibrational_mode(VibrationalMode const& mode) {
    JsonValue object = make_json_object();
    set_if_present(object, "index", mode.index);
    object["frequency_cm1"] = mode.frequency_cm1;
    // Worked out on every write: false for 0, -0 and NaN.
    object["imaginary"] = 0.0 > mode.frequency_cm1;
    set_unless_empty(object, "symmetry", mode.symmetry);
    write_number_fields(object, mode, mode_numbers);
    if (!mode.displacements.empty()) {
        object["displacements"] = write_elements(mode.displacements, write_vec3);
    }
    return object;
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

void write_vibrational_block(JsonValue& object, VibrationalBlock const& block) {
    object["modes"] = write_elements(block.modes, write_vibrational_mode);
}

}  // namespace morv::qc::json
